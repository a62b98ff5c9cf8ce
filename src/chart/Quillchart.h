#pragma once

#include "chart/ChartAxes.h"

#include <QImage>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

class ChartAnnotations;
class ChartRenderer;
class LogWriter;
class PlotGeometry;
class QPrinter;
class QRubberBand;
class SampleStore;

/// @brief The chart of one chromatogram: holds its samples, event marks, method texts and
/// notes, draws them and lets the operator zoom with the mouse.
///
/// Samples stand 1/300 minute apart, the first at 0. Adding draws nothing: `Redraw` paints the
/// whole chart with the present axes, `DrawNewData` only what was added since its last call.
/// The axis properties take effect at the next `Redraw`.
class Quillchart : public QWidget
{
    Q_OBJECT

public:
    explicit Quillchart(QWidget *parent = nullptr);
    ~Quillchart() override;

    /// Status 0, or non-zero when the chart cannot hold more.
    qint16 AddSample(float UV, float Conductivity);
    /// `Color` is 0xBBGGRR. `Height` is in percent of the plot's height, rising from the time
    /// axis; a negative one hangs from the top instead.
    qint16 AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time);
    qint16 AddMethodText(const QString &Text, float Time);

    /// Minutes of the last sample; 0 for an empty chart.
    [[nodiscard]] float GetLastTime() const;
    /// The last sample lies from TimeAxisMin up to, but not on, TimeAxisMax.
    [[nodiscard]] bool IsLastPointVisible() const;
    void DrawNewData();
    void Redraw();

    /// Replaces everything the chart holds by the run in the file, a `.chd` or a `.chl` by its
    /// bytes whatever its name. A file that cannot be read raises ChartError -18 and answers
    /// false, leaving the chart empty: no samples, marks, method texts or notes, its title and
    /// axes untouched for the caller to set.
    bool LoadDataFile(const QString &FileName);
    /// Writes the whole chart as a `.chd`; true once it has reached the disk.
    bool SaveDataFile(const QString &FileName);
    /// Writes, as a `.chd`, the samples between TimeAxisMin and TimeAxisMax with the marks and
    /// method texts of that stretch, moved so that it starts at 0, with the method text in force
    /// at its start and the notes.
    bool SaveSelectedData(const QString &FileName);
    /// Drops samples, marks, method texts and notes.
    void ClearData();
    /// Paints the emptied chart.
    void ClearDisplay();
    [[nodiscard]] QString GetNotes() const;
    void SetNotes(const QString &Notes);
    /// All method texts in order of arrival, separated by CR LF.
    [[nodiscard]] QString GetMethodText() const;

    /// Writes the stretch `TimeFrom` to `TimeTo` as a tab-separated text file of exactly
    /// `PointCount` points at `SampleRate` points a second; the flags are 1 for yes. 0 once the
    /// file is written, else a run-time error number.
    qint16 ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond,
                      qint16 IncludeEvents, qint16 IncludeNotes, qint16 IncludeMethod,
                      qint16 MethodPosition, float TimeFrom, float TimeTo, float SampleRate,
                      qint32 PointCount);

    /// Prints one copy of the report on the printer given to `setPrinter`: the title,
    /// the chromatogram with the traces `TraceFlags` asks for (1 events, 2 conductivity, 4 UV),
    /// the method text and the notes. A failure raises ChartError -14.
    void PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes, qint32 TraceFlags);
    /// The printer `PrintChart` prints on, set up and owned by the caller, a PDF file when its
    /// output format says so; without one, the system's default printer.
    void setPrinter(QPrinter *printer) { m_printer = printer; }

    /// Appends what came since the last successful call to the log in `LogDirectory`, and
    /// answers 0 once it is on the disk, else the run-time error number of the failure.
    /// Nothing is acknowledged on failure: the next call writes it again. `Interval` is not
    /// needed, as each call takes what is new; `DataFileSizeHours` of log time go in one file.
    /// A directory that holds a log this chart did not write is left alone (75).
    qint16 WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32 Interval,
                    double DataFileSizeHours);
    /// True when `LogDirectory` (with or without a trailing separator) holds a record that
    /// SaveLogAs would save.
    bool CheckLogFile(const QString &LogDirectory);
    /// Writes every whole record of the log in `LogDirectory` as the `.chl` file
    /// `NewFileName`, its time axis spanning the whole run; any instance number, 0 included,
    /// finds it. A log that lost a stretch is saved without it and raises ChartError -21; one
    /// with nothing usable raises -21 and answers -21, writing nothing. The chart's own data
    /// are untouched.
    qint16 SaveLogAs(const QString &LogDirectory, qint16 InstanceNumber,
                     const QString &NewFileName);
    /// Deletes the log's files, leaving `LogDirectory` empty.
    void CloseLog(const QString &LogDirectory, qint16 InstanceNumber);

    [[nodiscard]] float UvAxisMax() const { return m_axes.uvMax; }
    void setUvAxisMax(float value) { m_axes.uvMax = value; }
    [[nodiscard]] float UvAxisMin() const { return m_axes.uvMin; }
    void setUvAxisMin(float value) { m_axes.uvMin = value; }
    [[nodiscard]] float CondAxisMax() const { return m_axes.condMax; }
    void setCondAxisMax(float value) { m_axes.condMax = value; }
    [[nodiscard]] float CondAxisMin() const { return m_axes.condMin; }
    void setCondAxisMin(float value) { m_axes.condMin = value; }
    [[nodiscard]] float TimeAxisMin() const { return m_axes.timeMin; }
    void setTimeAxisMin(float value) { m_axes.timeMin = value; }
    [[nodiscard]] float TimeAxisMax() const { return m_axes.timeMax; }
    void setTimeAxisMax(float value) { m_axes.timeMax = value; }
    [[nodiscard]] QString ChartTitle() const { return m_title; }
    void setChartTitle(const QString &value) { m_title = value; }

    /// The position in the owner's array of charts, passed back with every event.
    [[nodiscard]] qint16 index() const { return m_index; }
    void setIndex(qint16 value) { m_index = value; }

signals:
    void Zoomed(qint16 Index, float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin, float UvMax,
                float CondMin, float CondMax);
    void Unzoomed(qint16 Index);
    void ChartError(qint16 Index, qint16 ErrorCode);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void render();
    [[nodiscard]] QRect plotOnWidget() const;
    [[nodiscard]] QRect dragRectangle(const QPoint &to) const;
    void zoomTo(const QRect &widgetRect);
    void leaveZoom();

    qint16 m_index = 0;
    ChartAxes m_axes;
    QString m_title;
    std::unique_ptr<SampleStore> m_store;
    std::unique_ptr<ChartAnnotations> m_annotations;
    std::unique_ptr<ChartRenderer> m_renderer;
    std::unique_ptr<LogWriter> m_logWriter;

    // The backing image and what has been painted on it.
    QImage m_image;
    std::unique_ptr<PlotGeometry> m_geometry;
    qint64 m_drawnSamples = 0;
    std::size_t m_drawnMarks = 0;
    std::size_t m_drawnMethodTexts = 0;

    QPrinter *m_printer = nullptr;

    std::optional<ChartAxes> m_axesBeforeZoom;
    QRubberBand *m_rubberBand = nullptr;
    std::optional<QPoint> m_dragOrigin;
};
