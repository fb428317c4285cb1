#include "panels/audiomonitor.h"

#include "audiostage.h"
#include "palette.h"
#include "tools/themecolors.h"

#include <QPainter>

struct SpeakerPlace
{
    int bit;
    QPointF place; // in the car's picture, front at the top
};

static const SpeakerPlace places[] = {
    {FrontLeftSpeaker, {70, 176}},  {FrontRightSpeaker, {250, 176}}, {RearLeftSpeaker, {70, 300}},
    {RearRightSpeaker, {250, 300}}, {CentreSpeaker, {160, 122}},     {Subwoofer, {160, 396}},
};
static const QRect carArea(20, 20, 320, 440);
static const QRect stateArea(360, 24, 320, 150);
static const QRect timelineArea(360, 190, 420, 270);

static QFont letters(int pixels, bool bold = false)
{
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

AudioMonitor::AudioMonitor(AudioStage *stage, QWidget *parent)
    : QWidget(parent), m_stage(stage), m_car(QStringLiteral(":/icon/radaricon/bkg_radar_car.png"))
{
    connect(stage, &AudioStage::changed, this, QOverload<>::of(&QWidget::update));
}

const theme::Colors &AudioMonitor::colors() const
{
    return theme::colors(palette());
}

void AudioMonitor::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(rect(), colors().window);
    const double factor = qMin(double(width()) / drawn.width(), double(height()) / drawn.height());
    painter.translate((width() - factor * drawn.width()) / 2, 0);
    painter.scale(factor, factor);
    drawCar(&painter);
    drawState(&painter);
    drawTimeline(&painter);
}

/** The picture is made for the night, so it has that behind it in both themes. */
void AudioMonitor::drawCar(QPainter *painter) const
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(night::background);
    painter->drawRoundedRect(carArea.adjusted(-8, -8, 8, 8), 12, 12);
    painter->save();
    painter->setClipRect(carArea);
    painter->translate(carArea.center());
    painter->rotate(90);
    painter->setOpacity(0.55);
    painter->drawPixmap(QRectF(-carArea.height() * 0.8, -carArea.width() * 0.68,
                               carArea.height() * 1.6, carArea.width() * 1.36),
                        m_car, m_car.rect());
    painter->restore();
    for (const SpeakerPlace &speaker : places)
        drawSpeaker(painter, carArea.topLeft() + speaker.place - QPointF(0, 20),
                    m_stage->voiceSpeakers() & speaker.bit, m_stage->musicSpeakers() & speaker.bit);
}

/** Amber rings for the voice, a blue one for music: thin while it ducks. */
void AudioMonitor::drawSpeaker(QPainter *painter, const QPointF &place, bool voice,
                               bool music) const
{
    painter->setBrush(night::panel);
    painter->setPen(QPen(voice   ? night::amber
                         : music ? night::accent
                                 : night::hairline,
                         voice                           ? 4
                         : music && !m_stage->isDucked() ? 4
                                                         : 2));
    painter->drawEllipse(place, 19, 19);
    painter->setPen(Qt::NoPen);
    painter->setBrush(voice ? night::amber : night::secondary);
    painter->drawEllipse(place, 7, 7);
    if (!voice)
        return;
    painter->setBrush(Qt::NoBrush);
    for (int ring = 1; ring <= 2; ++ring) {
        QColor color = night::amber;
        color.setAlpha(150 / ring);
        painter->setPen(QPen(color, 3));
        painter->drawEllipse(place, 19 + 9 * ring, 19 + 9 * ring);
    }
}

void AudioMonitor::drawState(QPainter *painter) const
{
    const bool isSilent = m_stage->voice() == AudioStage::Silent;
    painter->setFont(letters(26, true));
    painter->setPen(isSilent ? colors().secondary : colors().amber);
    painter->drawText(stateArea, Qt::AlignLeft | Qt::AlignTop,
                      isSilent ? tr("No interruption") : m_stage->voiceName());

    const auto row = [this, painter](int y, const QString &name, const QString &value,
                                     const QColor &color) {
        painter->setFont(letters(19));
        painter->setPen(colors().secondary);
        painter->drawText(stateArea.x(), y, name);
        painter->setPen(color);
        painter->drawText(stateArea.x() + 110, y, value);
    };
    row(88, tr("Music"), m_stage->isDucked() ? tr("ducked") : tr("playing"),
        m_stage->isDucked() ? colors().amber : colors().text);
    row(118, tr("Voice from"),
        isSilent ? QStringLiteral("-") : speakerNames(m_stage->voiceSpeakers()), colors().text);
    row(148, tr("Volume"), m_stage->isVolumeShown() ? tr("shown") : tr("hidden"), colors().text);
}

void AudioMonitor::drawTimeline(QPainter *painter) const
{
    static constexpr int lineHeight = 26;
    const int lines = timelineArea.height() / lineHeight;
    const QVector<AudioStage::Entry> &entries = m_stage->timeline();
    painter->setPen(colors().hairline);
    painter->drawLine(timelineArea.topLeft(), timelineArea.topRight());
    painter->setFont(letters(17));
    int y = timelineArea.top() + lineHeight;
    for (int i = qMax(0, entries.size() - lines); i < entries.size(); ++i, y += lineHeight) {
        painter->setPen(colors().secondary);
        painter->drawText(timelineArea.x(), y,
                          QString::number(double(entries[i].ms) / 1000.0, 'f', 2));
        painter->setPen(i == entries.size() - 1 ? colors().text : colors().secondary);
        const int place = timelineArea.x() + 76;
        painter->drawText(place, y,
                          painter->fontMetrics().elidedText(entries[i].text, Qt::ElideRight,
                                                            timelineArea.right() - place));
    }
}
