#include "ErrorCodes.h"
#include "ScriptedDialogs.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"
#include "reports/frmExport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

namespace {

class ExportDialog : public ::testing::Test
{
protected:
    /// The dialog over `pairs` samples, the window's zoom standing at `from` to `to`.
    std::unique_ptr<frmExport> open(int pairs, float from = 0, float to = 10)
    {
        for (int i = 0; i < pairs; ++i)
            chart.AddSample(0.1f, 5.0f);
        return std::make_unique<frmExport>(
            chart, [from, to](float &zoomFrom, float &zoomTo) { zoomFrom = from, zoomTo = to; },
            errors, nullptr);
    }

    /// The export written to `name`, its lines as a spreadsheet would split them.
    QStringList exported(const QString &name)
    {
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
    }

    ScriptedDialogs dialogs;
    ErrorCodes errors;
    Quillchart chart;
    QTemporaryDir dir{testHome() + QStringLiteral("/export-XXXXXX")};
};

} // namespace

TEST_F(ExportDialog, PointCountFollowsRangeAndRateWithTheHalfTyingToEven)
{
    struct Case
    {
        const char *name;
        int pairs;
        const char *rate;
        float zoomFrom;
        float zoomTo;
        int region;
        qint32 points;
    };
    const Case cases[] = {
        {"empty chart", 0, "1", 0, 10, 1, 0},
        {"10 minutes at 1/s", 3001, "1", 0, 10, 1, 600},
        {"100 minutes at 0.0333/s", 30001, "0.0333", 0, 10, 1, 200},
        {"61 whole points tie up to 62", 306, "1", 0, 10, 1, 62},
        {"a zoom of 3 minutes at 5/s", 3001, "5", 2, 5, 0, 900},
        {"a zoom capped at the run's end", 3001, "1", 9, 30, 0, 60},
        {"a zoom wholly past the end", 3001, "1", 20, 30, 0, 0},
        {"back to all data", 3001, "0.5", 2, 5, 1, 300},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        chart.ClearData();
        const auto form = open(c.pairs, c.zoomFrom, c.zoomTo);
        form->cmbSamlingRate->setCurrentText(QString::fromLatin1(c.rate));
        form->optDataRegion[0]->click();
        if (c.region == 1)
            form->optDataRegion[1]->click();
        EXPECT_EQ(form->lblNumPoints->text(), QStringLiteral("%1  data points").arg(c.points));
        EXPECT_EQ(form->lblTotal->text(), QStringLiteral("%1  Data Points)").arg(c.points));
    }
}

TEST_F(ExportDialog, RegionCaptionsLineUpOnTheRunAndTheCappedZoom)
{
    const auto form = open(3001, 2.5f, 12.0f);
    EXPECT_EQ(form->optDataRegion[1]->text(),
              QStringLiteral("All Data               (Time:  0.00  to  10.00  minutes) "));
    EXPECT_EQ(form->optDataRegion[0]->text(),
              QStringLiteral("Selected Data     (Time:  2.50  to  10.00  minutes) "));
    EXPECT_TRUE(form->optDataRegion[1]->isChecked());
    EXPECT_EQ(form->cmbSamlingRate->currentText(), QStringLiteral("1"));
}

TEST_F(ExportDialog, NothingToExportMovesTheFocusToCancelAndMethodOffKeepsItsPosition)
{
    const auto form = open(300);
    form->show();
    form->optMethodPos[1]->click();
    QCheckBox *const boxes[] = {form->chkUV, form->chkCond, form->chkEvents, form->chkNotes,
                                form->chkMethod};
    for (QCheckBox *box : boxes) {
        EXPECT_TRUE(form->cmdExport->isEnabled());
        box->click();
    }
    EXPECT_FALSE(form->cmdExport->isEnabled());
    EXPECT_EQ(form->focusWidget(), form->cmdCancel);
    for (QRadioButton *position : form->optMethodPos)
        EXPECT_FALSE(position->isEnabled());

    form->chkMethod->click();
    EXPECT_TRUE(form->cmdExport->isEnabled());
    EXPECT_TRUE(form->optMethodPos[2]->isEnabled());
    Int16 position = -1;
    form->GetMethodPosition(position);
    EXPECT_EQ(position, 1);
}

TEST_F(ExportDialog, ExportAsksForATextFileAndWritesWhatWasChosen)
{
    chart.AddMethodText(QStringLiteral("Wash 2 CV"), 0.0f);
    const auto form = open(3001);
    form->show();
    form->optMethodPos[2]->click();
    form->chkEvents->click();
    dialogs.files.push_back(dir.filePath(QStringLiteral("run")));
    form->cmdExport->click();

    ASSERT_EQ(dialogs.fileDialogs.size(), 1);
    const ComDlg &asked = dialogs.fileDialogs[0];
    EXPECT_EQ(asked.Flags, 2054);
    EXPECT_EQ(asked.DialogTitle, QStringLiteral("Export Data Text File As..."));
    EXPECT_EQ(asked.Filter, QStringLiteral("Text File(*.txt)|*.txt|All Files(*.*)|*.*"));
    EXPECT_EQ(asked.DefaultExt, QStringLiteral("txt"));
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(errors.codes.isEmpty());
    const QStringList lines = exported(QStringLiteral("run.txt"));
    EXPECT_TRUE(lines.contains(QStringLiteral("Data points:\t600")));
    EXPECT_TRUE(
        lines.contains(QStringLiteral("Time (min)\tUV (AU)\tConductivity (mS/cm)\tMethod\tNotes")));
}

TEST_F(ExportDialog, CancelledOrFailedExportClosesTheDialog)
{
    struct Case
    {
        const char *name;
        QString file;
        QList<qint32> codes;
    };
    const Case cases[] = {
        {"file dialog cancelled", QString(), {}},
        {"folder gone", dir.filePath(QStringLiteral("gone/run.txt")), {-24}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        errors.codes.clear();
        const auto form = open(300);
        form->show();
        dialogs.files.push_back(c.file);
        form->cmdExport->click();
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(errors.codes, c.codes);
    }
    EXPECT_TRUE(QDir(dir.path()).isEmpty());
}
