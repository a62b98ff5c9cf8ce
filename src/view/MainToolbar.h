#pragma once

class QAction;
class QMainWindow;
class QToolBar;

/// The window's tool bar `Toolsbar` and its buttons under their keys. `build` makes them with
/// their pictures, captions, tool-tips and pressed states; the window connects what they do.
struct MainToolbar
{
    void build(QMainWindow *window);

    QToolBar *Toolsbar = nullptr;
    QAction *cmdOpen = nullptr;
    QAction *cmdSave = nullptr;
    QAction *cmdPrint = nullptr;
    QAction *cmdClear = nullptr;
    QAction *cmdRecord = nullptr;
    QAction *cmdStop = nullptr;
    QAction *cmdMethod = nullptr;
    QAction *cmdNotes = nullptr;
    QAction *cmdLogOn = nullptr;
    QAction *cmdLogOff = nullptr;
};
