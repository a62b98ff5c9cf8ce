#include "shell/frmDataRecovery.h"

#include "runtime/HelpContext.h"
#include "runtime/MsgBox.h"
#include "shell/Recovery.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kItemValue = Qt::UserRole;

QLabel *prompt(const QString &text, bool bold, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setBold(bold);
    label->setFont(font);
    return label;
}

} // namespace

frmDataRecovery::frmDataRecovery(Recovery &recovery, QWidget *parent)
    : QDialog(parent)
    , m_recovery(recovery)
{
    // Recovery is told with the running log.
    setHelpContext(this, 11);
    setWindowTitle(QStringLiteral("Ostrel - Recover Data"));
    setSizeGripEnabled(true);
    lblPrompt = {
        prompt(QStringLiteral("One or more Log files from previous operation have been found!"),
               true, this),
        prompt(QStringLiteral("This situation occurs when Ostrel is not closed properly.  The "
                              "most frequent cause of this situation is a power failure during "
                              "operation."),
               false, this),
        prompt(QStringLiteral("In most cases, data from the previous operation can be "
                              "recovered.  Please select all log files that you wish to recover "
                              "data from using the list below."),
               false, this),
        prompt(QStringLiteral("(Note:  When the Log File name is unknown a unique number is "
                              "assigned.)"),
               false, this),
        prompt(QStringLiteral("Log File Name"), true, this),
        prompt(QStringLiteral("Date"), true, this),
        prompt(QStringLiteral("Time"), true, this),
    };
    lstLogFiles = new QListWidget(this);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    lstLogFiles->setFont(fixed);
    cmdRecoverButton = new QPushButton(QStringLiteral("Recover"), this);
    cmdDoneButton = new QPushButton(QStringLiteral("Done"), this);
    for (QPushButton *button : {cmdRecoverButton, cmdDoneButton}) {
        QFont font = button->font();
        font.setBold(true);
        button->setFont(font);
    }
    cmdRecoverButton->setEnabled(false);

    // The heads stand over the list's columns, which start at characters 3, 33 and 46.
    auto *heads = new QWidget(this);
    const QFontMetricsF metrics(fixed);
    const int margin = lstLogFiles->frameWidth() +
                       lstLogFiles->style()->pixelMetric(QStyle::PM_IndicatorWidth) + 8;
    const auto columnX = [&](int column) {
        return margin + qRound(metrics.horizontalAdvance(QString(column, QLatin1Char(' '))));
    };
    for (const auto &[label, column] :
         {std::pair{lblPrompt[4], 2}, std::pair{lblPrompt[5], 32}, std::pair{lblPrompt[6], 45}}) {
        label->setParent(heads);
        label->setWordWrap(false);
        label->move(columnX(column), 0);
    }
    heads->setMinimumHeight(lblPrompt[4]->sizeHint().height());
    heads->setMinimumWidth(columnX(60));

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdRecoverButton);
    buttons->addWidget(cmdDoneButton);
    auto *layout = new QVBoxLayout(this);
    for (int i = 0; i < 4; ++i)
        layout->addWidget(lblPrompt[std::size_t(i)]);
    layout->addWidget(heads);
    layout->addWidget(lstLogFiles, 1);
    layout->addLayout(buttons);
    resize(heads->minimumWidth() + 40, 380);

    connect(lstLogFiles, &QListWidget::itemChanged, this, &frmDataRecovery::lstLogFiles_ItemCheck);
    connect(cmdRecoverButton, &QPushButton::clicked, this,
            &frmDataRecovery::cmdRecoverButton_Click);
    connect(cmdDoneButton, &QPushButton::clicked, this, &frmDataRecovery::cmdDoneButton_Click);
}

void frmDataRecovery::addRow(const QString &text)
{
    auto *item = new QListWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
    item->setData(kItemValue, 0);
    lstLogFiles->addItem(item);
}

void frmDataRecovery::lstLogFiles_ItemCheck()
{
    bool any = false;
    for (int i = 0; i < lstLogFiles->count(); ++i)
        any = any || lstLogFiles->item(i)->checkState() == Qt::Checked;
    cmdRecoverButton->setEnabled(any);
}

void frmDataRecovery::cmdRecoverButton_Click()
{
    for (int i = 0; i < lstLogFiles->count(); ++i) {
        QListWidgetItem *row = lstLogFiles->item(i);
        if (row->checkState() == Qt::Checked && m_recovery.recoverRow(row->text()))
            row->setData(kItemValue, -1);
    }
    RebuildLogList();
    cmdRecoverButton->setEnabled(false);
    if (lstLogFiles->count() == 0)
        cmdDoneButton_Click();
}

void frmDataRecovery::RebuildLogList()
{
    QStringList texts;
    QList<int> values;
    for (int i = 0; i < lstLogFiles->count(); ++i) {
        texts << lstLogFiles->item(i)->text();
        values << lstLogFiles->item(i)->data(kItemValue).toInt();
    }
    lstLogFiles->clear();
    for (qsizetype i = 0; i < texts.size(); ++i)
        if (values[i] == 0)
            addRow(texts[i]);
}

void frmDataRecovery::cmdDoneButton_Click()
{
    if (lstLogFiles->count() > 0) {
        const QString text =
            QStringLiteral("Not all Log files have been recovered!  Log files that have not "
                           "been recovered will be permanently lost.\r\n(Select 'Cancel' to "
                           "recover additional Log files.)");
        if (MsgBox(text,
                   MsgBoxStyle::OkCancel | MsgBoxStyle::Exclamation | MsgBoxStyle::DefaultButton2,
                   QStringLiteral("Ostrel MS - Warning!")) != MsgBoxResult::Ok)
            return;
    }
    m_recovery.PurgeLogDirectories();
    accept();
}
