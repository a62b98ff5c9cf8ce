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

TEST_F(WindowFixture, ReportCommandsActOnTheTabInFront)
{
    ModalDriver driver;
    QTemporaryDir dir;
    recordMinutes(2);
    Quillchart run;
    for (int i = 0; i < 901; ++i)
        run.AddSample(0.1f, 20.0f);
    ASSERT_TRUE(run.SaveDataFile(dir.filePath("run.chd")));
    dialogs.files.push_back(dir.filePath("run.chd"));
    window->menu.mnuOpenData->trigger();

    QString range;
    QString title;
    driver.answerWith<frmExport>([&](frmExport &form) {
        range = form.optDataRegion[1]->text();
        form.cmdCancel->click();
    });
    driver.answerWith<frmPrint>([&](frmPrint &form) {
        title = form.txtTitel->text();
        form.cmdOk->click();
    });
    dialogs.printers.push_back(dir.filePath("report.pdf"));
    window->menu.mnuExport->trigger();
    window->menu.mnuPrintSetup->trigger();
    window->toolbar.cmdPrint->trigger();
    driver.answerWith<frmPrint>([](frmPrint &form) { form.cmdCancel->click(); });
    window->menu.mnuPrint->trigger();
    EXPECT_EQ(driver.showings(), 3);
    EXPECT_EQ(range, "All Data               (Time:  0.00  to  3.00  minutes) ");
    EXPECT_EQ(title, "run");
    EXPECT_GT(QFileInfo(dir.filePath("report.pdf")).size(), 0);
}
