#pragma once

#include <QPointer>

class QAction;
class QDialog;
class frmMain;

/// @brief The method and notes windows behind the tool bar's two check buttons: a button
/// pressed shows its window, modally; released, it unloads it. Closing a window releases its
/// button.
class TextWindows
{
public:
    explicit TextWindows(frmMain &window);

    void textWindowButton(QAction *Button);

private:
    void release(QAction *Button);

    frmMain &m_window;
    QPointer<QDialog> m_method;
    QPointer<QDialog> m_notes;
};
