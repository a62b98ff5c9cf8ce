#pragma once

#include "runtime/ComDlg.h"
#include "runtime/Int16.h"

#include <QDialog>

#include <array>
#include <functional>

class ErrorRoute;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class Quillchart;

/// The stretch the chart in front shows under a zoom, in minutes.
using ZoomedTime = std::function<void(float &ZoomedTimeFrom, float &ZoomedTimeTo)>;

/// @brief The export of a chart to a text file: which range, at which rate, with what, and
/// where the method text stands. It shows how many points that makes and hands it all to the
/// chart, which writes the file. It opens afresh each time, on all data at one point a second.
class frmExport : public QDialog
{
    Q_OBJECT

public:
    frmExport(Quillchart &chart, const ZoomedTime &GetZoomedTime, ErrorRoute &errors,
              QWidget *parent);

    void UpdatePointCount();
    void UpdateExportButton();
    void GetMethodPosition(Int16 &Position) const;

    QGroupBox *frameData = nullptr;
    std::array<QRadioButton *, 2> optDataRegion{};
    QLabel *lblSampRateCaption = nullptr;
    QComboBox *cmbSamlingRate = nullptr;
    QLabel *lblPtPerSec = nullptr;
    QLabel *lblTotal = nullptr;
    QLabel *lbTotal = nullptr;
    QLabel *lblNumPoints = nullptr;
    QGroupBox *frameContent = nullptr;
    QCheckBox *chkUV = nullptr;
    QCheckBox *chkCond = nullptr;
    QCheckBox *chkEvents = nullptr;
    QCheckBox *chkNotes = nullptr;
    QCheckBox *chkMethod = nullptr;
    QLabel *lblPosition = nullptr;
    std::array<QRadioButton *, 3> optMethodPos{};
    QPushButton *cmdExport = nullptr;
    QPushButton *cmdCancel = nullptr;
    ::ComDlg ComDlg;

private:
    void buildControls();
    void layOut();
    void InitExport(const ZoomedTime &GetZoomedTime);
    void optDataRegion_Click(int Index);
    void cmbSamlingRate_Click();
    void chkMethod_Click();
    void cmdExport_Click();

    Quillchart &m_chart;
    ErrorRoute &m_errors;
    float SelectedFrom = 0;
    float SelectedTo = 0;
    float ExportFrom = 0;
    float ExportTo = 0;
    float SampleRate = 0;
    qint32 PointCount = 0;
    float LastTime = 0;
};
