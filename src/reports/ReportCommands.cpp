#include "reports/ReportCommands.h"

#include "chart/Quillchart.h"
#include "reports/frmPrint.h"
#include "runtime/ComDlg.h"
#include "runtime/ErrorRoute.h"
#include "runtime/Hourglass.h"
#include "runtime/Int16.h"
#include "runtime/RuntimeError.h"

#include <QPrinter>

namespace {

constexpr qint32 kCannotLoadPrintSetup = -25;

} // namespace

ReportCommands::ReportCommands(::ComDlg &ComDlg, ErrorRoute &errors, ZoomedTime GetZoomedTime,
                               QWidget &window)
    : m_dialog(ComDlg)
    , m_errors(errors)
    , m_zoomedTime(std::move(GetZoomedTime))
    , m_window(window)
    , m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
{}

ReportCommands::~ReportCommands() = default;

void ReportCommands::mnuExport_Click(Quillchart &chart)
{
    frmExport(chart, m_zoomedTime, m_errors, &m_window).exec();
}

void ReportCommands::mnuPrint_Click(Quillchart &chart)
{
    frmPrint(
        chart, m_choice, [this] { mnuPrintSetup_Click(); }, &m_window)
        .exec();
    if (m_choice.PrintCancelled)
        return;
    setHourglass(true);
    const Int16 n = m_dialog.Copies;
    chart.setPrinter(m_printer.get());
    for (int copy = 1; copy <= n; ++copy)
        chart.PrintChart(m_choice.PrintChromatogram, m_choice.PrintMethod, m_choice.PrintNotes,
                         m_choice.PrintTraceFlags);
    setHourglass(false);
}

void ReportCommands::mnuPrintSetup_Click()
{
    try {
        m_dialog.CancelError = false;
        m_dialog.Flags = ComDlgFlags::PrintSetup;
        m_dialog.Printer = m_printer.get();
        m_dialog.ShowPrinter();
    } catch (const RuntimeError &) {
        m_errors.HandelError(kCannotLoadPrintSetup);
    }
}
