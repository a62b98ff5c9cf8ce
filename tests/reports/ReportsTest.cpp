#include "ModalDriver.h"
#include "ScriptedDialogs.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "reports/ReportCommands.h"
#include "reports/frmPrint.h"
#include "runtime/ErrorRoute.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <tuple>

namespace {

class ErrorCodes : public ErrorRoute
{
public:
    void HandelError(qint32 ErrorCode) override { codes.append(ErrorCode); }
    QList<qint32> codes;
};

/// The print dialog's boxes by letter: Chromatogram, Uv, Konductivity, Events, Notes, Method.
const QString kLetters = QStringLiteral("CUKENM");

QCheckBox *box(frmPrint &form, QChar letter)
{
    QCheckBox *const boxes[] = {form.chkChromotogram, form.chkUVTrace, form.chkCondTrace,
                                form.chkEvents,       form.chkNotes,   form.chkMethod};
    return boxes[kLetters.indexOf(letter)];
}

/// Pair n of a run. UV falls within each second and conductivity holds, so that a point that
/// stands for one second shows the second's first pair (its highest UV, its mean conductivity).
float uvOf(int n)
{
    return 0.005f + 0.01f * float(n / 5) - 0.001f * float(n % 5);
}

float condOf(int n)
{
    return 10.0f + 0.1f * float(n / 5);
}

QString run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(180000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

class Reports : public ::testing::Test
{
protected:
    Reports()
    {
        QObject::connect(&chart, &Quillchart::ChartError,
                         [this](qint16, qint16 code) { errors.HandelError(code); });
    }

    void record(int pairs)
    {
        for (int n = 0; n < pairs; ++n)
            chart.AddSample(uvOf(n), condOf(n));
    }

    /// Exports at `rate` from the region `region` into `file` (empty: cancelled); the count shown.
    int exportAt(const QString &rate, int region, const QString &file)
    {
        int shown = -1;
        dialogs.files.push_back(file);
        driver.answerWith<frmExport>([&](frmExport &form) {
            form.cmbSamlingRate->setCurrentText(rate);
            form.optDataRegion[region]->click();
            shown = form.lblNumPoints->text().section(QLatin1Char(' '), 0, 0).toInt();
            EXPECT_EQ(form.lblTotal->text(), QStringLiteral("%1  Data Points)").arg(shown));
            form.cmdExport->click();
        });
        reports.mnuExport_Click(chart);
        return shown;
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
    ModalDriver driver{60000};
    ErrorCodes errors;
    ComDlg dialog;
    QWidget window;
    float zoomFrom = 0;
    float zoomTo = 10;
    ReportCommands reports{
        dialog, errors, [this](float &from, float &to) { from = zoomFrom, to = zoomTo; }, window};
    Quillchart chart;
    QTemporaryDir dir{testHome() + QStringLiteral("/reports-XXXXXX")};
};

} // namespace

TEST_F(Reports, PointCountFollowsRangeAndRateWithTheHalfTyingToEven)
{
    // Pairs recorded, rate, zoom, region (0: the zoom, 1: everything), points.
    const std::tuple<int, const char *, float, float, int, int> cases[] = {
        {0, "1", 0, 10, 1, 0},     {3001, "1", 0, 10, 1, 600}, {30001, "0.0333", 0, 10, 1, 200},
        {306, "1", 0, 10, 1, 62},  {3001, "5", 2, 5, 0, 900},  {3001, "1", 9, 30, 0, 60},
        {3001, "1", 20, 30, 0, 0},
    };
    for (const auto &[pairs, rate, from, to, region, points] : cases) {
        chart.ClearData();
        record(pairs);
        zoomFrom = from;
        zoomTo = to;
        EXPECT_EQ(exportAt(QString::fromLatin1(rate), region, {}), points)
            << pairs << " at " << rate;
    }
}

TEST_F(Reports, FailedExportIsReportedAndWritesNothing)
{
    record(300);
    exportAt(QStringLiteral("1"), 1, dir.filePath(QStringLiteral("gone/run.txt")));
    EXPECT_EQ(errors.codes, QList<qint32>{-24});
}

TEST_F(Reports, SpreadsheetReadsThePairsTheRateSelects)
{
    if (QStandardPaths::findExecutable(QStringLiteral("libreoffice")).isEmpty())
        GTEST_SKIP() << "no spreadsheet here";
    record(601);
    for (const int rate : {1, 5}) {
        SCOPED_TRACE(rate);
        const int shown = exportAt(QString::number(rate), 1, dir.filePath(QStringLiteral("run")));
        run(QStringLiteral("libreoffice"),
            {QStringLiteral("-env:UserInstallation=file://") + dir.filePath(QStringLiteral("lo")),
             QStringLiteral("--headless"),
             QStringLiteral("--infilter=Text - txt - csv (StarCalc):9,34,76"),
             QStringLiteral("--convert-to"),
             QStringLiteral("csv:Text - txt - csv (StarCalc):44,34,76"), QStringLiteral("--outdir"),
             dir.path(), dir.filePath(QStringLiteral("run.txt"))});
        QFile csv(dir.filePath(QStringLiteral("run.csv")));
        ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
        QStringList lines = QString::fromUtf8(csv.readAll()).split(QLatin1Char('\n'));
        lines = lines.mid(
            lines.indexOf(QStringLiteral("Time (min),UV (AU),Conductivity (mS/cm),Event")) + 1);
        lines = lines.mid(0, lines.indexOf(QString()));
        EXPECT_EQ(shown, 120 * rate);
        ASSERT_EQ(lines.size(), shown);
        for (int row = 0; row < shown; ++row) {
            const QStringList cells = lines[row].split(QLatin1Char(','));
            const int n = row * 5 / rate;
            EXPECT_NEAR(cells.value(0).toDouble(), n / 300.0, 5e-5) << row;
            EXPECT_NEAR(cells.value(1).toDouble(), uvOf(n), 5e-5) << row;
            EXPECT_NEAR(cells.value(2).toDouble(), condOf(n), 5e-4) << row;
        }
    }
}

TEST_F(Reports, ChromatogramBoxLeadsAndFollowsItsTracesAndOkNeedsSomething)
{
    // Clicks, the boxes then ticked, the trace flags chosen (-1: OK is off).
    const std::tuple<const char *, const char *, qint32> cases[] = {
        {"", "111111", 7},     {"U", "101111", 3},      {"UKE", "000011", 0},
        {"C", "000011", 0},    {"CC", "111111", 7},     {"CK", "101011", 2},
        {"NMC", "000000", -1}, {"NMUKE", "000000", -1}, {"NMCE", "100100", 1},
    };
    for (const auto &[clicks, ticked, traceFlags] : cases) {
        SCOPED_TRACE(clicks);
        PrintChoice choice;
        frmPrint form(
            chart, choice, [] {}, nullptr);
        form.show();
        for (QChar letter : QString::fromLatin1(clicks))
            box(form, letter)->click();
        QString ticks;
        for (QChar letter : kLetters)
            ticks += box(form, letter)->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
        EXPECT_EQ(ticks, QString::fromLatin1(ticked));
        EXPECT_EQ(form.cmdOk->isEnabled(), traceFlags >= 0);
        if (traceFlags < 0) {
            EXPECT_EQ(form.focusWidget(), form.cmdCancel);
            continue;
        }
        form.cmdOk->click();
        EXPECT_FALSE(choice.PrintCancelled);
        EXPECT_EQ(choice.PrintTraceFlags, traceFlags);
    }
}

TEST_F(Reports, ReportGoesToThePdfChosenInPrintSetupWithWhatTheDialogAsked)
{
    record(1500);
    chart.AddMethodText(QStringLiteral("Equilibrate 5 CV\r\nElute gradient"), 0.0f);
    chart.SetNotes(QStringLiteral("Column lot 4471"));
    const QStringList pdfs{dir.filePath(QStringLiteral("full.pdf")),
                           dir.filePath(QStringLiteral("text-only.pdf"))};
    dialogs.printers = {pdfs[0], pdfs[1]};
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
    for (const QString &pdf : pdfs) {
        texts << run(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
        for (const char *words : {"Desalting run 7", "Column lot 4471", "Elute gradient"})
            EXPECT_TRUE(texts.last().contains(QLatin1String(words))) << texts.last().toStdString();
    }
    EXPECT_TRUE(texts[0].contains(QStringLiteral("mS/cm")));
    EXPECT_FALSE(texts[1].contains(QStringLiteral("mS/cm")));
}

TEST_F(Reports, EveryCopyIsTriedEvenWhenThePrinterFails)
{
    dialogs.printers = {dir.filePath(QStringLiteral("gone/report.pdf"))};
    reports.mnuPrintSetup_Click();
    for (const int copies : {3, 0}) {
        errors.codes.clear();
        dialog.Copies = copies;
        printWith({});
        // Counted, not compared as lists: an empty list's comparison trips the sanitizer in Qt.
        EXPECT_EQ(errors.codes.size(), copies);
        EXPECT_EQ(errors.codes.count(-14), copies);
    }
}
