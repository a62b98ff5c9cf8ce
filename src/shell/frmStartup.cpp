#include "shell/frmStartup.h"

#include "runtime/RuntimeError.h"
#include "shell/SplashPicture.h"

#include <QLabel>
#include <QPixmap>
#include <QPushButton>

frmStartup::frmStartup(QWidget *parent) : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint)
{
    picSplash = new QLabel(this);
    picSplash->setPixmap(QPixmap::fromImage(splashPicture()));
    picSplash->resize(picSplash->sizeHint());
    cmdClose = new QPushButton(QStringLiteral("&Close"), this);
    cmdClose->setDefault(true);
    cmdClose->resize(cmdClose->sizeHint());
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::hide);
    setFixedSize(picSplash->size());
    TimerLoadMain.setInterval(1000);
    connect(&TimerLoadMain, &QTimer::timeout, this, &frmStartup::TimerLoadMain_Timer);

    ignoreErrors([&] { LogInfoTable = InstanceRegistry::readLogInfo(); });
    ignoreErrors([&] { cmdClose->setVisible(false); });
    ignoreErrors([&] { TimerLoadMain.start(); });
}

void frmStartup::CenterSplash()
{
    picSplash->move((width() - picSplash->width()) / 2, (height() - picSplash->height()) / 2);
}

void frmStartup::TimerLoadMain_Timer()
{
    TimerLoadMain.stop();
    if (loadMain)
        loadMain();
}

void frmStartup::mainLoaded()
{
    hide();
    cmdClose->setVisible(true);
}

void frmStartup::reject()
{
    // Escape is the Close button's, which the splash does not offer yet.
    if (cmdClose->isVisible())
        QDialog::reject();
}

void frmStartup::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    CenterSplash();
    cmdClose->move(width() - cmdClose->width() * 5 / 4, height() - cmdClose->height() * 5 / 4);
    cmdClose->raise();
}
