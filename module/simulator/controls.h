#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <limits>

namespace module {

/**
 * What can be overridden in the simulated car: the engine and its temperatures, doors, tires,
 * obstacles. Everything else follows the built-in trip.
 */
class Controls
{
public:
    enum Control {
        Engine,
        Speed,
        EngineSpeed,
        Gear, ///< see `GearValue`
        EngineLamp,
        CoolantTemperature,
        OilTemperature,
        TransmissionTemperature,
        IntakeTemperature,
        OutsideTemperature,
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
    enum GearValue { Park, Reverse, FirstGear };
    /** The value of a released control, which is outside every range. */
    static constexpr int Automatic = std::numeric_limits<int>::min();

    struct Row
    {
        const char *name;  ///< in scenarios
        const char *group; ///< the heading of its group, for a person
        const char *title;
        const char *words; ///< names of the values from 0 on, separated by spaces; null for numbers
        int lowest;
        int highest;
        const char *unit; ///< in UTF-8
    };
    static const Row &row(Control control);
    static QStringList words(Control control);

    Controls();

    /** @return `Automatic` for one that is not overridden */
    int value(Control control) const { return m_values[control]; }
    double valueOr(Control control, double other) const
    {
        return isOverridden(control) ? m_values[control] : other;
    }
    bool isOverridden(Control control) const { return m_values[control] != Automatic; }
    void set(Control control, int value) { m_values[control] = value; }
    /** Returns the value and releases the control: for values with a single effect. */
    int take(Control control);

    /**
     * Reads a control and its value, as in "door-trunk" and "open"; "auto" releases it.
     * @param error  one line with what was expected
     */
    static bool read(const QString &name, const QString &text, Control *control, int *value,
                     QString *error);
    /** A value as read() takes it. */
    static QString textOf(Control control, int value);

private:
    QVector<int> m_values;
};

} // namespace module
