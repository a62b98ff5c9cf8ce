#include "documents/FileCommands.h"

#include "chart/Quillchart.h"
#include "documents/ChartTabs.h"
#include "documents/FileNames.h"
#include "documents/TabHeads.h"
#include "runtime/ComDlg.h"
#include "runtime/ErrorRoute.h"
#include "runtime/Hourglass.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"

#include <QScrollBar>

namespace {

const QString kDataFilter = QStringLiteral("Quillchart Data(*.chd)|*.chd|All Files(*.*)|*.*");
const QString kEmptyTab = QStringLiteral("(empty)");
constexpr float kCaptionWidth = 1080;
constexpr int kMaxFiles = 4;
/// Ask before replacing, no read-only box, the folder must exist.
constexpr int kSaveFlags =
    ComDlgFlags::OverwritePrompt | ComDlgFlags::HideReadOnly | ComDlgFlags::PathMustExist;

} // namespace

FileCommands::FileCommands(ChartTabs &tabs, const ChartArray &Chart, const ScrollBars &ScrollChart,
                           ComDlg &dialog, ErrorRoute &errors, TabHeads &heads,
                           const QWidget &window)
    : m_tabs(tabs)
    , Chart(Chart)
    , ScrollChart(ScrollChart)
    , m_dialog(dialog)
    , m_errors(errors)
    , m_heads(heads)
    , m_window(window)
{}

void FileCommands::mnuOpenData_Click()
{
    OpenChartFile(false);
}

void FileCommands::mnuOpenLog_Click()
{
    OpenChartFile(true);
}

void FileCommands::OpenChartFile(bool IsLog)
{
    // The recorder's tab counts as a tab, not as a file; the box names data files either way.
    if (m_tabs.ChartCount == kMaxFiles + 1) {
        MsgBox(QStringLiteral("The maximum number of files which can be opened at one time is ") +
                   CStr(double(kMaxFiles)) +
                   QStringLiteral(".  To open another file you must close a file which is "
                                  "already open first."),
               MsgBoxStyle::Information, QStringLiteral("Open Data File Information!"));
        return;
    }
    m_dialog.DialogTitle =
        IsLog ? QStringLiteral("Open Log File...") : QStringLiteral("Open Data File...");
    m_dialog.Filter =
        IsLog ? QStringLiteral("Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*") : kDataFilter;
    m_dialog.DefaultExt = IsLog ? QStringLiteral("chl") : QStringLiteral("chd");
    m_dialog.FileName.clear();
    ignoreErrors([&] { m_dialog.ShowOpen(); });
    const QString FileName = m_dialog.FileName;
    if (!FileName.isEmpty())
        ignoreErrors([&] { DrawChartLabel(FileName); });
}

void FileCommands::DrawChartLabel(const QString &FileName)
{
    setHourglass(true);
    const int i = m_tabs.ChartCount;
    ++m_tabs.ChartCount;
    if (!Chart[i]->LoadDataFile(FileName)) {
        // The control has told the user through its error event.
        m_heads.setTabCaption(i, kEmptyTab);
        --m_tabs.ChartCount;
        setHourglass(false);
        return;
    }
    m_tabs.ChartFileName[i] = FileName;
    m_tabs.ChartSaved[i] = true;
    m_tabs.FullView[i] = true;
    m_tabs.Zoomed[i] = false;
    const Quillchart &chart = *Chart[i];
    m_tabs.ChartViews[i] = {chart.UvAxisMin(),   chart.UvAxisMax(),
                            chart.CondAxisMin(), chart.CondAxisMax(),
                            chart.TimeAxisMin(), float(m_tabs.WindowMinutes[i])};
    // A run of more than 32767 minutes overflows here and leaves the tab half dressed.
    Int16 maximum = CInt(chart.GetLastTime() + 0.5 - m_tabs.WindowMinutes[i]);
    if (maximum < 0)
        maximum = 0;
    ScrollChart[i]->setMaximum(maximum);
    const QString title = GetFileTitle(FileName);
    m_heads.setTabToolTip(i, title);
    const QString name = StripExtension(title);
    m_heads.setTabCaption(i, ShortenCaption(name, kCaptionWidth, m_window));
    Chart[i]->setChartTitle(name);
    m_heads.selectTab(i);
    setHourglass(false);
}

bool FileCommands::isLogTab() const
{
    return m_tabs.ChartFileName[m_tabs.CurrentChart].right(3).toUpper() == QLatin1String("CHL");
}

void FileCommands::setUpSaveDialog(const QString &title, const QString &FileName)
{
    m_dialog.Flags = kSaveFlags;
    m_dialog.DialogTitle = title;
    m_dialog.FileName = FileName;
    m_dialog.Filter = kDataFilter;
    m_dialog.DefaultExt = QStringLiteral("chd");
}

void FileCommands::mnuSaveData_Click()
{
    const int c = m_tabs.CurrentChart;
    if (m_tabs.ChartFileName[c].isEmpty() || isLogTab()) {
        mnuSaveDataAs_Click();
    } else {
        setHourglass(true);
        if (Chart[c]->SaveDataFile(m_tabs.ChartFileName[c]))
            m_tabs.ChartSaved[c] = true;
        else
            m_errors.HandelError(-16);
    }
    setHourglass(false);
}

void FileCommands::mnuSaveDataAs_Click()
{
    const int c = m_tabs.CurrentChart;
    // A log's name is never offered, so a log is never written over.
    setUpSaveDialog(QStringLiteral("Save Data File As..."),
                    isLogTab() ? QString() : m_tabs.ChartFileName[c]);
    // No handler: with CancelError left on by a log save, a cancel here is not caught.
    m_dialog.ShowSave();
    const QString path = m_dialog.FileName;
    const QString title = m_dialog.FileTitle;
    const QString name = StripExtension(title);
    if (path.isEmpty())
        return;
    if (!Chart[c]->SaveDataFile(path)) {
        m_errors.HandelError(-16);
        return;
    }
    // The recorder's tab keeps its caption whatever file it went to.
    if (c != 0) {
        m_heads.setTabCaption(c, ShortenCaption(name, kCaptionWidth, m_window));
        m_heads.setTabToolTip(c, title);
    }
    m_tabs.ChartSaved[c] = true;
    m_tabs.ChartFileName[c] = path;
    Chart[c]->setChartTitle(name);
}

void FileCommands::mnuSaveSlectedData_Click()
{
    setUpSaveDialog(QStringLiteral("Save Selected Data As..."), QString());
    m_dialog.ShowSave();
    // The stretch goes to a file of its own; the tab stays as it was.
    if (!m_dialog.FileName.isEmpty() &&
        !Chart[m_tabs.CurrentChart]->SaveSelectedData(m_dialog.FileName))
        m_errors.HandelError(-16);
}

void FileCommands::mnuClear_Click()
{
    if (!m_tabs.ChartSaved[0]) {
        Beep();
        const int answer = MsgBox(QStringLiteral("The Chart Recorder Data is NOT saved.  Save "
                                                 "the data before clearing the Chart ?"),
                                  MsgBoxStyle::YesNoCancel, QStringLiteral("Data Not Saved!"));
        if (answer == MsgBoxResult::Cancel)
            return;
        if (answer == MsgBoxResult::Yes) {
            mnuSaveData_Click();
            // Only a name tells that a save happened; a failed save under a name still clears.
            if (m_tabs.ChartFileName[0].isEmpty())
                return;
        }
        m_tabs.ChartSaved[0] = true;
    }
    Chart[0]->setChartTitle(QStringLiteral("Chart Recorder"));
    Chart[0]->ClearData();
    Chart[0]->ClearDisplay();
    m_heads.setChartTimeText(QStringLiteral("10"));
    m_tabs.ChartFileName[0].clear();
}

void FileCommands::mnuClose_Click()
{
    const int failure = trapError([&] {
        const int c = m_tabs.CurrentChart;
        if (c == 0)
            return;
        if (!m_tabs.ChartSaved[c]) {
            Beep();
            const int answer = MsgBox(QStringLiteral("The Data is NOT saved.  Save the data "
                                                     "before closing the Chart ?"),
                                      MsgBoxStyle::YesNoCancel, QStringLiteral("Data Not Saved!"));
            if (answer == MsgBoxResult::Cancel)
                return;
            if (answer == MsgBoxResult::Yes)
                mnuSaveData_Click();
            // Whatever the save did: the user has been told of a failure.
            m_tabs.ChartSaved[c] = true;
        }
        for (int i = c; i <= m_tabs.ChartCount - 2; ++i)
            if (!moveTabLeft(i)) {
                m_errors.HandelError(-19);
                return;
            }
        emptyLastTab();
        m_heads.selectTab(0);
    });
    if (failure != 0)
        m_errors.HandelError(failure);
}

bool FileCommands::moveTabLeft(int i)
{
    QScrollBar &bar = *ScrollChart[i];
    const QScrollBar &next = *ScrollChart[i + 1];
    bar.setMaximum(next.maximum());
    bar.setSingleStep(next.singleStep());
    bar.setPageStep(next.pageStep());
    m_tabs.ChartFileName[i] = m_tabs.ChartFileName[i + 1];
    m_tabs.ChartSaved[i] = m_tabs.ChartSaved[i + 1];
    // Read anew from disk; notes changed since the load come over from the chart itself.
    const bool ok = Chart[i]->LoadDataFile(m_tabs.ChartFileName[i]);
    Chart[i]->SetNotes(Chart[i + 1]->GetNotes());
    Chart[i]->setChartTitle(Chart[i + 1]->ChartTitle());
    m_heads.setTabCaption(i, m_heads.tabCaption(i + 1));
    m_heads.setTabToolTip(i, m_heads.tabToolTip(i + 1));
    return ok;
}

void FileCommands::emptyLastTab()
{
    m_heads.setTabCaption(m_tabs.ChartCount - 1, kEmptyTab);
    m_heads.setTabToolTip(m_tabs.ChartCount - 1, QString());
    --m_tabs.ChartCount;
    const int n = m_tabs.ChartCount;
    Chart[n]->ClearData();
    Chart[n]->setTimeAxisMax(10);
    m_tabs.WindowMinutes[n] = 10.0;
    m_tabs.FullView[n] = true;
    ScrollChart[n]->setValue(0);
    ScrollChart[n]->setEnabled(false);
    Chart[n]->ClearDisplay();
}

void FileCommands::cmdClear_Click()
{
    if (m_tabs.CurrentChart != 0)
        mnuClose_Click();
    else
        mnuClear_Click();
}
