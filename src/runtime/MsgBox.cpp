#include "runtime/MsgBox.h"

#include "runtime/App.h"
#include "runtime/ComDlg.h"
#include "runtime/RuntimeError.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>

namespace {

struct ButtonSpec
{
    QMessageBox::StandardButton button;
    int result;
};

QList<ButtonSpec> buttonsOf(int style)
{
    switch (style & 7) {
    case MsgBoxStyle::OkCancel:
        return {{QMessageBox::Ok, MsgBoxResult::Ok}, {QMessageBox::Cancel, MsgBoxResult::Cancel}};
    case MsgBoxStyle::AbortRetryIgnore:
        return {{QMessageBox::Abort, MsgBoxResult::Abort},
                {QMessageBox::Retry, MsgBoxResult::Retry},
                {QMessageBox::Ignore, MsgBoxResult::Ignore}};
    case MsgBoxStyle::YesNoCancel:
        return {{QMessageBox::Yes, MsgBoxResult::Yes},
                {QMessageBox::No, MsgBoxResult::No},
                {QMessageBox::Cancel, MsgBoxResult::Cancel}};
    case MsgBoxStyle::YesNo:
        return {{QMessageBox::Yes, MsgBoxResult::Yes}, {QMessageBox::No, MsgBoxResult::No}};
    case MsgBoxStyle::RetryCancel:
        return {{QMessageBox::Retry, MsgBoxResult::Retry},
                {QMessageBox::Cancel, MsgBoxResult::Cancel}};
    default:
        return {{QMessageBox::Ok, MsgBoxResult::Ok}};
    }
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case MsgBoxStyle::Critical:
        return QMessageBox::Critical;
    case MsgBoxStyle::Question:
        return QMessageBox::Question;
    case MsgBoxStyle::Exclamation:
        return QMessageBox::Warning;
    case MsgBoxStyle::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// "Data (*.chd)|*.chd|All (*.*)|*.*" -> "Data (*.chd);;All (*.*)", keeping the patterns.
QStringList qtFilters(const QString &filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        filters << QStringLiteral("%1 (%2)").arg(parts[i].section(QLatin1Char('('), 0, 0).trimmed(),
                                                 patterns);
    }
    return filters;
}

class QtDialogBackend final : public DialogBackend
{
public:
    int msgBox(const QString &text, int style, const QString &title) override
    {
        // A lone carriage return breaks the line, as the original's boxes did.
        QString shown = text;
        shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
        QMessageBox box(iconOf(style), title, shown, QMessageBox::NoButton,
                        QApplication::activeWindow());
        const QList<ButtonSpec> specs = buttonsOf(style);
        const int defaultIndex = (style & 0x300) >> 8;
        for (int i = 0; i < specs.size(); ++i) {
            QPushButton *button = box.addButton(specs[i].button);
            if (i == defaultIndex)
                box.setDefaultButton(button);
        }
        box.exec();
        const auto clicked = box.standardButton(box.clickedButton());
        for (const ButtonSpec &choice : specs)
            if (choice.button == clicked)
                return choice.result;
        // Closed by the window's close button: the cancel answer where there is one.
        return specs.size() > 1 ? specs.last().result : MsgBoxResult::Ok;
    }

    void beep() override { QApplication::beep(); }

    bool fileDialog(ComDlg &dialog, bool save) override
    {
        QFileDialog fileDialog(QApplication::activeWindow(), dialog.DialogTitle);
        fileDialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        fileDialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
        const QStringList filters = qtFilters(dialog.Filter);
        fileDialog.setNameFilters(filters);
        if (dialog.FilterIndex >= 1 && dialog.FilterIndex <= filters.size())
            fileDialog.selectNameFilter(filters[dialog.FilterIndex - 1]);
        fileDialog.setDefaultSuffix(dialog.DefaultExt);
        if (!(dialog.Flags & ComDlgFlags::OverwritePrompt))
            fileDialog.setOption(QFileDialog::DontConfirmOverwrite);
        if (!m_lastFolder.isEmpty())
            fileDialog.setDirectory(m_lastFolder);
        if (!dialog.FileName.isEmpty())
            fileDialog.selectFile(dialog.FileName);
        if (fileDialog.exec() != QDialog::Accepted || fileDialog.selectedFiles().isEmpty())
            return false;
        dialog.acceptFile(fileDialog.selectedFiles().constFirst());
        m_lastFolder = QFileInfo(dialog.FileName).absolutePath();
        return true;
    }

    bool printerDialog(ComDlg &dialog) override
    {
        QPrinter own(QPrinter::HighResolution);
        QPrinter &printer = dialog.Printer != nullptr ? *dialog.Printer : own;
        if (dialog.Printer == nullptr && !dialog.PrinterName.isEmpty())
            printer.setPrinterName(dialog.PrinterName);
        printer.setCopyCount(dialog.Copies);
        QPrintDialog printDialog(&printer, QApplication::activeWindow());
        const bool setup = (dialog.Flags & ComDlgFlags::PrintSetup) != 0;
        // The printer dialog has titles of its own; DialogTitle belongs to the file dialogs.
        printDialog.setWindowTitle(setup ? QStringLiteral("Print Setup") : QStringLiteral("Print"));
        if (setup)
            printDialog.setOptions(QAbstractPrintDialog::PrintToFile |
                                   QAbstractPrintDialog::PrintShowPageSize);
        if (printDialog.exec() != QDialog::Accepted)
            return false;
        // Cancelling the page keeps the printer just chosen, with the page it had.
        if (setup)
            QPageSetupDialog(&printer, QApplication::activeWindow()).exec();
        dialog.PrinterName = printer.printerName();
        dialog.OutputFileName = printer.outputFileName();
        dialog.Copies = printer.copyCount();
        return true;
    }

private:
    /// Each file dialog starts in the folder the previous one ended in.
    QString m_lastFolder;
};

DialogBackend *installedBackend = nullptr;

} // namespace

void setDialogBackend(DialogBackend *backend)
{
    installedBackend = backend;
}

DialogBackend &dialogBackend()
{
    static QtDialogBackend qtBackend;
    return installedBackend ? *installedBackend : qtBackend;
}

int MsgBox(const QString &text, int style, const QString &title)
{
    return dialogBackend().msgBox(text, style, title.isEmpty() ? App::Title() : title);
}

void Beep()
{
    dialogBackend().beep();
}

void ComDlg::ShowOpen()
{
    finishFile(dialogBackend().fileDialog(*this, false));
}

void ComDlg::ShowSave()
{
    finishFile(dialogBackend().fileDialog(*this, true));
}

void ComDlg::ShowPrinter()
{
    finish(dialogBackend().printerDialog(*this));
}

void ComDlg::acceptFile(const QString &path)
{
    QString chosen = path;
    if (!DefaultExt.isEmpty() && QFileInfo(chosen).suffix().isEmpty())
        chosen += QLatin1Char('.') + DefaultExt;
    FileName = chosen;
    FileTitle = QFileInfo(chosen).fileName();
}

void ComDlg::finishFile(bool accepted)
{
    if (!accepted) {
        FileName.clear();
        FileTitle.clear();
    }
    finish(accepted);
}

void ComDlg::finish(bool accepted)
{
    if (!accepted && CancelError)
        Raise(ErrorNumber::CancelSelected);
}
