#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QLineEdit;
class QWidget;

/// The key filter of every numeric entry: answers the key code when the key may pass, 0 when
/// it is refused (after a beep). Backspace and digits pass; the locale's decimal separator
/// passes where allowed and the text holds none outside the selection; a minus sign passes
/// where allowed, at the start only, and once.
int FilterNumericKey(int KeyAscii, const QString &Text, const QString &SelText, int SelStart,
                     bool AllowPoint, bool AllowMinus);

/// Puts FilterNumericKey in front of a line edit or an editable combo box, swallows Enter to
/// run `onEnter`, and selects the whole entry when it takes the focus. A combo box is watched
/// itself, not its editor: the keys typed into it reach the combo box first. `maxLength`
/// limits what is typed, not what the program writes there. The window's shortcuts win over
/// the editor's own (Ctrl+C is Close, not Copy).
class NumericEntry : public QObject
{
public:
    NumericEntry(QWidget *control, bool allowMinus, std::function<void()> onEnter,
                 int maxLength = 32767);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_entry;
    bool m_allowMinus;
    int m_maxLength;
    std::function<void()> m_onEnter;
};
