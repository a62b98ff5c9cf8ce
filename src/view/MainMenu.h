#pragma once

class QAction;
class QMenu;
class QMenuBar;

/// The window's menu tree, each item under its name. `build` makes the items with their
/// captions and shortcuts; what they do is connected by the window.
struct MainMenu
{
    void build(QMenuBar *bar);

    QMenu *mnuFile = nullptr;
    QAction *mnuOpenData = nullptr;
    QAction *mnuOpenLog = nullptr;
    QAction *mnuClose = nullptr;
    QAction *mnuSaveData = nullptr;
    QAction *mnuSaveDataAs = nullptr;
    QAction *mnuSaveSlectedData = nullptr;
    QAction *mnuSaveLog = nullptr;
    QAction *mnuExport = nullptr;
    QAction *mnuPrintSetup = nullptr;
    QAction *mnuPrint = nullptr;
    QAction *mnuExit = nullptr;
    QMenu *mnuColectData = nullptr;
    QAction *mnuStart = nullptr;
    QAction *mnuStop = nullptr;
    QAction *mnuClear = nullptr;
    QAction *mnuLogOn = nullptr;
    QAction *mnuLogOff = nullptr;
    QAction *mnuLogName = nullptr;
    QAction *mnuComPort = nullptr;
    QMenu *mnuView = nullptr;
    QAction *mnuMethod = nullptr;
    QAction *mnuNotes = nullptr;
    QMenu *mnuHelp = nullptr;
    QAction *mnuIntro = nullptr;
    QAction *mnuIndex = nullptr;
    QAction *mnuAbout = nullptr;
};
