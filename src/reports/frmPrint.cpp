#include "reports/frmPrint.h"

#include "chart/Quillchart.h"
#include "runtime/HelpContext.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kHelpContext = 5;

int valueOf(const QCheckBox *box)
{
    return box->isChecked() ? 1 : 0;
}

} // namespace

frmPrint::frmPrint(Quillchart &chart, PrintChoice &choice, std::function<void()> PrintSetup,
                   QWidget *parent)
    : QDialog(parent)
    , m_chart(chart)
    , m_choice(choice)
    , m_printSetup(std::move(PrintSetup))
{
    buildControls();
    InitPrint();
    connect(chkChromotogram, &QCheckBox::toggled, this, &frmPrint::chkChromotogram_Click);
    for (QCheckBox *trace : {chkUVTrace, chkCondTrace, chkEvents})
        connect(trace, &QCheckBox::toggled, this, &frmPrint::SyncChromatogram);
    for (QCheckBox *box : {chkNotes, chkMethod})
        connect(box, &QCheckBox::toggled, this, &frmPrint::UpdatePrintButton);
    connect(cmdOk, &QPushButton::clicked, this, &frmPrint::cmdOk_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdPrintSetup, &QPushButton::clicked, this, [this] { m_printSetup(); });
}

void frmPrint::buildControls()
{
    setWindowTitle(QStringLiteral("Print"));
    // A fixed border: a title and a close box, nothing to minimise, maximise or resize.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint);

    lblTitle = new QLabel(QStringLiteral("Print Title:"), this);
    txtTitel = new QLineEdit(this);
    framePrint = new QGroupBox(QStringLiteral("Add Information to the report"), this);
    chkChromotogram = new QCheckBox(QStringLiteral("Chromatogram"), framePrint);
    chkUVTrace = new QCheckBox(QStringLiteral("UV Trace"), framePrint);
    chkCondTrace = new QCheckBox(QStringLiteral("Conductivity Trace"), framePrint);
    chkEvents = new QCheckBox(QStringLiteral("Events Marks"), framePrint);
    chkNotes = new QCheckBox(QStringLiteral("Notes"), framePrint);
    chkMethod = new QCheckBox(QStringLiteral("Method"), framePrint);
    for (QCheckBox *box :
         {chkChromotogram, chkUVTrace, chkCondTrace, chkEvents, chkNotes, chkMethod})
        box->setChecked(true);
    cmdOk = new QPushButton(QStringLiteral("&Ok"), this);
    cmdOk->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cmdPrintSetup = new QPushButton(QStringLiteral("&Print Setup"), this);

    auto *boxes = new QVBoxLayout(framePrint);
    boxes->addWidget(chkChromotogram);
    // The traces stand under the chromatogram they belong to.
    const int indent = fontMetrics().horizontalAdvance(QStringLiteral("MM"));
    for (QCheckBox *trace : {chkUVTrace, chkCondTrace, chkEvents}) {
        auto *row = new QHBoxLayout;
        row->addSpacing(indent);
        row->addWidget(trace);
        boxes->addLayout(row);
    }
    boxes->addWidget(chkNotes);
    boxes->addWidget(chkMethod);

    auto *title = new QHBoxLayout;
    title->addWidget(lblTitle);
    title->addWidget(txtTitel, 1);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    buttons->addSpacing(indent);
    buttons->addWidget(cmdPrintSetup);
    buttons->addStretch();
    auto *body = new QHBoxLayout;
    body->addWidget(framePrint, 1);
    body->addLayout(buttons);
    auto *form = new QVBoxLayout(this);
    form->addLayout(title);
    form->addLayout(body);
    form->setSizeConstraint(QLayout::SetFixedSize);
    txtTitel->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('M')) * 24);
}

void frmPrint::InitPrint()
{
    m_choice.PrintCancelled = true;
    txtTitel->setText(m_chart.ChartTitle());
    txtTitel->selectAll();
    setHelpContext(this, kHelpContext);
}

void frmPrint::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    txtTitel->setFocus();
}

void frmPrint::UpdatePrintButton()
{
    const bool any =
        chkChromotogram->isChecked() || chkMethod->isChecked() || chkNotes->isChecked();
    cmdOk->setEnabled(any);
    // The default key must not go dead.
    if (!any)
        cmdCancel->setFocus();
}

void frmPrint::chkChromotogram_Click()
{
    InChromatogramClick = true;
    UpdatePrintButton();
    if (!InTraceClick) {
        const bool on = chkChromotogram->isChecked();
        for (QCheckBox *trace : {chkUVTrace, chkCondTrace, chkEvents})
            trace->setChecked(on);
    }
    InChromatogramClick = false;
}

void frmPrint::SyncChromatogram()
{
    InTraceClick = true;
    if (!InChromatogramClick)
        chkChromotogram->setChecked(chkUVTrace->isChecked() || chkCondTrace->isChecked() ||
                                    chkEvents->isChecked());
    InTraceClick = false;
}

void frmPrint::cmdOk_Click()
{
    m_choice.PrintChromatogram = chkChromotogram->isChecked();
    m_choice.PrintNotes = chkNotes->isChecked();
    m_choice.PrintMethod = chkMethod->isChecked();
    m_choice.PrintTraceFlags =
        valueOf(chkUVTrace) * 4 + valueOf(chkCondTrace) * 2 + valueOf(chkEvents);
    m_chart.setChartTitle(txtTitel->text());
    // The tab shows the new title at once, whether or not anything prints.
    m_chart.Redraw();
    accept();
    m_choice.PrintCancelled = false;
}
