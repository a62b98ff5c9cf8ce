#pragma once

#include <QString>

class QPrinter;

/// The common dialog: file open and save, and the printer, with the original's properties.
/// `Filter` is "Description|pattern|Description|pattern". A cancelled file dialog leaves
/// `FileName` and `FileTitle` empty, and raises 32755 when `CancelError` is set.
class ComDlg
{
public:
    QString DialogTitle;
    QString Filter;
    int FilterIndex = 1;
    QString DefaultExt;
    QString FileName;
    QString FileTitle;
    int Flags = 0;
    int Copies = 1;
    bool CancelError = false;
    /// The printer chosen by ShowPrinter; an empty name with OutputFileName set prints to PDF.
    QString PrinterName;
    QString OutputFileName;
    /// When given, ShowPrinter makes its choice on this printer, page setup included, so that
    /// what prints next prints as chosen.
    QPrinter *Printer = nullptr;

    void ShowOpen();
    void ShowSave();
    void ShowPrinter();

    /// Sets FileName and FileTitle from a chosen path, adding DefaultExt when it has none.
    void acceptFile(const QString &path);

private:
    void finishFile(bool accepted);
    void finish(bool accepted);
};

namespace ComDlgFlags {
constexpr int OverwritePrompt = 0x2;
constexpr int HideReadOnly = 0x4;
constexpr int PathMustExist = 0x800;
constexpr int FileMustExist = 0x1000;
/// ShowPrinter chooses the printer and sets up its page instead of printing.
constexpr int PrintSetup = 0x40;
} // namespace ComDlgFlags
