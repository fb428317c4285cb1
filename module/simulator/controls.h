#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace module {

/**
 * What somebody at the simulator holds in hand: doors, tires, the engine, what stands in the way.
 * Whatever nobody holds goes as the built-in trip has it.
 */
class Controls
{
public:
    enum Control {
        Engine,
        Speed,
        EngineLamp,
        Hood,
        Trunk,
        DoorFrontLeft,
        DoorFrontRight,
        DoorRearLeft,
        DoorRearRight,
        TireFrontLeft,
        TireFrontRight,
        TireRearRight,
        TireRearLeft,
        Obstacle, ///< the first of eight, in the order of the zone codes
        BlindLeft = Obstacle + 8,
        BlindRight,
        ClimateTrim,
        Prompt,
        Count
    };
    static constexpr int Automatic = -1;

    struct Row
    {
        const char *name;  ///< in scenarios
        const char *group; ///< what it belongs to, for a person
        const char *title;
        const char *words; ///< what the values from 0 on are called, by spaces; null for numbers
        int lowest;
        int highest;
        const char *unit;
    };
    static const Row &row(Control control);
    static QStringList words(Control control);

    Controls();

    /** @return `Automatic` for what nobody holds */
    int value(Control control) const { return m_values[control]; }
    bool isHeld(Control control) const { return m_values[control] != Automatic; }
    void set(Control control, int value) { m_values[control] = value; }
    /** A value that counts once. */
    int take(Control control);

    /**
     * Reads a control and its value, as in "door-trunk" and "open"; "auto" lets go of it.
     * @param error  one line that says what was expected
     */
    static bool read(const QString &name, const QString &text, Control *control, int *value,
                     QString *error);
    /** A value as read() takes it. */
    static QString textOf(Control control, int value);

private:
    QVector<int> m_values;
};

} // namespace module
