#include "shell/frmLogName.h"

#include "runtime/MsgBox.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

/// The characters a name may hold: none that a file name or an entry of the register of copies
/// could not carry.
bool allowedKey(char16_t code)
{
    return code == 8 || code == 32 || (code >= u'0' && code <= u'9') ||
           (code >= u'A' && code <= u'Z') || (code >= u'a' && code <= u'z');
}

/// Keys that type no character, or that the dialog's buttons take, reach no key filter.
bool typesNothing(const QKeyEvent &key)
{
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete:
        return true;
    default:
        return key.text().isEmpty();
    }
}

} // namespace

frmLogName::frmLogName(QString &SystemName, QWidget &mainWindow)
    : QDialog(&mainWindow, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , m_systemName(SystemName)
    , m_mainWindow(mainWindow)
{
    setWindowTitle(QStringLiteral("Enter Velquin System Name"));
    txtLogFileName = new QLineEdit(SystemName, this);
    txtLogFileName->setMaxLength(25);
    txtLogFileName->installEventFilter(this);
    lblPrompt = new QLabel(
        QStringLiteral("Valid characters:   0-9, A-Z, and a-z Maximum length:   25 characters"),
        this);
    lblPrompt->setWordWrap(true);
    // Breaks the text where the two rules meet.
    lblPrompt->setFixedWidth(lblPrompt->fontMetrics().horizontalAdvance(
        QStringLiteral("Valid characters:   0-9, A-Z, and a-z  ")));
    cmdOKButton = new QPushButton(QStringLiteral("OK"), this);
    cmdOKButton->setDefault(true);
    cmdCancelButton = new QPushButton(QStringLiteral("Cancel"), this);
    auto *grid = new QGridLayout(this);
    grid->addWidget(txtLogFileName, 0, 0);
    grid->addWidget(cmdOKButton, 0, 1);
    grid->addWidget(lblPrompt, 1, 0, 2, 1);
    grid->addWidget(cmdCancelButton, 1, 1);
    grid->setSizeConstraint(QLayout::SetFixedSize);

    connect(txtLogFileName, &QLineEdit::textChanged, this,
            [this](const QString &text) { cmdOKButton->setEnabled(!text.isEmpty()); });
    connect(cmdOKButton, &QPushButton::clicked, this, &frmLogName::cmdOKButton_Click);
    connect(cmdCancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

QString frmLogName::caption(const QString &SystemName)
{
    return QStringLiteral("Ostrel MS - System: ") + SystemName;
}

void frmLogName::cmdOKButton_Click()
{
    m_systemName = txtLogFileName->text();
    m_mainWindow.setWindowTitle(caption(m_systemName));
    accept();
}

bool frmLogName::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != txtLogFileName || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto &key = static_cast<const QKeyEvent &>(*event);
    if (typesNothing(key))
        return false;
    cmdOKButton->setEnabled(!txtLogFileName->text().isEmpty());
    if (allowedKey(key.text().front().unicode()))
        return false;
    Beep();
    return true;
}

void frmLogName::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    txtLogFileName->selectAll();
    txtLogFileName->setFocus();
}
