#include "slabelmanager.h"

#include "scrolllabel.h"

#include <QEvent>
#include <QTimerEvent>

#include <algorithm>

static constexpr int tickMs = 40;
static constexpr int pixelsPerTick = 2;
static constexpr int restTicks = 40; // at the start and at the end of a text

struct SLabelManager::Entry
{
    QPointer<ScrollLabel> label;
    QString text;
    int rest = restTicks;
    bool done = false;
};

SLabelManager::SLabelManager(QWidget *parent) : QObject(parent) {}

SLabelManager::~SLabelManager() = default;

void SLabelManager::addLabel(ScrollLabel *label)
{
    const auto isManaged = [label](const Entry &entry) { return entry.label == label; };
    if (!label || std::any_of(m_entries.cbegin(), m_entries.cend(), isManaged))
        return;
    m_entries.append(Entry{label, {}, restTicks, false});
    label->installEventFilter(this);
    wake();
}

void SLabelManager::setAutoRepeat(bool on)
{
    m_autoRepeat = on;
    for (Entry &entry : m_entries)
        entry.done = entry.done && !on;
    wake();
}

// A label that changes its text, size or visibility paints or shows: the sign to look again.
bool SLabelManager::eventFilter(QObject *watched, QEvent *event)
{
    Q_UNUSED(watched)
    if (event->type() == QEvent::Paint && !m_timer.isActive())
        wake();
    return false;
}

void SLabelManager::wake()
{
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(),
                                   [](const Entry &entry) { return !entry.label; }),
                    m_entries.end());
    for (Entry &entry : m_entries) {
        if (entry.label->text() != entry.text) {
            entry = Entry{entry.label, entry.label->text(), restTicks, false};
            entry.label->setScrollOffset(0);
        }
        if (!entry.done && entry.label->isVisible() && entry.label->overflow() > 0)
            m_timer.start(tickMs, this);
    }
}

/** Moves a label by one tick. @return whether it needs another one */
bool SLabelManager::advance(Entry &entry)
{
    ScrollLabel *label = entry.label;
    if (!label || !label->isVisible() || label->overflow() == 0)
        return false;
    if (label->text() != entry.text) {
        entry = Entry{label, label->text(), restTicks, false};
        label->setScrollOffset(0);
    }
    if (entry.done)
        return false;
    if (entry.rest > 0) {
        --entry.rest;
        return true;
    }
    if (label->scrollOffset() < label->overflow()) {
        label->setScrollOffset(label->scrollOffset() + pixelsPerTick);
        entry.rest = label->scrollOffset() == label->overflow() ? restTicks : 0;
        return true;
    }
    label->setScrollOffset(0);
    entry.rest = restTicks;
    entry.done = !m_autoRepeat;
    return m_autoRepeat;
}

void SLabelManager::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    bool wanted = false;
    for (Entry &entry : m_entries)
        wanted |= advance(entry);
    if (!wanted)
        m_timer.stop();
}
