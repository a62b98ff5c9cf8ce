#include "ScriptedDialogs.h"

#include "runtime/ComDlg.h"

#include <QPrinter>

ScriptedDialogs::ScriptedDialogs()
{
    setDialogBackend(this);
}

ScriptedDialogs::~ScriptedDialogs()
{
    setDialogBackend(nullptr);
}

int ScriptedDialogs::msgBox(const QString &text, int style, const QString &title)
{
    boxes.append({text, style, title});
    if (whileBoxShown)
        whileBoxShown(boxes.constLast());
    if (!answers.empty()) {
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    switch (style & 7) {
    case MsgBoxStyle::AbortRetryIgnore:
        return MsgBoxResult::Abort;
    case MsgBoxStyle::YesNoCancel:
    case MsgBoxStyle::YesNo:
        return MsgBoxResult::Yes;
    case MsgBoxStyle::RetryCancel:
        return MsgBoxResult::Retry;
    default:
        return MsgBoxResult::Ok;
    }
}

bool ScriptedDialogs::fileDialog(ComDlg &dialog, bool)
{
    fileDialogs.append(dialog);
    if (files.empty())
        return false;
    const QString path = files.front();
    files.pop_front();
    if (path.isEmpty())
        return false;
    dialog.acceptFile(path);
    return true;
}

bool ScriptedDialogs::printerDialog(ComDlg &dialog)
{
    if (printers.empty())
        return false;
    const QString path = printers.front();
    printers.pop_front();
    if (path.isEmpty())
        return false;
    dialog.PrinterName.clear();
    dialog.OutputFileName = path;
    if (dialog.Printer != nullptr) {
        dialog.Printer->setOutputFormat(QPrinter::PdfFormat);
        dialog.Printer->setOutputFileName(path);
    }
    return true;
}
