#include "shell/TextWindows.h"

#include "shell/frmMethod.h"
#include "shell/frmNotes.h"
#include "view/frmMain.h"

#include <QAction>

TextWindows::TextWindows(frmMain &window) : m_window(window)
{}

void TextWindows::textWindowButton(QAction *Button)
{
    const bool method = Button == m_window.toolbar.cmdMethod;
    QPointer<QDialog> &shown = method ? m_method : m_notes;
    if (!Button->isChecked()) {
        Button->setToolTip(method ? QStringLiteral("Show method form")
                                  : QStringLiteral("Show notes form"));
        if (shown)
            shown->done(QDialog::Accepted);
        return;
    }
    Button->setToolTip(method ? QStringLiteral("Hide method form")
                              : QStringLiteral("Hide notes form"));
    const int current = m_window.tabs.CurrentChart;
    Quillchart &chart = *m_window.Chart[std::size_t(current)];
    auto releaseButton = [this, Button] { release(Button); };
    std::unique_ptr<QDialog> form;
    if (method)
        form = std::make_unique<frmMethod>(chart, releaseButton, &m_window);
    else
        form = std::make_unique<frmNotes>(chart, m_window.tabs.ChartSaved[std::size_t(current)],
                                          releaseButton, &m_window);
    shown = form.get();
    form->exec();
}

void TextWindows::release(QAction *Button)
{
    Button->setChecked(false);
    m_window.Toolsbar_ButtonClick(Button);
}
