#pragma once

#include <QString>

class ComDlg;

/// Styles and answers of MsgBox, by the numbers the program's routines pass and compare.
namespace MsgBoxStyle {
constexpr int OkOnly = 0;
constexpr int OkCancel = 1;
constexpr int AbortRetryIgnore = 2;
constexpr int YesNoCancel = 3;
constexpr int YesNo = 4;
constexpr int RetryCancel = 5;
constexpr int Critical = 16;
constexpr int Question = 32;
constexpr int Exclamation = 48;
constexpr int Information = 64;
constexpr int DefaultButton2 = 256;
constexpr int DefaultButton3 = 512;
} // namespace MsgBoxStyle

namespace MsgBoxResult {
constexpr int Ok = 1;
constexpr int Cancel = 2;
constexpr int Abort = 3;
constexpr int Retry = 4;
constexpr int Ignore = 5;
constexpr int Yes = 6;
constexpr int No = 7;
} // namespace MsgBoxResult

/// Where message boxes, beeps and the common dialog go. The program uses Qt's dialogs; tests
/// install a scripted backend that records what was asked and answers as told.
class DialogBackend
{
public:
    virtual ~DialogBackend() = default;
    virtual int msgBox(const QString &text, int style, const QString &title) = 0;
    virtual void beep() = 0;
    /// Shows an open (save == false) or save dialog; answers false when cancelled.
    virtual bool fileDialog(ComDlg &dialog, bool save) = 0;
    /// Shows the printer dialog; answers false when cancelled.
    virtual bool printerDialog(ComDlg &dialog) = 0;
};

/// Installs a backend (not owned); nullptr returns to Qt's dialogs.
void setDialogBackend(DialogBackend *backend);
DialogBackend &dialogBackend();

/// A box with the text, buttons and icon of `style`; a box without a title bears App.Title.
int MsgBox(const QString &text, int style = MsgBoxStyle::OkOnly, const QString &title = {});
void Beep();
