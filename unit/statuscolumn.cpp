#include "statuscolumn.h"

#include "palette.h"

#include <QPainter>
#include <QPainterPath>

static const QRect foot(0, 640, StatusColumn::Width, 60);

StatusColumn::StatusColumn(QWidget *parent) : QWidget(parent)
{
    setGeometry(0, 0, Width, 720);
}

void StatusColumn::setSource(const QString &text)
{
    m_source = text;
    update(foot);
}

void StatusColumn::setNotice(const QString &text)
{
    if (text == m_notice)
        return;
    m_notice = text;
    update(foot);
}

void StatusColumn::setTime(QTime time)
{
    m_time = time;
    m_minute.stop();
    update();
}

void StatusColumn::setVolumeShown(bool shown)
{
    if (shown == m_volumeShown)
        return;
    m_volumeShown = shown;
    update();
}

void StatusColumn::waitForNextMinute()
{
    const QTime now = QTime::currentTime();
    m_minute.start(60000 - (now.second() * 1000 + now.msec()), this);
}

void StatusColumn::timerEvent(QTimerEvent *)
{
    update(0, 0, Width, 100);
    waitForNextMinute();
}

void StatusColumn::showEvent(QShowEvent *)
{
    if (!m_time.isValid())
        waitForNextMinute();
}

void StatusColumn::hideEvent(QHideEvent *)
{
    m_minute.stop();
}

static void drawSignal(QPainter *painter, QPoint place)
{
    for (int bar = 0; bar < 4; ++bar) {
        const int height = 7 + 6 * bar;
        painter->setBrush(bar < 3 ? night::text : night::hairline);
        painter->drawRoundedRect(place.x() + 11 * bar, place.y() + 26 - height, 7, height, 2, 2);
    }
}

static void drawNote(QPainter *painter, QPoint place)
{
    painter->setBrush(night::secondary);
    painter->drawEllipse(place.x(), place.y() + 19, 11, 9);
    painter->drawEllipse(place.x() + 18, place.y() + 15, 11, 9);
    QPainterPath stems;
    stems.moveTo(place.x() + 9, place.y() + 24);
    stems.lineTo(place.x() + 9, place.y() + 5);
    stems.lineTo(place.x() + 27, place.y());
    stems.lineTo(place.x() + 27, place.y() + 20);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(night::secondary, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(stems);
    painter->setPen(Qt::NoPen);
}

static void drawVolume(QPainter *painter, QPoint place)
{
    static constexpr int steps = 6;
    static constexpr int set = 4;
    for (int step = 0; step < steps; ++step) {
        painter->setBrush(step < set ? night::accent : night::hairline);
        painter->drawRoundedRect(place.x() + 9 * step, place.y() + 20 - 3 * step, 6, 6 + 3 * step,
                                 2, 2);
    }
}

static void drawNotice(QPainter *painter, const QString &text)
{
    static constexpr int dot = 10;
    static constexpr int gap = 7;
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(19);
    painter->setFont(font);
    const int width = dot + gap + painter->fontMetrics().horizontalAdvance(text);
    const int left = foot.center().x() - width / 2;
    painter->setPen(Qt::NoPen);
    painter->setBrush(night::amber);
    painter->drawEllipse(left, foot.center().y() - dot / 2 + 1, dot, dot);
    painter->setPen(night::text);
    painter->drawText(foot.adjusted(left + dot + gap, 0, 0, 0), Qt::AlignVCenter, text);
}

void StatusColumn::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), night::background.darker(130));
    painter.fillRect(Width - 1, 0, 1, height(), night::hairline);

    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(34);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(night::text);
    const QTime time = m_time.isValid() ? m_time : QTime::currentTime();
    painter.drawText(QRect(0, 24, Width, 44), Qt::AlignCenter,
                     time.toString(QStringLiteral("HH:mm")));

    painter.setPen(Qt::NoPen);
    drawSignal(&painter, QPoint(44, 110));
    drawNote(&painter, QPoint(49, 172));
    if (m_volumeShown)
        drawVolume(&painter, QPoint(38, 232));

    if (!m_notice.isEmpty()) {
        drawNotice(&painter, m_notice);
        return;
    }
    font.setPixelSize(24);
    font.setBold(false);
    painter.setFont(font);
    painter.setPen(night::secondary);
    painter.drawText(foot.adjusted(4, 0, -4, 0), Qt::AlignCenter | Qt::TextWordWrap, m_source);
}
