#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QWidget>

/** A text as a widget draws it. */
struct DrawnText
{
    QString text;
    QRectF place; // from its ascent to its descent, in the widget
};

/** Collects what texts a widget and its children draw. */
class TextCollector : public QPaintEngine
{
public:
    TextCollector() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState &state) override
    {
        if (state.state() & DirtyTransform)
            m_transform = state.transform();
    }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawPath(const QPainterPath &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF &baseline, const QTextItem &item) override
    {
        const QRectF place(baseline.x(), baseline.y() - item.ascent(), item.width(),
                           item.ascent() + item.descent());
        texts.append({item.text(), m_transform.mapRect(place)});
    }

    QList<DrawnText> texts;

private:
    QTransform m_transform;
};

/** A device of a widget's size that keeps nothing but texts. */
class TextDevice : public QPaintDevice
{
public:
    explicit TextDevice(QSize size) : m_size(size) {}

    QPaintEngine *paintEngine() const override { return &m_engine; }
    const QList<DrawnText> &texts() const { return m_engine.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        static constexpr int dpi = 96;
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return dpi;
        default:
            return 0;
        }
    }

private:
    QSize m_size;
    mutable TextCollector m_engine;
};

inline QList<DrawnText> drawnTexts(QWidget *widget)
{
    TextDevice device(widget->size());
    widget->render(&device);
    return device.texts();
}

/** What stands in a line counts as one text. */
inline QStringList drawnLines(QWidget *widget)
{
    QStringList lines;
    QRectF last;
    for (const DrawnText &drawn : drawnTexts(widget)) {
        const bool continues = !lines.isEmpty() && drawn.place.top() == last.top() &&
                               qAbs(drawn.place.left() - last.right()) < 1;
        if (continues)
            lines.last() += drawn.text;
        else
            lines.append(drawn.text);
        last = drawn.place;
    }
    return lines;
}
