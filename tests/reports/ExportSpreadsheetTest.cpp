#include "ErrorCodes.h"
#include "ModalDriver.h"
#include "ScriptedDialogs.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "reports/ReportCommands.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// Pair n of the run. UV falls within each second and conductivity holds, so that a point that
/// stands for one second shows the second's first pair (its highest UV, its mean conductivity).
float uvOf(int n)
{
    return 0.005f + 0.01f * float(n / 5) - 0.001f * float(n % 5);
}

float condOf(int n)
{
    return 10.0f + 0.1f * float(n / 5);
}

/// The rows below the column heads, as a spreadsheet reads the export.
QList<QStringList> spreadsheetRows(const QString &folder)
{
    QProcess office;
    office.start(QStringLiteral("libreoffice"),
                 {QStringLiteral("-env:UserInstallation=file://") + folder + QStringLiteral("/lo"),
                  QStringLiteral("--headless"),
                  QStringLiteral("--infilter=Text - txt - csv (StarCalc):9,34,76"),
                  QStringLiteral("--convert-to"),
                  QStringLiteral("csv:Text - txt - csv (StarCalc):44,34,76"),
                  QStringLiteral("--outdir"), folder, folder + QStringLiteral("/run.txt")});
    office.waitForFinished(180000);
    QFile csv(folder + QStringLiteral("/run.csv"));
    csv.open(QIODevice::ReadOnly);
    const QStringList lines = QString::fromUtf8(csv.readAll()).split(QLatin1Char('\n'));
    QList<QStringList> rows;
    for (auto line = lines.begin(); line != lines.end(); ++line)
        if (line->startsWith(QStringLiteral("Time (min),")))
            for (++line; line != lines.end() && !line->trimmed().isEmpty(); ++line)
                rows << line->trimmed().split(QLatin1Char(','));
    return rows;
}

} // namespace

TEST(ExportSpreadsheet, SpreadsheetReadsThePairsTheRateSelects)
{
    if (QStandardPaths::findExecutable(QStringLiteral("libreoffice")).isEmpty())
        GTEST_SKIP() << "no spreadsheet here";
    ScriptedDialogs dialogs;
    ModalDriver driver(60000);
    ErrorCodes errors;
    ComDlg dialog;
    QWidget window;
    ReportCommands reports{dialog, errors, [](float &, float &) {}, window};
    Quillchart chart;
    for (int n = 0; n <= 600; ++n)
        chart.AddSample(uvOf(n), condOf(n));

    for (const int rate : {1, 5}) {
        SCOPED_TRACE(rate);
        QTemporaryDir dir(testHome() + QStringLiteral("/sheet-XXXXXX"));
        dialogs.files.push_back(dir.filePath(QStringLiteral("run.txt")));
        int shown = -1;
        driver.answerWith<frmExport>([&](frmExport &form) {
            form.cmbSamlingRate->setCurrentText(QString::number(rate));
            shown = form.lblNumPoints->text().section(QLatin1Char(' '), 0, 0).toInt();
            form.cmdExport->click();
        });
        reports.mnuExport_Click(chart);

        const QList<QStringList> rows = spreadsheetRows(dir.path());
        EXPECT_EQ(shown, 120 * rate);
        ASSERT_EQ(rows.size(), shown);
        for (int row = 0; row < rows.size(); ++row) {
            const int n = row * 5 / rate;
            ASSERT_GE(rows[row].size(), 3) << row;
            EXPECT_NEAR(rows[row][0].toDouble(), n / 300.0, 5e-5) << row;
            EXPECT_NEAR(rows[row][1].toDouble(), uvOf(n), 5e-5) << row;
            EXPECT_NEAR(rows[row][2].toDouble(), condOf(n), 5e-4) << row;
        }
    }
}
