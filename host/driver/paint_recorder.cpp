#include "host/driver/paint_recorder.h"

#include "host/driver/paint_counter.h"

#include <QGuiApplication>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QWidget>

#include <cmath>

namespace quillon {
namespace {

class RecordEngine : public QPaintEngine {
public:
    explicit RecordEngine(QList<DrawRecord>* records)
        : QPaintEngine(QPaintEngine::AllFeatures)
        , m_records(records)
    {
    }

    bool begin(QPaintDevice*) override
    {
        return true;
    }
    bool end() override
    {
        return true;
    }
    Type type() const override
    {
        return QPaintEngine::User;
    }

    void updateState(const QPaintEngineState& state) override
    {
        const DirtyFlags dirty = state.state();
        if (dirty & DirtyPen)
            m_pen = state.pen();
        if (dirty & DirtyBrush)
            m_brush = state.brush();
        if (dirty & DirtyTransform)
            m_transform = state.transform();
        if (dirty & DirtyOpacity)
            m_opacity = state.opacity();
    }

    void drawPixmap(const QRectF& r, const QPixmap&, const QRectF&) override
    {
        addPicture("pixmap", r);
    }
    void drawTiledPixmap(const QRectF& r, const QPixmap&, const QPointF&) override
    {
        addPicture("pixmap", r);
    }
    void drawImage(const QRectF& r, const QImage&, const QRectF&, Qt::ImageConversionFlags) override
    {
        addPicture("image", r);
    }
    void drawPath(const QPainterPath& path) override
    {
        addShape("path", path.boundingRect(), true);
    }
    void drawRects(const QRectF* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            addShape("rect", rects[i], true);
    }
    void drawEllipse(const QRectF& r) override
    {
        addShape("ellipse", r, true);
    }
    void drawLines(const QLineF* lines, int count) override
    {
        for (int i = 0; i < count; ++i)
            addShape("line", QRectF(lines[i].p1(), lines[i].p2()).normalized(), false);
    }
    void drawPoints(const QPointF* points, int count) override
    {
        for (int i = 0; i < count; ++i)
            addShape("point", QRectF(points[i], QSizeF(0, 0)), false);
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        QPolygonF polygon;
        for (int i = 0; i < count; ++i)
            polygon << points[i];
        addShape("polygon", polygon.boundingRect(), mode != PolylineMode);
    }
    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPoints;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

    void drawTextItem(const QPointF& baseline, const QTextItem& item) override
    {
        const QRectF box(baseline.x(), baseline.y() - item.ascent(), item.width(),
            item.ascent() + item.descent());
        const QRectF rect = m_transform.mapRect(box);
        const QColor colour = withOpacity(m_pen.color());
        if (!continuesLine(baseline, colour))
            m_records->append({"text", rect, colour, colour, item.text()});
        else {
            m_records->last().text += item.text();
            m_records->last().rect |= rect;
        }
        m_lineEnd = QPointF(baseline.x() + item.width(), baseline.y());
        m_lineTransform = m_transform;
        m_lineRecord = m_records->size();
    }

private:
    // A line comes as several items where fonts, scripts or blanks change.
    bool continuesLine(const QPointF& baseline, const QColor& colour) const
    {
        return m_lineRecord > 0 && m_lineRecord == m_records->size()
            && m_lineTransform == m_transform && m_records->last().colour == colour
            && std::abs(baseline.y() - m_lineEnd.y()) < 0.01
            && std::abs(baseline.x() - m_lineEnd.x()) < 0.1;
    }

    QColor withOpacity(QColor colour) const
    {
        colour.setAlphaF(colour.alphaF() * m_opacity);
        return colour;
    }

    QColor brushColour() const
    {
        const QGradient* gradient = m_brush.gradient();
        return gradient && !gradient->stops().isEmpty() ? gradient->stops().constFirst().second
                                                        : m_brush.color();
    }

    void addPicture(const char* kind, const QRectF& r)
    {
        m_records->append({kind, m_transform.mapRect(r), QColor(), QColor(), QString()});
    }

    void addShape(const char* kind, const QRectF& r, bool canFill)
    {
        const bool filled = canFill && m_brush.style() != Qt::NoBrush;
        const QColor pen = m_pen.style() == Qt::NoPen ? QColor() : withOpacity(m_pen.color());
        const QColor colour = filled ? withOpacity(brushColour()) : pen;
        if (filled || pen.isValid())
            m_records->append({kind, m_transform.mapRect(r), colour, pen, QString()});
    }

    QList<DrawRecord>* m_records;
    QPen m_pen;
    QBrush m_brush;
    QTransform m_transform, m_lineTransform;
    double m_opacity = 1;
    QPointF m_lineEnd;
    int m_lineRecord = 0;
};

class RecordDevice : public QPaintDevice {
public:
    RecordDevice(const QSize& size, QList<DrawRecord>* records)
        : m_size(size)
        , m_engine(records)
    {
    }
    QPaintEngine* paintEngine() const override
    {
        return &m_engine;
    }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        const QScreen* screen = QGuiApplication::primaryScreen();
        const double dpi = screen ? screen->logicalDotsPerInch() : 96;
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmWidthMM:
            return int(m_size.width() * 25.4 / dpi);
        case PdmHeightMM:
            return int(m_size.height() * 25.4 / dpi);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return int(dpi);
        case PdmNumColors:
            return 1 << 24;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        }
        return 0;
    }

private:
    QSize m_size;
    mutable RecordEngine m_engine;
};

} // namespace

QList<DrawRecord> recordRepaint(QWidget* widget)
{
    QList<DrawRecord> records;
    RecordDevice device(widget->size(), &records);
    pausePaintCounts(true);
    widget->render(&device, QPoint(), QRegion(), QWidget::DrawChildren);
    pausePaintCounts(false);
    return records;
}

} // namespace quillon
