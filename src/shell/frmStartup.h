#pragma once

#include "shell/InstanceRegistry.h"

#include <QDialog>
#include <QTimer>

#include <functional>

class QLabel;
class QPushButton;

/// @brief The splash window the program starts with, which stays loaded, hidden, as the About
/// box once the main window is up.
///
/// Its load takes the register of running copies before this copy changes it.
class frmStartup : public QDialog
{
    Q_OBJECT

public:
    explicit frmStartup(QWidget *parent = nullptr);

    /// Loads and shows the main window; run by the timer's tick, a second after the load. The
    /// splash stays up behind the dialogs of the window's first activation.
    std::function<void()> loadMain;

    void CenterSplash();
    void TimerLoadMain_Timer();
    /// The main window is up: the splash goes, and stays loaded as the About box.
    void mainLoaded();

    LogInfoRows LogInfoTable;
    QLabel *picSplash = nullptr;
    QTimer TimerLoadMain;
    QPushButton *cmdClose = nullptr;

public slots:
    void reject() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
};
