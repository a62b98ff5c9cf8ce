#pragma once

#include <QString>

#include <array>

class ComDlg;
class ErrorRoute;
class QScrollBar;
class QWidget;
class Quillchart;
class TabHeads;
struct ChartTabs;

/// @brief The commands on the files of the tabs: open a data or log file into the next free
/// tab, save the tab in front whole or in part, clear the recorder and close a file tab.
///
/// Tabs fill from the left without gaps; closing one moves those to its right one place left
/// and reads each moved file from disk anew. A loaded or saved tab counts as saved; clearing
/// and closing ask first when it is not.
class FileCommands
{
public:
    using ChartArray = std::array<Quillchart *, 7>;
    using ScrollBars = std::array<QScrollBar *, 5>;

    FileCommands(ChartTabs &tabs, const ChartArray &Chart, const ScrollBars &ScrollChart,
                 ComDlg &dialog, ErrorRoute &errors, TabHeads &heads, const QWidget &window);

    void mnuOpenData_Click();
    void mnuOpenLog_Click();
    void OpenChartFile(bool IsLog);
    /// Loads the file into the next free tab and brings it forward. A run too long for the
    /// scroll bar raises Overflow part way, leaving the hourglass up.
    void DrawChartLabel(const QString &FileName);

    void mnuSaveData_Click();
    void mnuSaveDataAs_Click();
    void mnuSaveSlectedData_Click();

    void mnuClear_Click();
    void mnuClose_Click();
    /// The toolbar's Clear button: Close on a file tab, Clear on the recorder's.
    void cmdClear_Click();

private:
    [[nodiscard]] bool isLogTab() const;
    void setUpSaveDialog(const QString &title, const QString &FileName);
    /// Tab `i` takes over the file, state and head of tab `i + 1`; false when the file no
    /// longer loads.
    bool moveTabLeft(int i);
    void emptyLastTab();

    ChartTabs &m_tabs;
    const ChartArray &Chart;
    const ScrollBars &ScrollChart;
    ComDlg &m_dialog;
    ErrorRoute &m_errors;
    TabHeads &m_heads;
    const QWidget &m_window;
};
