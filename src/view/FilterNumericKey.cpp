#include "view/FilterNumericKey.h"

#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

int FilterNumericKey(int KeyAscii, const QString &Text, const QString &SelText, int SelStart,
                     bool AllowPoint, bool AllowMinus)
{
    constexpr int kBackspace = 8;
    const QChar ch(KeyAscii);
    bool passes = false;
    if (KeyAscii == kBackspace || (ch >= QLatin1Char('0') && ch <= QLatin1Char('9')))
        passes = true;
    else if (ch == DecimalPoint())
        passes = AllowPoint && (!Text.contains(ch) || SelText.contains(ch));
    else if (ch == QLatin1Char('-'))
        passes = AllowMinus && SelStart == 0 &&
                 (!Text.contains(QLatin1Char('-')) || SelText.contains(QLatin1Char('-')));
    if (passes)
        return KeyAscii;
    Beep();
    return 0;
}

namespace {

QLineEdit *editorOf(QWidget *control)
{
    if (auto *combo = qobject_cast<QComboBox *>(control))
        return combo->lineEdit();
    return qobject_cast<QLineEdit *>(control);
}

} // namespace

NumericEntry::NumericEntry(QWidget *control, bool allowMinus, std::function<void()> onEnter,
                           int maxLength)
    : QObject(control)
    , m_entry(editorOf(control))
    , m_allowMinus(allowMinus)
    , m_maxLength(maxLength)
    , m_onEnter(std::move(onEnter))
{
    control->installEventFilter(this);
}

bool NumericEntry::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        // After a click has placed the caret, not before.
        QTimer::singleShot(0, m_entry, &QLineEdit::selectAll);
        return false;
    }
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->modifiers() & Qt::ControlModifier) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        m_onEnter();
        m_entry->selectAll();
        return true;
    }
    // Keys without a character (arrows, Delete, shortcuts) are not typing.
    const QString text = key->text();
    if (text.size() != 1 || key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
        return false;
    const int code = text.front().unicode();
    if (code < 32 && code != 8)
        return false;
    if (code != 8 && m_entry->text().size() - m_entry->selectedText().size() >= m_maxLength)
        return true;
    return FilterNumericKey(code, m_entry->text(), m_entry->selectedText(),
                            m_entry->hasSelectedText() ? m_entry->selectionStart()
                                                       : m_entry->cursorPosition(),
                            true, m_allowMinus) == 0;
}
