#pragma once

#include "reports/PrintChoice.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class Quillchart;

/// @brief The print dialog: the report's title and what the report holds. The chromatogram's
/// box follows its three trace boxes and leads them; OK needs something to print. It always
/// opens with every box checked and the chart's title selected.
class frmPrint : public QDialog
{
    Q_OBJECT

public:
    /// OK writes `choice` and the chart's title; `PrintSetup` runs the window's Print Setup.
    frmPrint(Quillchart &chart, PrintChoice &choice, std::function<void()> PrintSetup,
             QWidget *parent);

    void UpdatePrintButton();
    void SyncChromatogram();

    QLabel *lblTitle = nullptr;
    QLineEdit *txtTitel = nullptr;
    QGroupBox *framePrint = nullptr;
    QCheckBox *chkChromotogram = nullptr;
    QCheckBox *chkUVTrace = nullptr;
    QCheckBox *chkCondTrace = nullptr;
    QCheckBox *chkEvents = nullptr;
    QCheckBox *chkNotes = nullptr;
    QCheckBox *chkMethod = nullptr;
    QPushButton *cmdOk = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdPrintSetup = nullptr;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildControls();
    void InitPrint();
    void chkChromotogram_Click();
    void cmdOk_Click();

    Quillchart &m_chart;
    PrintChoice &m_choice;
    std::function<void()> m_printSetup;
    // Setting a box fires its handler; these keep the parent and its children from bouncing.
    bool InChromatogramClick = false;
    bool InTraceClick = false;
};
