#pragma once

#include "car.h"
#include "carfiles.h"
#include "dbc/dbc.h"
#include "dbc/signalmap.h"
#include "live/canframe.h"

namespace ecu {

/** The frames that a car sends by itself, by its DBC file and a map read backwards. */
class Broadcaster
{
public:
    static constexpr int LongestPeriodMs = 100;
    static constexpr int ShortestPeriodMs = 10;

    Broadcaster(const module::SignalMap &map, const module::Dbc &dbc);
    /** @param error  one line that names the file, when it cannot be used */
    static std::optional<Broadcaster> open(const module::CarFiles &files, QString *error);

    /** The frames that are due. What the car does not know is 0 in them. */
    QVector<module::CanFrame> takeDue(const Car &car, qint64 nowMs);
    /** When takeDue() has something again; -1 for never. */
    qint64 nextDueMs() const;

private:
    /** A signal of a message, and what the map makes of it. */
    struct Field
    {
        int signal;
        int entry;
        module::Quantity quantity;
    };
    /** What is sent together: a message as far as its multiplexors allow. */
    struct Broadcast
    {
        int message;
        int periodMs;
        qint64 dueMs;
        QVector<Field> fields;
    };

    void addMessage(int message, const QVector<Field> &fields);
    std::optional<module::CanFrame> frameOf(const Broadcast &broadcast, const Car &car) const;

    QVector<module::MapEntry> m_entries;
    QVector<module::DbcMessage> m_messages;
    QVector<Broadcast> m_broadcasts;
};

} // namespace ecu
