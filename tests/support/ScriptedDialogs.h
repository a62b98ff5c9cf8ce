#pragma once

#include "runtime/ComDlg.h"
#include "runtime/MsgBox.h"

#include <QList>
#include <QString>

#include <deque>
#include <functional>

/// A dialog backend for tests: records every box, beep and common dialog, and answers from
/// queues the test fills. An unscripted box gets its first button; an unscripted file or
/// printer dialog is cancelled.
class ScriptedDialogs final : public DialogBackend
{
public:
    struct Box
    {
        QString text;
        int style;
        QString title;
        [[nodiscard]] int icon() const { return style & 0x70; }
    };

    ScriptedDialogs();
    ~ScriptedDialogs() override;
    ScriptedDialogs(const ScriptedDialogs &) = delete;
    ScriptedDialogs &operator=(const ScriptedDialogs &) = delete;

    QList<Box> boxes;
    int beeps = 0;
    /// Answers for the next boxes, first used first.
    std::deque<int> answers;
    /// Paths for the next file dialogs; an empty path cancels.
    std::deque<QString> files;
    /// Each file dialog as it was set up when shown.
    QList<ComDlg> fileDialogs;
    /// Output PDF paths for the next printer dialogs, also set on the dialog's printer when it
    /// has one; an empty path cancels.
    std::deque<QString> printers;
    /// Runs while a box stands, before it is answered (as a person would act meanwhile).
    std::function<void(const Box &)> whileBoxShown;

    int msgBox(const QString &text, int style, const QString &title) override;
    void beep() override { ++beeps; }
    bool fileDialog(ComDlg &dialog, bool save) override;
    bool printerDialog(ComDlg &dialog) override;
};
