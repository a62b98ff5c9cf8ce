#include "ErrorCodes.h"
#include "ModalDriver.h"
#include "ScriptedDialogs.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "reports/ReportCommands.h"
#include "reports/frmPrint.h"
#include "runtime/RuntimeError.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// Boxes by letter: Chromatogram, Uv trace, Konductivity trace, Events, Notes, Method.
QCheckBox *box(frmPrint &form, QChar letter)
{
    switch (letter.toLatin1()) {
    case 'C':
        return form.chkChromotogram;
    case 'U':
        return form.chkUVTrace;
    case 'K':
        return form.chkCondTrace;
    case 'E':
        return form.chkEvents;
    case 'N':
        return form.chkNotes;
    default:
        return form.chkMethod;
    }
}

QString ticks(frmPrint &form)
{
    QString state;
    for (QChar letter : QStringLiteral("CUKENM"))
        state += box(form, letter)->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
    return state;
}

QString pdfText(const QString &pdf)
{
    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    pdftotext.waitForFinished();
    return QString::fromUtf8(pdftotext.readAllStandardOutput());
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
    void printWith(const QString &clicks, const QString &title = {})
    {
        driver.answerWith<frmPrint>([clicks, title](frmPrint &form) {
            for (QChar letter : clicks)
                box(form, letter)->click();
            if (!title.isEmpty())
                form.txtTitel->setText(title);
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
        bool ok;
    };
    const Case cases[] = {
        {"U", "101111", true},      {"UKE", "000011", true},  {"C", "000011", true},
        {"CC", "111111", true},     {"CU", "110011", true},   {"NMC", "000000", false},
        {"NMUKE", "000000", false}, {"NMCN", "000010", true}, {"NMCU", "110000", true},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.clicks);
        PrintChoice choice;
        frmPrint form(
            chart, choice, [] {}, nullptr);
        form.show();
        for (QChar letter : QString::fromLatin1(c.clicks))
            box(form, letter)->click();
        EXPECT_EQ(ticks(form), QString::fromLatin1(c.ticks));
        EXPECT_EQ(form.cmdOk->isEnabled(), c.ok);
        if (!c.ok) {
            EXPECT_EQ(form.focusWidget(), form.cmdCancel);
        }
    }
}

TEST_F(Printing, DialogOpensOnTheSelectedTitleAndOnlyOkTakesTheChoice)
{
    PrintChoice choice;
    {
        frmPrint form(
            chart, choice, [] {}, nullptr);
        form.show();
        EXPECT_TRUE(choice.PrintCancelled);
        EXPECT_EQ(form.txtTitel->selectedText(), QStringLiteral("Chart Recorder"));
        EXPECT_EQ(form.focusWidget(), form.txtTitel);
        form.txtTitel->setText(QStringLiteral("Dropped"));
        form.cmdCancel->click();
    }
    EXPECT_TRUE(choice.PrintCancelled);
    EXPECT_EQ(chart.ChartTitle(), QStringLiteral("Chart Recorder"));

    frmPrint form(
        chart, choice, [] {}, nullptr);
    form.show();
    form.chkCondTrace->click();
    form.chkMethod->click();
    form.txtTitel->setText(QStringLiteral("Desalting 3"));
    form.cmdOk->click();
    EXPECT_FALSE(choice.PrintCancelled);
    EXPECT_TRUE(choice.PrintChromatogram);
    EXPECT_TRUE(choice.PrintNotes);
    EXPECT_FALSE(choice.PrintMethod);
    EXPECT_EQ(choice.PrintTraceFlags, 5);
    EXPECT_EQ(chart.ChartTitle(), QStringLiteral("Desalting 3"));
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
    const QString fullText = pdfText(full);
    const QString notesAndMethod = pdfText(textOnly);
    if (fullText.isEmpty())
        GTEST_SKIP() << "no pdftotext here";
    for (const QString &text : {fullText, notesAndMethod}) {
        EXPECT_TRUE(text.contains(QStringLiteral("Desalting run 7"))) << text.toStdString();
        EXPECT_TRUE(text.contains(QStringLiteral("Column lot 4471")));
        EXPECT_TRUE(text.contains(QStringLiteral("Elute gradient")));
    }
    EXPECT_TRUE(fullText.contains(QStringLiteral("mS/cm")));
    EXPECT_FALSE(notesAndMethod.contains(QStringLiteral("mS/cm")));
}

TEST_F(Printing, EveryCopyIsTriedEvenWhenThePrinterFails)
{
    struct Case
    {
        int copies;
        int failures;
    };
    dialogs.printers = {dir.filePath(QStringLiteral("gone/report.pdf"))};
    reports.mnuPrintSetup_Click();
    for (const Case c : {Case{3, 3}, Case{0, 0}}) {
        SCOPED_TRACE(c.copies);
        errors.codes.clear();
        dialog.Copies = c.copies;
        printWith({});
        EXPECT_EQ(errors.codes, QList<qint32>(c.failures, -14));
    }
}

namespace {

/// A printer dialog that cannot come up.
class BrokenPrinterDialog final : public DialogBackend
{
public:
    BrokenPrinterDialog() { setDialogBackend(this); }
    ~BrokenPrinterDialog() override { setDialogBackend(nullptr); }
    int msgBox(const QString &, int, const QString &) override { return 1; }
    void beep() override {}
    bool fileDialog(ComDlg &, bool) override { return false; }
    bool printerDialog(ComDlg &) override { Raise(ErrorNumber::InvalidPropertyValue); }
};

} // namespace

TEST_F(Printing, PrintSetupThatCannotComeUpIsReported)
{
    BrokenPrinterDialog broken;
    reports.mnuPrintSetup_Click();
    EXPECT_EQ(errors.codes, QList<qint32>{-25});
}

TEST_F(Printing, PrinterChosenAfterAFailedPrintPrints)
{
    const QString pdf = dir.filePath(QStringLiteral("second.pdf"));
    dialogs.printers = {pdf};
    printWith({});
    reports.mnuPrintSetup_Click();
    printWith({});
    EXPECT_GT(QFileInfo(pdf).size(), 0);
}
