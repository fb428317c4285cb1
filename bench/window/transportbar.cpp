#include "window/transportbar.h"

#include "drive.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

struct SpeedRow
{
    const char *text;
    double factor;
};

static constexpr SpeedRow speeds[] = {
    {"0.25 x", 0.25}, {"0.5 x", 0.5}, {"1 x", 1},   {"2 x", 2},
    {"4 x", 4},       {"10 x", 10},   {"30 x", 30}, {"max", module::Drive::Unlimited},
};

static QIcon playIcon(bool playing, const QColor &color)
{
    QPixmap image(48, 48);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    if (playing) {
        painter.drawRoundedRect(11, 8, 9, 32, 2, 2);
        painter.drawRoundedRect(28, 8, 9, 32, 2, 2);
    } else {
        painter.drawPolygon(QPolygon({{13, 7}, {41, 24}, {13, 41}}));
    }
    return QIcon(image);
}

static QString clock(qint64 ms)
{
    return QStringLiteral("%1:%2").arg(ms / 60000).arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'));
}

TransportBar::TransportBar(QWidget *parent)
    : QWidget(parent)
    , m_play(new QToolButton)
    , m_slider(new QSlider(Qt::Horizontal))
    , m_time(new QLabel)
    , m_speed(new QComboBox)
{
    m_play->setObjectName(QStringLiteral("play"));
    m_play->setIconSize(QSize(24, 24));
    m_play->setToolTip(tr("Play or pause (Space)"));
    m_time->setMinimumWidth(110);
    m_time->setAlignment(Qt::AlignCenter);
    for (const SpeedRow &row : speeds)
        m_speed->addItem(QLatin1String(row.text));
    m_speed->setToolTip(tr("Speed of the drive"));
    for (QWidget *control : QList<QWidget *>{m_play, m_slider, m_speed})
        control->setFocusPolicy(Qt::NoFocus);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 6, 12, 6);
    row->setSpacing(12);
    row->addWidget(m_play);
    row->addWidget(m_slider, 1);
    row->addWidget(m_time);
    row->addWidget(m_speed);

    connect(m_play, &QToolButton::clicked, this, &TransportBar::togglePlaying);
    connect(m_slider, &QSlider::valueChanged, this, [this](int second) {
        if (m_drive)
            emit momentRequested(second * 1000LL);
    });
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this, &TransportBar::setSpeed);
    showPlaying(false);
}

/** A speed from the command line need not be one of the rows. */
void TransportBar::showSpeed(double factor)
{
    m_speed->setCurrentIndex(-1);
    for (int row = 0; row < int(std::size(speeds)); ++row) {
        if (qFuzzyCompare(1 + speeds[row].factor, 1 + factor))
            m_speed->setCurrentIndex(row);
    }
    m_speed->setPlaceholderText(tr("%1 x").arg(factor));
}

void TransportBar::setDrive(module::Drive *drive)
{
    m_drive = drive;
    const QSignalBlocker blocker(m_slider);
    m_slider->setMaximum(int(qMax<qint64>(0, drive->durationMs()) / 1000));
    m_slider->setEnabled(drive->durationMs() >= 0);
    showSpeed(drive->speed());
    connect(drive, &module::Drive::positionChanged, this, &TransportBar::showPosition);
    connect(drive, &module::Drive::playingChanged, this, &TransportBar::showPlaying);
    showPosition(drive->positionMs());
    showPlaying(drive->isPlaying());
}

void TransportBar::togglePlaying()
{
    if (!m_drive)
        return;
    if (m_drive->isPlaying()) {
        m_drive->pause();
        return;
    }
    if (m_drive->durationMs() >= 0 && m_drive->positionMs() >= m_drive->durationMs())
        emit momentRequested(0);
    m_drive->play();
}

void TransportBar::showPosition(qint64 ms)
{
    QString text = clock(ms);
    if (m_drive->durationMs() >= 0)
        text += QStringLiteral(" / ") + clock(m_drive->durationMs());
    if (text == m_time->text())
        return; // the second has not changed, and nothing finer is shown
    m_time->setText(text);
    const QSignalBlocker blocker(m_slider);
    m_slider->setValue(int(ms / 1000));
}

void TransportBar::showPlaying(bool playing)
{
    m_play->setIcon(playIcon(playing, palette().color(QPalette::ButtonText)));
}

/** The icon is drawn in the colour of texts. */
void TransportBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        showPlaying(m_drive && m_drive->isPlaying());
    QWidget::changeEvent(event);
}

void TransportBar::setSpeed(int row)
{
    if (m_drive)
        m_drive->setSpeed(speeds[row].factor);
}
