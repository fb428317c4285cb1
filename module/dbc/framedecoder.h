#pragma once

#include "frameplan.h"
#include "signalbinding.h"

#include <limits>
#include <vector>

namespace module {

/** A value for a path of a map. */
struct PathValue
{
    int entry = 0;  ///< of the map
    QVariant value; ///< a number, true or false, or a text
    QString name;   ///< of a number that the map takes as it is and the DBC file has a name for
};

/**
 * Turns a bus's frames into values for a map's paths, as often as the map wants them.
 *
 * A number with a name in the DBC file often stands for no quantity ("not available"). A formula
 * gives no value for it; a map that wants one has a table instead.
 */
class FrameDecoder
{
public:
    FrameDecoder(const SignalMap &map, const Dbc &dbc);
    FrameDecoder(const SignalMap &map, const Dbc &dbc, const SignalBinding &binding);

    /**
     * @param ms  the time of the frame; it runs backwards only after reset()
     * @param id  with DbcMessage::extendedFlag for one of 29 bits
     * @return what the frame tells; valid until the next call
     */
    const QVector<PathValue> &decode(qint64 ms, quint32 id, const quint8 *data, int size);
    /**
     * The paths without a value for several of their periods: no number may stand for them any
     * longer. Each is reported once, with an invalid value, until it comes again. A path's period
     * is its interval in the map, or what passes between its values where that is longer; one that
     * the map takes on a change only has none.
     */
    const QVector<PathValue> &missing(qint64 ms);
    /** The last moment at which nothing more is missing, without further frames; or `never`. */
    qint64 nextExpectedMs() const;
    static constexpr qint64 never = std::numeric_limits<qint64>::max();
    /** Lets the next value of each path through, after a leap in time. */
    void reset();

private:
    /** A row of a map's table; one with a name stands for raw values. */
    struct Row
    {
        bool isRaw = false;
        qint64 raw = 0;
        double number = 0;
        QVariant to;
    };
    /** What leads from a signal of a message to a path. */
    struct Channel
    {
        int entry = 0;
        QVector<DbcValue> values;
        QVector<Row> rows;
    };
    struct Message
    {
        FramePlan plan;
        QVector<Channel> channels; // in order of the plan's signals
        QVector<int> firstChannel; // by the plan's signal, and the end of the last
    };
    /** What a path was last given. */
    struct State
    {
        bool isSet = false;
        qint64 ms = 0;
        QVariant value;
        qint64 firstMs = 0; // of its values, also of those that it was not given
        qint64 lastMs = 0;
        int count = 0;

        void note(qint64 nowMs);
        /** The moment up to which the next value is expected. */
        qint64 expectedMs(int intervalMs) const;
    };

    static QVector<Row> rowsFor(const SignalTransform &transform, const DbcSignal &field);
    static QVariant mapped(const QVector<Row> &rows, const DecodedSignal &decoded);
    void addMessage(const DbcMessage &message, const SignalLink *first, const SignalLink *end);
    void offer(qint64 ms, const Channel &channel, const DecodedSignal &decoded);
    PathValue valueOf(const Channel &channel, const DecodedSignal &decoded) const;

    QVector<MapEntry> m_entries;
    std::vector<State> m_states; // by entry
    std::vector<Message> m_messages;
    IdTable m_byId;
    std::vector<DecodedSignal> m_decoded;
    QVector<PathValue> m_values;
};

} // namespace module
