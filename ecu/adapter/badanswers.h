#pragma once

#include "chance.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

namespace ecu {

/** What an adapter answers when something is wrong, with it or with the bus. */
class BadAnswers
{
public:
    enum class Kind : quint8 {
        None,
        Instead,   ///< of the answer
        Before,    ///< a line before the answer
        InLine,    ///< at the end of each line
        AfterLine, ///< after the first line, which is the last
        HalfLine,
        Echo, ///< of the request, although it is off
        Version
    };
    struct Row
    {
        const char *text;
        Kind kind;
    };

    /**
     * Adds one such as "NO DATA", "CAN ERROR:0.1" or "half line".
     * @param error  what was expected
     */
    bool add(const QString &text, QString *error);
    void setSeed(quint32 seed) { m_chance = Chance(seed); }
    static QStringList names();

    /** Whether it claims a version that it is not. */
    bool claimsTooMuch() const;
    /** What goes wrong with the next answer. */
    Row next();

private:
    struct Wanted
    {
        Row row;
        double share;
    };
    QVector<Wanted> m_wanted;
    Chance m_chance{1};
};

} // namespace ecu
