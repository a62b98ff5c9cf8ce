#include "WindowFixture.h"
#include "chart/Quillchart.h"
#include "runtime/Numbers.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <tuple>

namespace {

const QString kDataFilter = "Quillchart Data(*.chd)|*.chd|All Files(*.*)|*.*";
const QString kEmpty = "(empty)";

class FileTabsTest : public WindowFixture
{
protected:
    QString path(const QString &name) const { return dir.filePath(name); }
    /// A run of `minutes` saved by a chart of its own.
    QString runFile(const QString &name, double minutes)
    {
        Quillchart chart;
        for (int i = 0; i < int(minutes * 300 + 0.5); ++i)
            chart.AddSample(0.1f, 20.0f);
        EXPECT_TRUE(chart.SaveDataFile(path(name)));
        return path(name);
    }
    /// Files f1 to fN of 11 to 10 + N minutes, opened in order.
    void openFiles(int count)
    {
        for (int k = 1; k <= count; ++k)
            open(runFile(QString("f%1.chd").arg(k), 10 + k));
    }
    void open(const QString &file)
    {
        dialogs.files.push_back(file);
        window->mnuOpenData_Click();
    }
    QStringList captions() const
    {
        QStringList texts;
        for (int i = 0; i < window->TabChart->count(); ++i)
            texts << window->TabChart->tabText(i);
        return texts;
    }
    QStringList boxTitles() const
    {
        QStringList titles;
        for (const auto &box : dialogs.boxes)
            titles << box.title;
        return titles;
    }
    /// Title, filter, extension and offered name of the `n`-th file dialog.
    QStringList shown(int n) const
    {
        const ComDlg &d = dialogs.fileDialogs.at(n);
        return {d.DialogTitle, d.Filter, d.DefaultExt, d.FileName};
    }

    QTemporaryDir dir;
};

template <typename Case>
class FileTabsCases : public FileTabsTest, public ::testing::WithParamInterface<Case>
{
};

} // namespace

TEST_F(FileTabsTest, FilesFillTabsUpToFourAndAFifthIsRefused)
{
    open(path("missing.chd"));
    EXPECT_EQ(window->tabs.ChartCount, 1) << "a file that does not load takes no tab";
    EXPECT_EQ(boxTitles(), QStringList{"FILE OPEN ERROR!"});
    dialogs.boxes.clear();

    open(runFile("a.b.chd", 3.2));
    EXPECT_EQ(shown(1), QStringList({"Open Data File...", kDataFilter, "chd", ""}));
    EXPECT_EQ(window->TabChart->tabToolTip(1), "a.b.chd");
    EXPECT_EQ(window->Chart[1]->ChartTitle(), "a");
    EXPECT_EQ(window->ScrollChart[1]->maximum(), 0) << "a file shorter than its window";
    open(runFile("long.chd", 40.0));
    EXPECT_EQ(window->ScrollChart[2]->maximum(), 30);
    open(path("a.b.chd"));
    open(path("a.b.chd"));
    EXPECT_EQ(captions(), QStringList({"Chart Recorder", "a", "long", "a", "a"}));
    EXPECT_EQ(window->tabs.CurrentChart, 4);

    dialogs.files.push_back(path("long.chd"));
    window->mnuOpenLog_Click();
    EXPECT_EQ(boxTitles(), QStringList{"Open Data File Information!"});
    EXPECT_TRUE(dialogs.boxes.value(0).text.contains("at one time is 4."));
    EXPECT_EQ(dialogs.fileDialogs.size(), 5) << "the dialog does not open";
}

using SaveAsCase = std::pair<const char *, bool>; // the name, and whether Save asks again
using SaveAsNames = FileTabsCases<SaveAsCase>;

TEST_P(SaveAsNames, ALogNameIsNeverWrittenOverBySave)
{
    const auto &[name, saveAsksAgain] = GetParam();
    openFiles(1);
    const QString target = path(name);
    dialogs.files.push_back(target);
    window->mnuSaveDataAs_Click();
    EXPECT_EQ(shown(1), QStringList({"Save Data File As...", kDataFilter, "chd", path("f1.chd")}));
    EXPECT_EQ(dialogs.fileDialogs[1].Flags, 2054);
    EXPECT_EQ(captions()[1], "run");
    EXPECT_EQ(window->TabChart->tabToolTip(1), name);

    QFile::remove(target);
    window->mnuSaveData_Click();
    EXPECT_EQ(dialogs.fileDialogs.size(), saveAsksAgain ? 3 : 2);
    EXPECT_EQ(QFile::exists(target), !saveAsksAgain);
    EXPECT_EQ(window->tabs.ChartFileName[1], target) << "a cancelled Save As keeps the name";
}

INSTANTIATE_TEST_SUITE_P(Names, SaveAsNames,
                         ::testing::Values(SaveAsCase{"run.CHL", true},
                                           SaveAsCase{"run.xchl", true},
                                           SaveAsCase{"run.chd", false}));

TEST_F(FileTabsTest, ALogTabSavesToANewDataFile)
{
    QDir().mkpath(path("log"));
    Quillchart log;
    for (int i = 0; i < 900; ++i)
        log.AddSample(0.2f, 30.0f);
    ASSERT_EQ(log.WriteLog(path("log"), 1, 20000, 24.0), 0);
    ASSERT_EQ(log.SaveLogAs(path("log"), 1, path("day.chl")), 0);
    dialogs.files.push_back(path("day.chl"));
    window->mnuOpenLog_Click();
    ASSERT_EQ(captions()[1], "day");

    dialogs.files.push_back(path("day.chd"));
    window->toolbar.cmdSave->trigger();
    EXPECT_EQ(shown(1)[3], "") << "a log's name is never offered";
    EXPECT_EQ(window->tabs.ChartFileName[1], path("day.chd"));
    QFile::remove(path("day.chd"));
    window->mnuSaveData_Click();
    EXPECT_EQ(dialogs.fileDialogs.size(), 2);
    EXPECT_TRUE(QFile::exists(path("day.chd")));
}

using CloseCase = std::tuple<int, int, QStringList>; // files open, the tab closed, captions after
using Close = FileTabsCases<CloseCase>;

TEST_P(Close, FollowingTabsMoveLeftAndTheRecorderComesForward)
{
    const auto &[files, closed, after] = GetParam();
    openFiles(files);
    window->TabChart->setCurrentIndex(closed);
    window->toolbar.cmdClear->trigger();
    EXPECT_EQ(captions(), QStringList{"Chart Recorder"} + after);
    EXPECT_EQ(window->tabs.ChartCount, files);
    EXPECT_EQ(window->TabChart->currentIndex(), 0);
    for (int i = 1; i < window->tabs.ChartCount; ++i) {
        const int k = captions()[i].mid(1).toInt();
        EXPECT_NEAR(window->Chart[i]->GetLastTime(), 10 + k, 0.01) << "tab " << i << " reloaded";
        EXPECT_EQ(window->ScrollChart[i]->maximum(), k) << "and took the bar of its file";
    }
    EXPECT_EQ(window->Chart[files]->GetLastTime(), 0.0f);
    EXPECT_TRUE(dialogs.boxes.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Tabs, Close,
                         ::testing::Values(CloseCase{1, 1, {kEmpty, kEmpty, kEmpty, kEmpty}},
                                           CloseCase{2, 1, {"f2", kEmpty, kEmpty, kEmpty}},
                                           CloseCase{4, 1, {"f2", "f3", "f4", kEmpty}},
                                           CloseCase{4, 3, {"f1", "f2", "f4", kEmpty}}));

TEST_F(FileTabsTest, CloseCarriesUnsavedNotesOnAndStopsHalfWayAtAVanishedFile)
{
    openFiles(4);
    window->Chart[1]->SetNotes("closed");
    window->Chart[3]->SetNotes("kept");
    window->tabs.ChartSaved[1] = window->tabs.ChartSaved[3] = false;
    QFile::remove(path("f4.chd"));
    window->TabChart->setCurrentIndex(1);
    dialogs.answers = {MsgBoxResult::Cancel, MsgBoxResult::No};
    window->mnuClose_Click();
    EXPECT_EQ(window->tabs.ChartCount, 5) << "Cancel closes nothing";
    window->mnuClose_Click();
    EXPECT_EQ(boxTitles(), QStringList({"Data Not Saved!", "Data Not Saved!", "FILE OPEN ERROR!",
                                        "FILE CLOSE ERROR!"}));
    EXPECT_EQ(window->Chart[1]->GetNotes(), "");
    EXPECT_EQ(window->Chart[2]->GetNotes(), "kept");
    EXPECT_FALSE(window->tabs.ChartSaved[2]);
    EXPECT_EQ(captions(), QStringList({"Chart Recorder", "f2", "f3", "f4", "f4"}));
    EXPECT_EQ(window->tabs.ChartCount, 5) << "the last tab is not emptied";
}

using ClearCase = std::tuple<int, const char *, bool>; // the answer, the file chosen, cleared
using Clear = FileTabsCases<ClearCase>;

TEST_P(Clear, UnsavedRecorderDataAreClearedOnlyAsAnswered)
{
    const auto &[answer, file, cleared] = GetParam();
    window->mnuStart_Click();
    recordMinutes(2.0);
    window->mnuStop_Click();
    dialogs.answers = {answer};
    dialogs.files.push_back(file[0] ? path(file) : QString());
    window->toolbar.cmdClear->trigger();
    EXPECT_EQ(dialogs.boxes.size(), 1);
    EXPECT_EQ(window->Chart[0]->GetLastTime() == 0, cleared);
    EXPECT_EQ(window->tabs.ChartSaved[0], answer != MsgBoxResult::Cancel && cleared);
    EXPECT_EQ(window->tabs.ChartFileName[0], "");
    if (cleared) {
        EXPECT_EQ(window->Chart[0]->ChartTitle() + window->FrameScaleAxis->txtChartTime->text(),
                  "Chart Recorder10");
    }
}

INSTANTIATE_TEST_SUITE_P(Answers, Clear,
                         ::testing::Values(ClearCase{MsgBoxResult::Yes, "run.chd", true},
                                           ClearCase{MsgBoxResult::Yes, "", false},
                                           ClearCase{MsgBoxResult::No, "", true},
                                           ClearCase{MsgBoxResult::Cancel, "", false}));

TEST_F(FileTabsTest, EachTabKeepsItsOwnAxesWindowAndCommands)
{
    openFiles(2);
    window->TabChart->setCurrentIndex(3);
    EXPECT_EQ(window->TabChart->currentIndex(), 2) << "an (empty) tab never comes forward";

    window->TabChart->setCurrentIndex(1);
    AxisFrame &frame = *window->FrameScaleAxis;
    frame.cmbYAxis[0]->setEditText("0.500");
    frame.cmdSet[0]->click();
    frame.optTimeAxis[1]->setChecked(true);
    frame.txtChartTime->setText("5");
    frame.cmdSetTime->click();
    window->TabChart->setCurrentIndex(2);
    EXPECT_EQ(frame.cmbYAxis[0]->currentText(), Format(window->Chart[2]->UvAxisMax(), "0.000"));
    EXPECT_NE(window->Chart[2]->UvAxisMax(), 0.5f);
    EXPECT_TRUE(frame.optTimeAxis[0]->isChecked());
    window->TabChart->setCurrentIndex(1);
    EXPECT_EQ(frame.cmbYAxis[0]->currentText(), "0.500");
    EXPECT_EQ(frame.txtChartTime->text(), "5.0");
    EXPECT_TRUE(frame.optTimeAxis[1]->isChecked());
    EXPECT_TRUE(window->ScrollChart[1]->isEnabled());

    window->mnuStart_Click();
    EXPECT_EQ(window->toolbar.cmdClear->text(), "Close");
    EXPECT_EQ(window->toolbar.cmdClear->toolTip(), "Close f1");
    window->TabChart->setCurrentIndex(0);
    EXPECT_EQ(window->toolbar.cmdClear->text(), "Clear");

    frame.optTimeAxis[1]->setChecked(true);
    EXPECT_FALSE(window->ScrollChart[0]->isEnabled()) << "the live view owns the recorder's bar";
    window->TabChart->setCurrentIndex(1);
    window->mnuStop_Click();
    window->TabChart->setCurrentIndex(0);
    EXPECT_TRUE(window->ScrollChart[0]->isEnabled()) << "a stop seen from a file tab frees it";
}

TEST_F(FileTabsTest, ARecordedRunComesBackWholeAndAStretchAsARunOfItsOwn)
{
    window->mnuStart_Click();
    Quillchart &recorder = *window->Chart[0];
    for (int i = 0; i < 1500; ++i)
        recorder.AddSample(0.001f * float(i % 97), 0.1f * float(i % 13));
    recorder.AddEventMark("1", 0xFF, 50, 1.0f);
    recorder.AddMethodText("Gradient 0-100 %", 0.5f);
    recorder.AddEventMark("Inject", 0xFF00, -30, 2.5f);
    recorder.SetNotes("column A");
    window->mnuStop_Click();
    const auto exported = [this](Quillchart &chart, const QString &name) {
        EXPECT_EQ(chart.ExportData(path(name), 1, 1, 1, 1, 1, 0, 0, chart.GetLastTime(), 5, 1500),
                  0);
        QFile file(path(name));
        file.open(QIODevice::ReadOnly);
        return QString::fromUtf8(file.readAll());
    };
    dialogs.files.push_back(path("run.chd"));
    window->mnuSaveDataAs_Click();
    const QString before = exported(recorder, "before.txt");
    window->mnuClear_Click();
    open(path("run.chd"));
    Quillchart &opened = *window->Chart[1];
    EXPECT_EQ(exported(opened, "after.txt"), before) << "with its method text and notes";
    EXPECT_TRUE(dialogs.boxes.isEmpty());

    const QRect plot = opened.rect();
    QTest::mousePress(&opened, Qt::LeftButton, {}, {plot.width() / 10, plot.height() / 4});
    QTest::mouseMove(&opened, {plot.width() * 4 / 10, plot.height() * 3 / 4});
    QTest::mouseRelease(&opened, Qt::LeftButton, {},
                        {plot.width() * 4 / 10, plot.height() * 3 / 4});
    const float span = opened.TimeAxisMax() - opened.TimeAxisMin();
    dialogs.files.push_back(path("part.chd"));
    window->mnuSaveSlectedData_Click();
    EXPECT_EQ(dialogs.fileDialogs.constLast().DialogTitle, "Save Selected Data As...");
    EXPECT_EQ(window->tabs.ChartFileName[1], path("run.chd"));
    window->TabChart->setCurrentIndex(0);
    window->TabChart->setCurrentIndex(1);
    EXPECT_NEAR(window->tabs.WindowMinutes[1], span, 1e-4) << "the zoom's width becomes the window";
    open(path("part.chd"));
    EXPECT_NEAR(window->Chart[2]->GetLastTime(), span, 0.01);
}
