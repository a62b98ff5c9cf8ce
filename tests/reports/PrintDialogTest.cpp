#include "ErrorCodes.h"
#include "ModalDriver.h"
#include "ScriptedDialogs.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "reports/ReportCommands.h"
#include "reports/frmPrint.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// The boxes by letter: Chromatogram, Uv, Konductivity, Events, Notes, Method.
const QString kLetters = QStringLiteral("CUKENM");

QCheckBox *box(frmPrint &form, QChar letter)
{
    QCheckBox *const boxes[] = {form.chkChromotogram, form.chkUVTrace, form.chkCondTrace,
                                form.chkEvents,       form.chkNotes,   form.chkMethod};
    return boxes[kLetters.indexOf(letter)];
}

class Printing : public ::testing::Test
{
protected:
    Printing()
    {
        for (int i = 0; i < 1500; ++i)
            chart.AddSample(0.2f + 0.1f * float(i % 300) / 300.0f, 12.0f);
        chart.setTimeAxisMax(5.0f);
        chart.setChartTitle(QStringLiteral("Chart Recorder"));
        QObject::connect(&chart, &Quillchart::ChartError,
                         [this](qint16, qint16 code) { errors.HandelError(code); });
    }

    /// Answers the print dialog: `clicks` on the boxes by letter, then OK.
    void printWith(const QString &clicks)
    {
        driver.answerWith<frmPrint>([clicks](frmPrint &form) {
            for (QChar letter : clicks)
                box(form, letter)->click();
            form.cmdOk->click();
        });
        reports.mnuPrint_Click(chart);
    }

    ScriptedDialogs dialogs;
    ModalDriver driver;
    ErrorCodes errors;
    ComDlg dialog;
    QWidget window;
    ReportCommands reports{dialog, errors, [](float &, float &) {}, window};
    Quillchart chart;
    QTemporaryDir dir{testHome() + QStringLiteral("/print-XXXXXX")};
};

} // namespace

TEST_F(Printing, ChromatogramBoxLeadsAndFollowsItsTracesAndOkNeedsSomething)
{
    struct Case
    {
        const char *clicks;
        const char *ticks;
        qint32 traceFlags; // -1: OK is off
    };
    const Case cases[] = {
        {"", "111111", 7},     {"U", "101111", 3},      {"UKE", "000011", 0},
        {"C", "000011", 0},    {"CC", "111111", 7},     {"CK", "101011", 2},
        {"NMC", "000000", -1}, {"NMUKE", "000000", -1}, {"NMCE", "100100", 1},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.clicks);
        PrintChoice choice;
        frmPrint form(
            chart, choice, [] {}, nullptr);
        form.show();
        EXPECT_EQ(form.txtTitel->selectedText(), chart.ChartTitle());
        for (QChar letter : QString::fromLatin1(c.clicks))
            box(form, letter)->click();
        QString ticks;
        for (QChar letter : kLetters)
            ticks += box(form, letter)->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
        EXPECT_EQ(ticks, QString::fromLatin1(c.ticks));
        EXPECT_EQ(form.cmdOk->isEnabled(), c.traceFlags >= 0);
        if (c.traceFlags < 0) {
            EXPECT_EQ(form.focusWidget(), form.cmdCancel);
            continue;
        }
        form.cmdOk->click();
        EXPECT_FALSE(choice.PrintCancelled);
        EXPECT_EQ(choice.PrintTraceFlags, c.traceFlags);
    }
}

TEST_F(Printing, ReportGoesToThePdfChosenInPrintSetupWithWhatTheDialogAsked)
{
    chart.AddMethodText(QStringLiteral("Equilibrate 5 CV\r\nElute gradient"), 0.0f);
    chart.SetNotes(QStringLiteral("Column lot 4471"));
    const QString full = dir.filePath(QStringLiteral("full.pdf"));
    const QString textOnly = dir.filePath(QStringLiteral("text-only.pdf"));
    dialogs.printers = {full, textOnly};
    dialog.Copies = 2;
    driver.answerWith<frmPrint>([](frmPrint &form) {
        form.cmdPrintSetup->click();
        form.txtTitel->setText(QStringLiteral("Desalting run 7"));
        form.cmdOk->click();
    });
    reports.mnuPrint_Click(chart);
    reports.mnuPrintSetup_Click();
    printWith(QStringLiteral("C"));

    EXPECT_TRUE(errors.codes.isEmpty());
    QStringList texts;
    for (const QString &pdf : {full, textOnly}) {
        QProcess pdftotext;
        pdftotext.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
        pdftotext.waitForFinished();
        texts << QString::fromUtf8(pdftotext.readAllStandardOutput());
        for (const char *words : {"Desalting run 7", "Column lot 4471", "Elute gradient"})
            EXPECT_TRUE(texts.last().contains(QLatin1String(words))) << texts.last().toStdString();
    }
    EXPECT_TRUE(texts[0].contains(QStringLiteral("mS/cm")));
    EXPECT_FALSE(texts[1].contains(QStringLiteral("mS/cm")));
}

TEST_F(Printing, EveryCopyIsTriedEvenWhenThePrinterFails)
{
    dialogs.printers = {dir.filePath(QStringLiteral("gone/report.pdf"))};
    reports.mnuPrintSetup_Click();
    for (const int copies : {3, 0}) {
        errors.codes.clear();
        dialog.Copies = copies;
        printWith({});
        EXPECT_EQ(errors.codes, QList<qint32>(copies, -14));
    }
}
