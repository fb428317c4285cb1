#include "statuscolumn.h"

#include "palette.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

static const QRect foot(0, 640, StatusColumn::Width, 60);

StatusColumn::StatusColumn(QWidget *parent) : QWidget(parent)
{
    setGeometry(0, 0, Width, 720);
}

void StatusColumn::setSource(Source source)
{
    m_source = source;
    update(foot);
}

void StatusColumn::setModuleMissing(bool missing)
{
    if (missing == m_moduleMissing)
        return;
    m_moduleMissing = missing;
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

void StatusColumn::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        update(foot);
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

/** In one line where it fits, otherwise in two. */
static void drawNotice(QPainter *painter, const QString &text)
{
    static constexpr int dot = 10;
    static constexpr int gap = 7;
    static constexpr int margin = 4;
    static constexpr int flags = Qt::AlignVCenter | Qt::TextWordWrap;
    painter->setFont(night::letters(19));
    const QRect room = foot.adjusted(margin + dot + gap, 0, -margin, 0);
    const int width = painter->fontMetrics().boundingRect(room, flags, text).width();
    const int left = foot.center().x() - (dot + gap + width) / 2;
    painter->setPen(Qt::NoPen);
    painter->setBrush(night::amber);
    painter->drawEllipse(left, foot.center().y() - dot / 2 + 1, dot, dot);
    painter->setPen(night::text);
    painter->drawText(QRect(left + dot + gap, foot.top(), width, foot.height()), flags, text);
}

void StatusColumn::drawFoot(QPainter *painter) const
{
    if (m_moduleMissing) {
        drawNotice(painter, tr("No module"));
        return;
    }
    const QString sources[] = {QString(), tr("Simulator"), tr("Recorded"), tr("Live")};
    painter->setFont(night::letters(24));
    painter->setPen(night::secondary);
    painter->drawText(foot.adjusted(4, 0, -4, 0), Qt::AlignCenter | Qt::TextWordWrap,
                      sources[int(m_source)]);
}

void StatusColumn::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), night::background.darker(130));
    painter.fillRect(Width - 1, 0, 1, height(), night::hairline);

    painter.setFont(night::letters(34, true));
    painter.setPen(night::text);
    const QTime time = m_time.isValid() ? m_time : QTime::currentTime();
    painter.drawText(QRect(0, 24, Width, 44), Qt::AlignCenter,
                     time.toString(QStringLiteral("HH:mm")));

    painter.setPen(Qt::NoPen);
    drawSignal(&painter, QPoint(44, 110));
    drawNote(&painter, QPoint(49, 172));
    if (m_volumeShown)
        drawVolume(&painter, QPoint(38, 232));

    drawFoot(&painter);
}
