#include "reports/frmExport.h"

#include "chart/Quillchart.h"
#include "runtime/ErrorRoute.h"
#include "runtime/HelpContext.h"
#include "runtime/Hourglass.h"
#include "runtime/Numbers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int kHelpContext = 2;
constexpr qint32 kCannotExport = -24;
/// Ask before replacing, no read-only box, the folder must exist.
constexpr int kSaveFlags =
    ComDlgFlags::OverwritePrompt | ComDlgFlags::HideReadOnly | ComDlgFlags::PathMustExist;
/// "1" point a second.
constexpr int kDefaultRate = 10;

const char *const kRates[] = {"0.01",  "0.02", "0.025", "0.0333", "0.05", "0.1", "0.2", "0.25",
                              "0.333", "0.5",  "1",     "2",      "3",    "4",   "5"};

/// The list is written with a point. The locale reads it where it can; where it cannot, the
/// point is taken as the decimal mark rather than ending the program over the program's own
/// text.
float rateOf(const QString &text)
{
    bool ok = false;
    const double value = QLocale().toDouble(text, &ok);
    return float(ok ? value : QLocale::c().toDouble(text));
}

qint16 valueOf(const QCheckBox *box)
{
    return box->isChecked() ? 1 : 0;
}

} // namespace

frmExport::frmExport(Quillchart &chart, const ZoomedTime &GetZoomedTime, ErrorRoute &errors,
                     QWidget *parent)
    : QDialog(parent)
    , m_chart(chart)
    , m_errors(errors)
{
    buildControls();
    layOut();
    InitExport(GetZoomedTime);
    for (int Index = 0; Index < int(optDataRegion.size()); ++Index)
        connect(optDataRegion[Index], &QRadioButton::clicked, this,
                [this, Index] { optDataRegion_Click(Index); });
    connect(cmbSamlingRate, &QComboBox::currentIndexChanged, this,
            &frmExport::cmbSamlingRate_Click);
    for (QCheckBox *box : {chkUV, chkCond, chkEvents, chkNotes})
        connect(box, &QCheckBox::toggled, this, &frmExport::UpdateExportButton);
    connect(chkMethod, &QCheckBox::toggled, this, &frmExport::chkMethod_Click);
    connect(cmdExport, &QPushButton::clicked, this, &frmExport::cmdExport_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmExport::buildControls()
{
    setWindowTitle(QStringLiteral("Export Data"));
    // A fixed border: a title and a close box, nothing to minimise, maximise or resize.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint);

    frameData = new QGroupBox(QStringLiteral("Data Parameters for Export File"), this);
    optDataRegion[0] = new QRadioButton(QStringLiteral("Selected Data"), frameData);
    optDataRegion[1] = new QRadioButton(frameData);
    optDataRegion[1]->setChecked(true);
    lblSampRateCaption =
        new QLabel(QStringLiteral("Sampling Rate:") + QString(18, QLatin1Char(' ')), frameData);
    cmbSamlingRate = new QComboBox(frameData);
    cmbSamlingRate->setEditable(false);
    for (const char *rate : kRates)
        cmbSamlingRate->addItem(QString::fromLatin1(rate));
    lblPtPerSec = new QLabel(QStringLiteral("Points/sec  (Total:"), frameData);
    lblTotal = new QLabel(frameData);
    lbTotal = new QLabel(QStringLiteral("Exported Data File will include:"), frameData);
    lblNumPoints = new QLabel(frameData);

    frameContent = new QGroupBox(QStringLiteral("Select Information for Export File"), this);
    chkUV = new QCheckBox(QStringLiteral("UV Data"), frameContent);
    chkCond = new QCheckBox(QStringLiteral("Conductivity Data"), frameContent);
    chkEvents = new QCheckBox(QStringLiteral("Event Marks"), frameContent);
    chkNotes = new QCheckBox(QStringLiteral("Notes"), frameContent);
    chkMethod = new QCheckBox(QStringLiteral("Method List"), frameContent);
    for (QCheckBox *box : {chkUV, chkCond, chkEvents, chkNotes, chkMethod})
        box->setChecked(true);
    lblPosition = new QLabel(QStringLiteral("Method Position"), frameContent);
    const QString positions[] = {QStringLiteral("Before Data"), QStringLiteral("After Data"),
                                 QStringLiteral("Separate Column")};
    for (std::size_t i = 0; i < optMethodPos.size(); ++i)
        optMethodPos[i] = new QRadioButton(positions[i], frameContent);
    optMethodPos[0]->setChecked(true);

    cmdExport = new QPushButton(QStringLiteral("&Export"), this);
    cmdExport->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
}

void frmExport::layOut()
{
    auto *data = new QVBoxLayout(frameData);
    data->addWidget(optDataRegion[1]);
    data->addWidget(optDataRegion[0]);
    auto *rate = new QHBoxLayout;
    rate->addWidget(lblSampRateCaption);
    rate->addWidget(cmbSamlingRate);
    rate->addWidget(lblPtPerSec);
    rate->addWidget(lblTotal);
    rate->addStretch();
    data->addLayout(rate);
    auto *total = new QHBoxLayout;
    total->addWidget(lbTotal);
    total->addWidget(lblNumPoints);
    total->addStretch();
    data->addLayout(total);

    auto *content = new QGridLayout(frameContent);
    QCheckBox *const boxes[] = {chkUV, chkCond, chkEvents, chkNotes, chkMethod};
    for (int row = 0; row < 5; ++row)
        content->addWidget(boxes[row], row, 0);
    content->addWidget(lblPosition, 0, 1);
    for (int i = 0; i < int(optMethodPos.size()); ++i)
        content->addWidget(optMethodPos[i], i + 1, 1);
    content->setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(QStringLiteral("M")) * 16);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdExport);
    buttons->addWidget(cmdCancel);

    auto *form = new QVBoxLayout(this);
    form->addWidget(frameData);
    form->addWidget(frameContent);
    form->addLayout(buttons);
    form->setSizeConstraint(QLayout::SetFixedSize);
}

void frmExport::InitExport(const ZoomedTime &GetZoomedTime)
{
    setHelpContext(this, kHelpContext);
    cmbSamlingRate->setCurrentIndex(kDefaultRate);
    SampleRate = rateOf(cmbSamlingRate->currentText());
    LastTime = m_chart.GetLastTime();
    ExportFrom = 0;
    ExportTo = LastTime;
    GetZoomedTime(SelectedFrom, SelectedTo);
    if (SelectedTo > LastTime)
        SelectedTo = LastTime;
    if (SelectedFrom > LastTime)
        SelectedFrom = LastTime;
    // The blanks line the two rows up.
    optDataRegion[1]->setText(QStringLiteral("All Data               (Time:  0.00  to  ") +
                              Format(LastTime, QStringLiteral("0.00")) +
                              QStringLiteral("  minutes) "));
    optDataRegion[0]->setText(
        QStringLiteral("Selected Data     (Time:  ") +
        Format(SelectedFrom, QStringLiteral("0.00")) + QStringLiteral("  to  ") +
        Format(SelectedTo, QStringLiteral("0.00")) + QStringLiteral("  minutes) "));
    UpdatePointCount();
}

void frmExport::UpdatePointCount()
{
    // Measured against the run's end, not the range's, so a selection that starts at the very
    // end counts nothing. The product stays in single precision like its operands, and the
    // added half ties to even: an odd whole count goes up by one, an even one stays.
    if (LastTime > ExportFrom)
        PointCount = CLng(double((ExportTo - ExportFrom) * SampleRate * 60.0f) + 0.5);
    else
        PointCount = 0;
    lblNumPoints->setText(QString::number(PointCount) + QStringLiteral("  data points"));
    lblTotal->setText(QString::number(PointCount) + QStringLiteral("  Data Points)"));
}

void frmExport::UpdateExportButton()
{
    const bool any = chkUV->isChecked() || chkCond->isChecked() || chkEvents->isChecked() ||
                     chkNotes->isChecked() || chkMethod->isChecked();
    cmdExport->setEnabled(any);
    // The default key must not go dead.
    if (!any)
        cmdCancel->setFocus();
}

void frmExport::GetMethodPosition(Int16 &Position) const
{
    for (int Index = 0; Index < int(optMethodPos.size()); ++Index) {
        if (optMethodPos[Index]->isChecked()) {
            Position = Index;
            return;
        }
    }
}

void frmExport::optDataRegion_Click(int Index)
{
    if (Index == 1) {
        ExportFrom = 0;
        ExportTo = LastTime;
    } else {
        ExportFrom = SelectedFrom;
        ExportTo = SelectedTo;
    }
    UpdatePointCount();
}

void frmExport::cmbSamlingRate_Click()
{
    SampleRate = rateOf(cmbSamlingRate->currentText());
    UpdatePointCount();
}

void frmExport::chkMethod_Click()
{
    for (QRadioButton *position : optMethodPos)
        position->setEnabled(chkMethod->isChecked());
    UpdateExportButton();
}

void frmExport::cmdExport_Click()
{
    ComDlg.Flags = kSaveFlags;
    ComDlg.DialogTitle = QStringLiteral("Export Data Text File As...");
    ComDlg.FileName.clear();
    ComDlg.Filter = QStringLiteral("Text File(*.txt)|*.txt|All Files(*.*)|*.*");
    ComDlg.DefaultExt = QStringLiteral("txt");
    ComDlg.ShowSave();
    const QString FileName = ComDlg.FileName;
    if (!FileName.isEmpty()) {
        setHourglass(true);
        Int16 Position;
        GetMethodPosition(Position);
        if (m_chart.ExportData(FileName, valueOf(chkUV), valueOf(chkCond), valueOf(chkEvents),
                               valueOf(chkNotes), valueOf(chkMethod), qint16(Position.value()),
                               ExportFrom, ExportTo, SampleRate, PointCount) != 0)
            m_errors.HandelError(kCannotExport);
        setHourglass(false);
    }
    // Cancelling the file dialog closes the export as well.
    accept();
}
