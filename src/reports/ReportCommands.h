#pragma once

#include "reports/PrintChoice.h"
#include "reports/frmExport.h"

#include <memory>

class ComDlg;
class ErrorRoute;
class QPrinter;
class QWidget;
class Quillchart;

/// @brief Export, Print and Print Setup of the main window, over the chart in front.
///
/// It keeps the print state of the run: the last choice of the print dialog, and the one
/// printer that Print Setup chooses (printer or PDF file, page) and every report prints on.
/// The number of copies lives in the window's common dialog, where Print Setup leaves it.
class ReportCommands
{
public:
    ReportCommands(::ComDlg &ComDlg, ErrorRoute &errors, ZoomedTime GetZoomedTime, QWidget &window);
    ~ReportCommands();
    ReportCommands(const ReportCommands &) = delete;
    ReportCommands &operator=(const ReportCommands &) = delete;

    void mnuExport_Click(Quillchart &chart);
    /// The print dialog, then one report for each copy.
    void mnuPrint_Click(Quillchart &chart);
    void mnuPrintSetup_Click();

    [[nodiscard]] const PrintChoice &choice() const { return m_choice; }

private:
    ::ComDlg &m_dialog;
    ErrorRoute &m_errors;
    ZoomedTime m_zoomedTime;
    QWidget &m_window;
    PrintChoice m_choice;
    std::unique_ptr<QPrinter> m_printer;
};
