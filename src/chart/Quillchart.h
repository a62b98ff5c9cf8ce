#pragma once

#include "chart/ChartAxes.h"

#include <QImage>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

class ChartAnnotations;
class ChartRenderer;
class PlotGeometry;
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
    /// The last sample lies within TimeAxisMin to TimeAxisMax, ends included.
    [[nodiscard]] bool IsLastPointVisible() const;
    void DrawNewData();
    void Redraw();

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

    // The backing image and what has been painted on it.
    QImage m_image;
    std::unique_ptr<PlotGeometry> m_geometry;
    qint64 m_drawnSamples = 0;
    std::size_t m_drawnMarks = 0;
    std::size_t m_drawnMethodTexts = 0;

    std::optional<ChartAxes> m_axesBeforeZoom;
    QRubberBand *m_rubberBand = nullptr;
    std::optional<QPoint> m_dragOrigin;
};
