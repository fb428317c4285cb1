#include "gauges_dashboard.h"

#include "debug.h"

#include <QPainter>
#include <QTimer>

namespace norda {

/** Where the needle image's lower left corner lies, seen from the centre. */
struct Anchor
{
    int x;
    int y;
};

static constexpr Anchor anchors[] = {{-18, -15}, {-22, -20}};
static constexpr Anchor otherAnchor = {-32, -40};

/** How a value text is drawn, by its length. */
struct TextLook
{
    int pointSize;
    int boxWidth;
    Qt::Alignment alignment;
};

static constexpr int boxHeight = 40;
static constexpr int shortText = 8; // texts below this length are drawn whole
static const TextLook shortLook = {23, 120, Qt::AlignHCenter};
static const TextLook longLook = {21, 140, Qt::AlignLeft};

Dashboard::Dashboard(QWidget *parent) : QLabel(parent), m_timer(new QTimer(this))
{
    connect(m_timer, &QTimer::timeout, this, &Dashboard::instrument_animation);
}

Dashboard::~Dashboard() = default;

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value, as hosts link it
void Dashboard::setPointerIcon(QString path)
{
    m_pointer.load(path);
}

void Dashboard::setDegRotate(int deg, int interval)
{
    if (deg == m_currentAngle)
        return;
    m_rising = deg > m_currentAngle ? 1 : 0;
    m_targetAngle = deg;
    m_timer->start(interval);
}

void Dashboard::setPointerPos(int heightExtension, int centreLift)
{
    m_heightExtension = heightExtension;
    m_centreLift = centreLift;
}

void Dashboard::set_txtvalue(int x, int y)
{
    m_textX = x;
    m_textY = y;
}

void Dashboard::instrument_animation()
{
    m_currentAngle += m_rising == 1 ? 1 : -1;
    if (m_targetAngle == m_currentAngle) {
        m_targetAngle = 0;
        m_timer->stop();
    }
    update();
}

void Dashboard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const int w = width();
    const int h = height() + m_heightExtension;
    const int side = qMin(w, h);
    const int middle = w / 2 + 1;
    painter.translate(middle, float(h * 0.6 - m_centreLift));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(138, 43, 226, 255));
    DrawPointer(painter, side - 130);
    DrawUnit(painter, side - 390);
}

void Dashboard::DrawPointer(QPainter &painter, int)
{
    const bool known = m_index >= 0 && m_index < int(std::size(anchors));
    const Anchor &anchor = known ? anchors[m_index] : otherAnchor;
    painter.save();
    painter.rotate(m_currentAngle - m_initialPosition);
    painter.drawPixmap(anchor.x, anchor.y - m_pointer.height(), m_pointer);
    painter.restore();
}

void Dashboard::DrawUnit(QPainter &painter, int)
{
    NORDA_TRACE_AT(24);
    const bool whole = m_valueText.size() < shortText;
    // The cut text replaces the value, so it stays at ten characters on later paints.
    if (!whole)
        m_valueText = m_valueText.left(shortText - 1) + QStringLiteral("...");

    const TextLook &look = whole ? shortLook : longLook;
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(look.pointSize);
    font.setBold(true);
    painter.save();
    painter.setPen(QColor(255, 255, 255, 255));
    painter.setFont(font);
    painter.drawText(QRect(m_textX, m_textY, look.boxWidth, boxHeight), int(look.alignment),
                     m_valueText + m_unitsText);
    painter.restore();
    NORDA_TRACE_AT(45);
}

} // namespace norda
