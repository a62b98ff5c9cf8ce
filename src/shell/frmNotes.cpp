#include "shell/frmNotes.h"

#include "chart/Quillchart.h"
#include "runtime/HelpContext.h"
#include "runtime/MsgBox.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// Notes as the editor gives them back, with its line ends.
QString asEdited(QString notes)
{
    notes.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    notes.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return notes;
}

} // namespace

frmNotes::frmNotes(Quillchart &chart, bool &ChartSaved, std::function<void()> release,
                   QWidget *parent)
    : QDialog(parent)
    , m_chart(chart)
    , m_chartSaved(ChartSaved)
    , m_release(std::move(release))
{
    setHelpContext(this, 4);
    setWindowTitle(QStringLiteral("Notes"));
    txtNotes = new QPlainTextEdit(asEdited(chart.GetNotes()), this);
    txtNotes->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    cmdOK = new QPushButton(QStringLiteral("&OK"), this);
    cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    connect(cmdOK, &QPushButton::clicked, this, &frmNotes::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmNotes::cmdCancel_Click);

    auto *column = new QVBoxLayout(this);
    column->addWidget(txtNotes);
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cmdOK);
    row->addWidget(cmdCancel);
    column->addLayout(row);
    resize(520, 360);
}

bool frmNotes::changed() const
{
    return txtNotes->toPlainText() != asEdited(m_chart.GetNotes());
}

void frmNotes::keepEdit()
{
    m_chart.SetNotes(txtNotes->toPlainText());
    m_chartSaved = false;
}

void frmNotes::cmdOK_Click()
{
    NotesClosing = true;
    if (changed())
        keepEdit();
    bool result = true;
    CloseNotes(result);
}

void frmNotes::cmdCancel_Click()
{
    NotesClosing = true;
    bool result = true;
    CloseNotes(result);
}

void frmNotes::CloseNotes(bool &result)
{
    result = true;
    if (changed()) {
        switch (MsgBox(QStringLiteral("Your notes have been changed\rSave changes ?"),
                       MsgBoxStyle::YesNoCancel | MsgBoxStyle::Question)) {
        case MsgBoxResult::Yes:
            keepEdit();
            break;
        case MsgBoxResult::Cancel:
            result = false;
            break;
        default:
            break;
        }
    }
    if (result)
        m_release();
    NotesClosing = false;
}

void frmNotes::closeEvent(QCloseEvent *event)
{
    if (NotesClosing)
        return QDialog::closeEvent(event);
    bool result = true;
    CloseNotes(result);
    event->setAccepted(result);
}
