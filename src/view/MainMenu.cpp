#include "view/MainMenu.h"

#include <QMenuBar>

namespace {

QAction *menuItem(QMenu *menu, const QString &caption, const QKeySequence &shortcut = {})
{
    QAction *item = menu->addAction(caption);
    item->setShortcut(shortcut);
    return item;
}

} // namespace

void MainMenu::build(QMenuBar *bar)
{
    mnuFile = bar->addMenu(QStringLiteral("&File"));
    mnuOpenData = menuItem(mnuFile, QStringLiteral("&Open Data..."), Qt::CTRL | Qt::Key_O);
    mnuFile->addSeparator();
    mnuOpenLog = menuItem(mnuFile, QStringLiteral("Open &Log..."));
    mnuFile->addSeparator();
    mnuClose = menuItem(mnuFile, QStringLiteral("&Close"), Qt::CTRL | Qt::Key_C);
    mnuClose->setEnabled(false);
    mnuFile->addSeparator();
    mnuSaveData = menuItem(mnuFile, QStringLiteral("&Save Data"), Qt::CTRL | Qt::Key_S);
    mnuSaveDataAs = menuItem(mnuFile, QStringLiteral("Save Data &As..."));
    mnuSaveSlectedData = menuItem(mnuFile, QStringLiteral("Save Selec&ted Data As..."));
    mnuFile->addSeparator();
    mnuSaveLog = menuItem(mnuFile, QStringLiteral("Save Lo&g..."));
    mnuSaveLog->setEnabled(false);
    mnuFile->addSeparator();
    mnuExport = menuItem(mnuFile, QStringLiteral("&Export"), Qt::CTRL | Qt::Key_E);
    mnuFile->addSeparator();
    mnuPrintSetup = menuItem(mnuFile, QStringLiteral("P&rint Setup"));
    mnuPrint = menuItem(mnuFile, QStringLiteral("&Print..."), Qt::CTRL | Qt::Key_P);
    mnuFile->addSeparator();
    mnuExit = menuItem(mnuFile, QStringLiteral("E&xit"));

    mnuColectData = bar->addMenu(QStringLiteral("Collect &Data"));
    mnuStart = menuItem(mnuColectData, QStringLiteral("&Record"), Qt::CTRL | Qt::Key_R);
    mnuStop = menuItem(mnuColectData, QStringLiteral("&Stop"), Qt::CTRL | Qt::Key_T);
    mnuColectData->addSeparator();
    mnuClear = menuItem(mnuColectData, QStringLiteral("&Clear Chart Recorder"));
    mnuColectData->addSeparator();
    mnuLogOn = menuItem(mnuColectData, QStringLiteral("&Log ON"));
    mnuLogOff = menuItem(mnuColectData, QStringLiteral("Log O&FF"));
    mnuColectData->addSeparator();
    mnuLogName = menuItem(mnuColectData, QStringLiteral("Velquin System &Name"));
    mnuComPort = menuItem(mnuColectData, QStringLiteral("COM &Port"));

    mnuView = bar->addMenu(QStringLiteral("&View"));
    mnuMethod = menuItem(mnuView, QStringLiteral("&Method"), Qt::CTRL | Qt::Key_M);
    mnuNotes = menuItem(mnuView, QStringLiteral("&Notes"), Qt::CTRL | Qt::Key_N);

    mnuHelp = bar->addMenu(QStringLiteral("&Help"));
    mnuIntro = menuItem(mnuHelp, QStringLiteral("Introduction to &Ostrel"));
    mnuIndex = menuItem(mnuHelp, QStringLiteral("Help &Index"));
    mnuAbout = menuItem(mnuHelp, QStringLiteral("&About"));
}
