#include "chart/Quillchart.h"

#include "chart/ChartAnnotations.h"
#include "chart/ChartPalette.h"
#include "chart/ChartRenderer.h"
#include "chart/DurableFile.h"
#include "chart/LogReader.h"
#include "chart/LogWriter.h"
#include "chart/PlotGeometry.h"
#include "chart/PrintLayout.h"
#include "chart/RunData.h"
#include "chart/RunFileCodec.h"
#include "chart/RunFileReader.h"
#include "chart/SampleStore.h"
#include "chart/TextExport.h"
#include "runtime/RuntimeError.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPrinter>
#include <QRubberBand>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

// A drag shorter than this either way is a click, not a rectangle.
constexpr int kMinDragPixels = 3;

constexpr qint16 kFileOpenError = -18;
constexpr qint16 kLogCorrupted = -21;
constexpr qint16 kPrintError = -14;

QByteArray encodeWhole(const SampleStore &store, const ChartAnnotations &annotations,
                       const ChartAxes &axes, const QString &title, RunFileCodec::Kind kind)
{
    const RunFileCodec::Source source{store,
                                      0,
                                      store.count(),
                                      annotations.eventMarks(),
                                      annotations.methodTexts(),
                                      annotations.notes(),
                                      axes,
                                      title};
    return RunFileCodec::encode(source, kind);
}

qint16 outOfMemory()
{
    return qint16(ErrorNumber::OutOfMemory);
}

} // namespace

Quillchart::Quillchart(QWidget *parent)
    : QWidget(parent)
    , m_store(std::make_unique<SampleStore>())
    , m_annotations(std::make_unique<ChartAnnotations>())
    , m_renderer(std::make_unique<ChartRenderer>(*m_store, *m_annotations))
    , m_logWriter(std::make_unique<LogWriter>())
    , m_geometry(std::make_unique<PlotGeometry>())
    , m_rubberBand(new QRubberBand(QRubberBand::Rectangle, this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
}

Quillchart::~Quillchart() = default;

qint16 Quillchart::AddSample(float UV, float Conductivity)
{
    try {
        m_store->append(UV, Conductivity);
        return 0;
    } catch (const std::bad_alloc &) {
        return outOfMemory();
    }
}

qint16 Quillchart::AddEventMark(const QString &Label, qint32 Color, qint16 Height, float Time)
{
    try {
        m_annotations->addEventMark(Label, Color, Height, Time);
        return 0;
    } catch (const std::bad_alloc &) {
        return outOfMemory();
    }
}

qint16 Quillchart::AddMethodText(const QString &Text, float Time)
{
    try {
        m_annotations->addMethodText(Text, Time);
        return 0;
    } catch (const std::bad_alloc &) {
        return outOfMemory();
    }
}

float Quillchart::GetLastTime() const
{
    const qint64 count = m_store->count();
    return count == 0 ? 0.0f : float(SampleStore::timeOf(count - 1));
}

bool Quillchart::IsLastPointVisible() const
{
    // A pair on the right end has run out of room: the live view moves the axis on from it.
    const float last = GetLastTime();
    return last >= m_axes.timeMin && last < m_axes.timeMax;
}

void Quillchart::Redraw()
{
    render();
    update();
}

void Quillchart::DrawNewData()
{
    const qreal ratio = devicePixelRatioF();
    if (m_image.isNull() || m_image.size() != (QSizeF(size()) * ratio).toSize()) {
        Redraw();
        return;
    }
    const qint64 count = m_store->count();
    QPainter painter(&m_image);
    // The last sample drawn comes again, so that the trace joins on.
    const qint64 first = count > m_drawnSamples ? std::max(m_drawnSamples - 1, qint64(0)) : count;
    const QRect touched = m_renderer->paintAdded(painter, *m_geometry, first, m_drawnMarks,
                                                 m_drawnMethodTexts, font());
    m_drawnSamples = count;
    m_drawnMarks = m_annotations->eventMarks().size();
    m_drawnMethodTexts = m_annotations->methodTexts().size();
    if (!touched.isEmpty())
        update(QRectF(QPointF(touched.topLeft()) / ratio, QSizeF(touched.size()) / ratio)
                   .toAlignedRect());
}

void Quillchart::render()
{
    const qreal ratio = devicePixelRatioF();
    const QSize pixels = (QSizeF(size()) * ratio).toSize();
    if (m_image.size() != pixels)
        m_image = pixels.isEmpty() ? QImage() : QImage(pixels, QImage::Format_RGB32);
    m_drawnSamples = m_store->count();
    m_drawnMarks = m_annotations->eventMarks().size();
    m_drawnMethodTexts = m_annotations->methodTexts().size();
    if (m_image.isNull()) {
        *m_geometry = PlotGeometry();
        return;
    }
    m_image.setDevicePixelRatio(ratio);
    QPainter painter(&m_image);
    *m_geometry = m_renderer->paint(painter, QRectF(rect()), m_axes, m_title, font());
}

void Quillchart::paintEvent(QPaintEvent *)
{
    if (m_image.isNull() || m_image.size() != (QSizeF(size()) * devicePixelRatioF()).toSize())
        render();
    QPainter painter(this);
    if (m_image.isNull())
        painter.fillRect(rect(), ChartPalette::kBackground);
    else
        painter.drawImage(QPoint(0, 0), m_image);
}

void Quillchart::resizeEvent(QResizeEvent *)
{
    render();
}

QRect Quillchart::plotOnWidget() const
{
    const qreal ratio = m_image.isNull() ? 1.0 : m_image.devicePixelRatio();
    const QRect &plot = m_geometry->plot();
    return QRectF(QPointF(plot.topLeft()) / ratio, QSizeF(plot.size()) / ratio).toRect();
}

QRect Quillchart::dragRectangle(const QPoint &to) const
{
    // Built from the corners' extremes: QRect::normalized() shifts a reversed rectangle by one.
    const QPoint topLeft(std::min(m_dragOrigin->x(), to.x()), std::min(m_dragOrigin->y(), to.y()));
    const QPoint bottomRight(std::max(m_dragOrigin->x(), to.x()),
                             std::max(m_dragOrigin->y(), to.y()));
    return QRect(topLeft, bottomRight) & plotOnWidget();
}

void Quillchart::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        m_dragOrigin.reset();
        m_rubberBand->hide();
        leaveZoom();
        return;
    }
    const QPoint at = event->position().toPoint();
    if (event->button() != Qt::LeftButton || !m_geometry->isValid() || !plotOnWidget().contains(at))
        return;
    m_dragOrigin = at;
    m_rubberBand->setGeometry(QRect(at, QSize()));
    m_rubberBand->show();
}

void Quillchart::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragOrigin)
        m_rubberBand->setGeometry(dragRectangle(event->position().toPoint()));
}

void Quillchart::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_dragOrigin)
        return;
    const QRect chosen = dragRectangle(event->position().toPoint());
    m_dragOrigin.reset();
    m_rubberBand->hide();
    if (chosen.width() >= kMinDragPixels && chosen.height() >= kMinDragPixels)
        zoomTo(chosen);
}

void Quillchart::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (m_dragOrigin) {
        m_dragOrigin.reset();
        m_rubberBand->hide();
        return;
    }
    leaveZoom();
}

void Quillchart::zoomTo(const QRect &widgetRect)
{
    const qreal ratio = m_image.devicePixelRatio();
    const QRectF device(
        QPointF(widgetRect.topLeft()) * ratio,
        QPointF(widgetRect.topLeft() + QPoint(widgetRect.width() - 1, widgetRect.height() - 1)) *
            ratio);
    ChartAxes zoomed;
    zoomed.timeMin = float(m_geometry->timeAt(device.left()));
    zoomed.timeMax = float(m_geometry->timeAt(device.right()));
    zoomed.uvMax = float(m_geometry->uvAt(device.top()));
    zoomed.uvMin = float(m_geometry->uvAt(device.bottom()));
    zoomed.condMax = float(m_geometry->condAt(device.top()));
    zoomed.condMin = float(m_geometry->condAt(device.bottom()));
    // Any span that single precision still tells apart will do.
    if (!(zoomed.uvMax > zoomed.uvMin) || !(zoomed.condMax > zoomed.condMin) ||
        !(zoomed.timeMax > zoomed.timeMin))
        return;
    if (!m_axesBeforeZoom)
        m_axesBeforeZoom = m_axes;
    m_axes = zoomed;
    Redraw();
    emit Zoomed(m_index, m_axes.timeMin, m_axes.timeMax, m_axes.uvMin, m_axes.uvMax, m_axes.condMin,
                m_axes.condMax);
}

void Quillchart::leaveZoom()
{
    if (!m_axesBeforeZoom)
        return;
    m_axes = *m_axesBeforeZoom;
    m_axesBeforeZoom.reset();
    Redraw();
    emit Unzoomed(m_index);
}

bool Quillchart::LoadDataFile(const QString &FileName)
{
    // The old run goes first: a failed load leaves the chart empty, so that no tab can show or
    // save it under the name of the file that did not load, and the two never take up memory
    // together.
    ClearData();
    m_axesBeforeZoom.reset();
    std::optional<RunData> run = RunFileReader::read(FileName);
    if (run) {
        *m_store = std::move(run->store);
        *m_annotations = std::move(run->annotations);
        m_axes = run->axes;
        m_title = run->title;
    }
    Redraw();
    if (!run)
        emit ChartError(m_index, kFileOpenError);
    return run.has_value();
}

bool Quillchart::SaveDataFile(const QString &FileName)
{
    return DurableFile::write(
        FileName, encodeWhole(*m_store, *m_annotations, m_axes, m_title, RunFileCodec::Kind::Data));
}

bool Quillchart::SaveSelectedData(const QString &FileName)
{
    const qint64 first =
        std::clamp<qint64>(SampleStore::indexAtOrAfter(m_axes.timeMin), 0, m_store->count());
    // The sample standing on TimeAxisMax, give or take rounding, is shown and so is saved.
    // The last sample at or before TimeAxisMax is the first after it, less one, seen backwards.
    const qint64 end = std::clamp<qint64>(1 - SampleStore::indexAtOrAfter(-double(m_axes.timeMax)),
                                          first, m_store->count());
    const auto shift = float(SampleStore::timeOf(first));
    const auto inRange = [&](float time) {
        return time >= m_axes.timeMin && time <= m_axes.timeMax;
    };
    std::vector<EventMark> marks;
    for (EventMark mark : m_annotations->eventMarks())
        if (inRange(mark.time)) {
            mark.time -= shift;
            marks.push_back(mark);
        }
    std::vector<MethodText> texts;
    const MethodText *inForce = nullptr;
    for (const MethodText &text : m_annotations->methodTexts()) {
        if (text.time < m_axes.timeMin)
            inForce = &text;
        else if (inRange(text.time))
            texts.push_back(MethodText{text.text, text.time - shift});
    }
    if (inForce)
        texts.insert(texts.begin(), MethodText{inForce->text, 0.0f});
    ChartAxes axes = m_axes;
    axes.timeMin = 0.0f;
    axes.timeMax = m_axes.timeMax - shift;
    const RunFileCodec::Source source{*m_store, first,  end, marks, texts, m_annotations->notes(),
                                      axes,     m_title};
    return DurableFile::write(FileName, RunFileCodec::encode(source, RunFileCodec::Kind::Data));
}

void Quillchart::ClearData()
{
    *m_store = SampleStore();
    *m_annotations = ChartAnnotations();
}

void Quillchart::ClearDisplay()
{
    Redraw();
}

QString Quillchart::GetNotes() const
{
    return m_annotations->notes();
}

void Quillchart::SetNotes(const QString &Notes)
{
    m_annotations->setNotes(Notes);
}

QString Quillchart::GetMethodText() const
{
    QStringList texts;
    for (const MethodText &text : m_annotations->methodTexts())
        texts.append(text.text);
    return texts.join(QLatin1String("\r\n"));
}

qint16 Quillchart::ExportData(const QString &FileName, qint16 IncludeUV, qint16 IncludeCond,
                              qint16 IncludeEvents, qint16 IncludeNotes, qint16 IncludeMethod,
                              qint16 MethodPosition, float TimeFrom, float TimeTo, float SampleRate,
                              qint32 PointCount)
{
    if (MethodPosition < 0 || MethodPosition > 2)
        return qint16(ErrorNumber::InvalidPropertyValue);
    TextExport::Options options;
    options.uv = IncludeUV != 0;
    options.conductivity = IncludeCond != 0;
    options.events = IncludeEvents != 0;
    options.notes = IncludeNotes != 0;
    options.method = IncludeMethod != 0;
    options.methodPosition = TextExport::MethodPosition(MethodPosition);
    options.timeFrom = TimeFrom;
    options.timeTo = TimeTo;
    options.sampleRate = SampleRate;
    options.pointCount = PointCount;
    const QByteArray text = TextExport(*m_store, *m_annotations, m_title).text(options);
    if (text.isEmpty())
        return qint16(ErrorNumber::InvalidPropertyValue);
    return DurableFile::write(FileName, text) ? 0 : qint16(ErrorNumber::PathFileAccess);
}

void Quillchart::PrintChart(bool PrintChromatogram, bool PrintMethod, bool PrintNotes,
                            qint32 TraceFlags)
{
    QPrinter defaultPrinter(QPrinter::HighResolution);
    QPrinter &printer = m_printer != nullptr ? *m_printer : defaultPrinter;
    printer.setDocName(m_title);
    printer.setCopyCount(1);
    PrintLayout::Options options;
    options.chromatogram = PrintChromatogram;
    options.method = PrintMethod;
    options.notes = PrintNotes;
    options.content.eventMarks = (TraceFlags & 1) != 0;
    options.content.conductivity = (TraceFlags & 2) != 0;
    options.content.uv = (TraceFlags & 4) != 0;
    const PrintLayout layout(*m_renderer, *m_annotations, m_axes, m_title, font());
    // A PDF without a file cannot print, and a printer that tries stays busy for good, deaf to
    // the next choice of printer: that is the default printer of a computer that has none.
    const bool noFile =
        printer.outputFormat() == QPrinter::PdfFormat && printer.outputFileName().isEmpty();
    if (!printer.isValid() || noFile || !layout.print(printer, options))
        emit ChartError(m_index, kPrintError);
}

qint16 Quillchart::WriteLog(const QString &LogDirectory, qint16, qint32, double DataFileSizeHours)
{
    return qint16(m_logWriter->write(LogDirectory, *m_store, *m_annotations, DataFileSizeHours));
}

bool Quillchart::CheckLogFile(const QString &LogDirectory)
{
    return LogReader::hasLog(LogDirectory);
}

qint16 Quillchart::SaveLogAs(const QString &LogDirectory, qint16, const QString &NewFileName)
{
    RunData run;
    const LogReader::Status status = LogReader::read(LogDirectory, run);
    if (status == LogReader::Status::OutOfMemory)
        return outOfMemory();
    if (status != LogReader::Status::Good && status != LogReader::Status::Salvaged) {
        emit ChartError(m_index, kLogCorrupted);
        return kLogCorrupted;
    }
    // Opened later, the log shows its whole time at once.
    run.axes.timeMax = std::max(run.axes.timeMax, float(SampleStore::timeOf(run.store.count())));
    if (!DurableFile::write(NewFileName, encodeWhole(run.store, run.annotations, run.axes,
                                                     run.title, RunFileCodec::Kind::Log)))
        return qint16(ErrorNumber::PathFileAccess);
    // What is saved is all there is; the operator still hears that a stretch was lost.
    if (status == LogReader::Status::Salvaged)
        emit ChartError(m_index, kLogCorrupted);
    return 0;
}

void Quillchart::CloseLog(const QString &LogDirectory, qint16)
{
    m_logWriter->close(LogDirectory);
}
