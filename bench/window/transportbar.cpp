#include "window/transportbar.h"

#include "drive.h"
#include "window/commands.h"
#include "window/repeatedpart.h"
#include "window/seekslider.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolButton>

#include <cmath>

struct SpeedRow
{
    const char *text;
    double factor;
};

static constexpr SpeedRow speeds[] = {
    {"0.25 x", 0.25}, {"0.5 x", 0.5}, {"1 x", 1},   {"2 x", 2},
    {"4 x", 4},       {"10 x", 10},   {"30 x", 30}, {"max", module::Drive::Unlimited},
};
static constexpr int tickMs = 200;

enum class Symbol { Previous, Play, Pause, Next };

static QIcon icon(Symbol symbol, const QColor &color)
{
    QPixmap image(48, 48);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    if (symbol == Symbol::Previous) {
        painter.translate(48, 0);
        painter.scale(-1, 1);
    }
    if (symbol == Symbol::Pause) {
        painter.drawRoundedRect(11, 8, 9, 32, 2, 2);
        painter.drawRoundedRect(28, 8, 9, 32, 2, 2);
    } else if (symbol == Symbol::Play) {
        painter.drawPolygon(QPolygon({{13, 7}, {41, 24}, {13, 41}}));
    } else {
        painter.drawPolygon(QPolygon({{10, 10}, {30, 24}, {10, 38}}));
        painter.drawRoundedRect(32, 10, 6, 28, 2, 2);
    }
    return QIcon(image);
}

static QString clock(qint64 ms)
{
    return QStringLiteral("%1:%2").arg(ms / 60000).arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'));
}

TransportBar::TransportBar(QWidget *parent)
    : QWidget(parent)
    , m_part(new RepeatedPart(this))
    , m_previous(addButton(QStringLiteral("previous")))
    , m_play(addButton(QStringLiteral("play")))
    , m_next(addButton(QStringLiteral("next")))
    , m_slider(new SeekSlider)
    , m_clock(new QLineEdit)
    , m_duration(new QLabel)
    , m_speed(new QComboBox)
{
    setObjectName(QStringLiteral("transport"));
    m_slider->setObjectName(QStringLiteral("seek"));
    m_slider->setToolTip(tr("Position in the drive"));
    m_clock->setObjectName(QStringLiteral("clock"));
    m_clock->setAlignment(Qt::AlignRight);
    m_clock->setToolTip(commandTip(QStringLiteral("time")));
    m_clock->setFixedWidth(m_clock->fontMetrics().horizontalAdvance(QStringLiteral("00000:00")) +
                           16);
    m_speed->setObjectName(QStringLiteral("speed"));
    for (const SpeedRow &row : speeds)
        m_speed->addItem(QLatin1String(row.text));
    m_speed->setToolTip(tr("Speed of the drive (+ and -)"));
    layOut();
    makeIcons();

    m_tick.setInterval(tickMs);
    connect(&m_tick, &QTimer::timeout, this, &TransportBar::showPosition);
    connect(m_previous, &QToolButton::clicked, this, &TransportBar::previousRequested);
    connect(m_play, &QToolButton::clicked, this, &TransportBar::togglePlaying);
    connect(m_next, &QToolButton::clicked, this, &TransportBar::stepToNext);
    connect(m_slider, &QSlider::valueChanged, this, [this](int second) {
        if (m_drive)
            emit momentRequested(second * 1000LL);
    });
    connect(m_clock, &QLineEdit::returnPressed, this, &TransportBar::goToTypedTime);
    connect(m_clock, &QLineEdit::editingFinished, this, &TransportBar::showPosition);
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this, &TransportBar::setSpeed);
    connect(m_part, &RepeatedPart::momentRequested, this, &TransportBar::momentRequested);
    connect(m_part, &RepeatedPart::changed, this, &TransportBar::showPart);
}

QToolButton *TransportBar::addButton(const QString &command)
{
    auto *button = new QToolButton;
    button->setObjectName(command);
    button->setIconSize(QSize(24, 24));
    button->setToolTip(commandTip(command));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void TransportBar::layOut()
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(6);
    row->addWidget(m_previous);
    row->addWidget(m_play);
    row->addWidget(m_next);
    row->addWidget(m_slider, 1);
    row->addWidget(m_clock);
    row->addWidget(m_duration);
    row->addSpacing(6);
    row->addWidget(m_speed);
}

void TransportBar::makeIcons()
{
    const QColor color = palette().color(QPalette::ButtonText);
    m_previous->setIcon(icon(Symbol::Previous, color));
    m_next->setIcon(icon(Symbol::Next, color));
    showPlaying();
}

void TransportBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        makeIcons();
    QWidget::changeEvent(event);
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
    const bool hasEnd = drive->durationMs() >= 0;
    m_slider->setMaximum(int(qMax<qint64>(0, drive->durationMs()) / 1000));
    m_slider->setEnabled(hasEnd);
    m_duration->setText(hasEnd ? QStringLiteral("/ ") + clock(drive->durationMs()) : QString());
    m_duration->setVisible(hasEnd);
    showSpeed(drive->speed());
    m_part->setDrive(drive);
    connect(drive, &module::Drive::positionChanged, this, &TransportBar::showPosition);
    connect(drive, &module::Drive::playingChanged, this, &TransportBar::showPlaying);
    showPosition();
    showPlaying();
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

void TransportBar::stepToNext()
{
    if (m_drive)
        m_drive->step();
}

void TransportBar::changeSpeed(int steps)
{
    const int row = m_speed->currentIndex();
    m_speed->setCurrentIndex(qBound(0, row + steps, int(std::size(speeds)) - 1));
    setSpeed(m_speed->currentIndex());
}

void TransportBar::editTime()
{
    m_clock->setFocus();
    m_clock->selectAll();
}

qint64 TransportBar::readTime(const QString &text)
{
    static constexpr double longestSeconds = 1e8;
    const QStringList parts = text.trimmed().split(QLatin1Char(':'));
    double seconds = 0;
    for (int i = 0; i < parts.size(); ++i) {
        bool isNumber = false;
        const bool isLast = i == parts.size() - 1;
        const double part = isLast ? parts[i].toDouble(&isNumber) : parts[i].toUInt(&isNumber);
        // Only the first part may be longer than a minute.
        if (!isNumber || !(part >= 0) || (i > 0 && part >= 60) || parts.size() > 3)
            return -1;
        seconds = seconds * 60 + part;
    }
    return seconds <= longestSeconds ? qint64(std::llround(seconds * 1000)) : -1;
}

void TransportBar::goToTypedTime()
{
    const qint64 ms = readTime(m_clock->text());
    if (ms < 0) {
        emit refused(
            tr("%1: expected a time, for instance 75, 1:15 or 1:01:15").arg(m_clock->text()));
        m_clock->selectAll();
        return;
    }
    m_clock->clearFocus();
    emit momentRequested(ms);
    showPosition();
}

/** The clock goes on between signals, and is left alone while a time is being typed. */
void TransportBar::showPosition()
{
    if (!m_drive)
        return;
    const qint64 ms = m_drive->nowMs();
    const QString text = clock(ms);
    if (!m_clock->hasFocus() && text != m_clock->text())
        m_clock->setText(text);
    const QSignalBlocker blocker(m_slider);
    if (!m_slider->isSliderDown())
        m_slider->setValue(int(ms / 1000));
}

void TransportBar::showPlaying()
{
    const bool playing = m_drive && m_drive->isPlaying();
    m_play->setIcon(
        icon(playing ? Symbol::Pause : Symbol::Play, palette().color(QPalette::ButtonText)));
    if (playing)
        m_tick.start();
    else
        m_tick.stop();
    showPosition();
}

void TransportBar::showPart()
{
    const auto second = [](qint64 ms) { return ms < 0 ? -1 : int(ms / 1000); };
    m_slider->setPart(second(m_part->fromMs()), second(m_part->toMs()));
}

void TransportBar::setSpeed(int row)
{
    if (m_drive)
        m_drive->setSpeed(speeds[row].factor);
}
