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
        chart.ClearData();
        for (int i = 0; i < pairs; ++i)
            chart.AddSample(0.1f, 5.0f);
        auto form = std::make_unique<frmExport>(
            chart, [from, to](float &zoomFrom, float &zoomTo) { zoomFrom = from, zoomTo = to; },
            errors, nullptr);
        form->show();
        return form;
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
        int pairs;
        const char *rate;
        float zoomFrom, zoomTo;
        int region;
        qint32 points;
    };
    const Case cases[] = {
        {0, "1", 0, 10, 1, 0},     {3001, "1", 0, 10, 1, 600},  {30001, "0.0333", 0, 10, 1, 200},
        {306, "1", 0, 10, 1, 62},  {3001, "5", 2, 5, 0, 900},   {3001, "1", 9, 30, 0, 60},
        {3001, "1", 20, 30, 0, 0}, {3001, "0.5", 2, 5, 1, 300},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.pairs << " pairs at " << c.rate << "/s");
        const auto form = open(c.pairs, c.zoomFrom, c.zoomTo);
        form->cmbSamlingRate->setCurrentText(QString::fromLatin1(c.rate));
        form->optDataRegion[0]->click();
        if (c.region == 1)
            form->optDataRegion[1]->click();
        EXPECT_EQ(form->lblNumPoints->text(), QStringLiteral("%1  data points").arg(c.points));
        EXPECT_EQ(form->lblTotal->text(), QStringLiteral("%1  Data Points)").arg(c.points));
    }
}

TEST_F(ExportDialog, OpensOnAllDataAndNeedsSomethingToExport)
{
    const auto form = open(3001, 2.5f, 12.0f);
    EXPECT_EQ(form->optDataRegion[1]->text(),
              QStringLiteral("All Data               (Time:  0.00  to  10.00  minutes) "));
    EXPECT_EQ(form->optDataRegion[0]->text(),
              QStringLiteral("Selected Data     (Time:  2.50  to  10.00  minutes) "));
    form->optMethodPos[1]->click();
    for (QCheckBox *box : {form->chkUV, form->chkCond, form->chkEvents, form->chkNotes})
        box->click();
    EXPECT_TRUE(form->cmdExport->isEnabled());
    form->chkMethod->click();
    EXPECT_FALSE(form->cmdExport->isEnabled());
    EXPECT_EQ(form->focusWidget(), form->cmdCancel);
    EXPECT_FALSE(form->optMethodPos[2]->isEnabled());
    form->chkMethod->click();
    Int16 position = -1;
    form->GetMethodPosition(position);
    EXPECT_EQ(position, 1);
    EXPECT_TRUE(form->cmdExport->isEnabled() && form->optMethodPos[2]->isEnabled());
}

TEST_F(ExportDialog, ExportAsksForATextFileWritesWhatWasChosenAndAlwaysCloses)
{
    struct Case
    {
        QString file;
        QList<qint32> codes;
    };
    const Case cases[] = {{dir.filePath(QStringLiteral("run")), {}},
                          {QString(), {}},
                          {dir.filePath(QStringLiteral("gone/run.txt")), {-24}}};
    for (const Case &c : cases) {
        errors.codes.clear();
        const auto form = open(3001);
        form->optMethodPos[2]->click();
        form->chkEvents->click();
        dialogs.files.push_back(c.file);
        form->cmdExport->click();
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(errors.codes, c.codes);
    }
    const ComDlg &asked = dialogs.fileDialogs.constFirst();
    EXPECT_EQ(asked.Flags, 2054);
    EXPECT_EQ(asked.DialogTitle, QStringLiteral("Export Data Text File As..."));
    EXPECT_EQ(asked.Filter, QStringLiteral("Text File(*.txt)|*.txt|All Files(*.*)|*.*"));
    EXPECT_EQ(asked.DefaultExt, QStringLiteral("txt"));
    QFile written(dir.filePath(QStringLiteral("run.txt")));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(written.readAll());
    EXPECT_TRUE(text.contains(QStringLiteral("Data points:\t600\r\n")));
    EXPECT_TRUE(
        text.contains(QStringLiteral("\r\nTime (min)\tUV (AU)\tConductivity (mS/cm)\tMethod")));
}
