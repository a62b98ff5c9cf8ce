#include "acquisition/frmNoData.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

frmNoData::frmNoData(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Ostrel"));
    auto *column = new QVBoxLayout(this);
    auto *message = new QHBoxLayout;
    auto *icon = new QLabel(this);
    const int side = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    Label1 = new QLabel(QStringLiteral("No data is being received."), this);
    message->addWidget(icon);
    message->addWidget(Label1, 1);
    column->addLayout(message);

    auto *buttons = new QHBoxLayout;
    cmdOk = new QPushButton(QStringLiteral("&Ok"), this);
    cmdSetup = new QPushButton(QStringLiteral("&Setup"), this);
    cmdExit = new QPushButton(QStringLiteral("&Exit"), this);
    cmdOk->setDefault(true);
    buttons->addStretch();
    for (QPushButton *button : {cmdOk, cmdSetup, cmdExit})
        buttons->addWidget(button);
    column->addLayout(buttons);

    connect(cmdOk, &QPushButton::clicked, this, [this] {
        m_choice = Ok;
        accept();
    });
    connect(cmdSetup, &QPushButton::clicked, this, [this] {
        m_choice = Setup;
        accept();
    });
    connect(cmdExit, &QPushButton::clicked, this, [this] {
        m_choice = Exit;
        accept();
    });
}
