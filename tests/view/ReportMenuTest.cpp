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
    for (int i = 0; i < 901; ++i)
        window->Chart[1]->AddSample(0.1f, 20.0f);
    window->Chart[1]->setChartTitle("run");
    window->tabs.CurrentChart = 1;

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
    driver.answerWith<frmPrint>([](frmPrint &form) { form.cmdCancel->click(); });
    dialogs.printers.push_back(dir.filePath("report.pdf"));
    window->menu.mnuExport->trigger();
    window->menu.mnuPrintSetup->trigger();
    window->toolbar.cmdPrint->trigger();
    window->menu.mnuPrint->trigger();
    EXPECT_EQ(driver.showings(), 3);
    EXPECT_EQ(range, "All Data               (Time:  0.00  to  3.00  minutes) ");
    EXPECT_EQ(title, "run");
    EXPECT_GT(QFileInfo(dir.filePath("report.pdf")).size(), 0);
}
