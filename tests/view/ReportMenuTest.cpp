#include "ModalDriver.h"
#include "WindowFixture.h"
#include "chart/Quillchart.h"
#include "reports/frmExport.h"
#include "reports/frmPrint.h"

#include <QAction>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

namespace {

class ReportMenuTest : public WindowFixture
{
protected:
    ModalDriver driver;
    QTemporaryDir dir;
};

} // namespace

TEST_F(ReportMenuTest, MenuAndPrintButtonReportOnTheTabInFront)
{
    recordMinutes(2);
    {
        Quillchart run;
        for (int i = 0; i < 901; ++i)
            run.AddSample(0.1f, 20.0f);
        ASSERT_TRUE(run.SaveDataFile(dir.filePath("run.chd")));
    }
    dialogs.files.push_back(dir.filePath("run.chd"));
    window->menu.mnuOpenData->trigger();

    QString range;
    driver.answerWith<frmExport>([&](frmExport &form) {
        range = form.optDataRegion[1]->text();
        form.cmdCancel->click();
    });
    window->menu.mnuExport->trigger();
    EXPECT_EQ(range, "All Data               (Time:  0.00  to  3.00  minutes) ");

    const QString pdf = dir.filePath("report.pdf");
    dialogs.printers.push_back(pdf);
    window->menu.mnuPrintSetup->trigger();
    QString title;
    driver.answerWith<frmPrint>([&](frmPrint &form) {
        title = form.txtTitel->text();
        form.cmdCancel->click();
    });
    window->toolbar.cmdPrint->trigger();
    EXPECT_EQ(title, "run");
    EXPECT_FALSE(QFileInfo::exists(pdf));

    driver.answerWith<frmPrint>([](frmPrint &form) { form.cmdOk->click(); });
    window->menu.mnuPrint->trigger();
    EXPECT_GT(QFileInfo(pdf).size(), 0);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
}
