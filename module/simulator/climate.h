#pragma once

#include "trim.h"

#include <QList>
#include <QMap>

namespace module {

/**
 * The climate control of the simulated car. It reads the key bytes of the module's protocol, keeps
 * the state of the front and the rear zone, and reports it as the status list: that carries what
 * no quantity does, such as four vent modes and a seat cooled to level 0.
 */
class Climate
{
public:
    static constexpr int FirstByte = 4;
    static constexpr int LastByte = 10;

    explicit Climate(Trim trim = Trim::Full);

    /** The names of the keys of a touch; empty for none. */
    static QString keyName(const QMap<int, int> &bytes);
    /** The key bytes of a touch. */
    void press(const QMap<int, int> &bytes);
    /** A temperature set by dragging, 0 to 255 over the bar. */
    void setTemperature(int raw);
    /** A fan speed of the zone on view set by dragging, 0 to 255. */
    void setFan(int raw);
    /** The same for the rear zone. */
    void setRearFan(int raw);
    /** Advances the cabin by a tenth of a second. @return whether the report changed */
    bool step(double outsideCelsius, bool engineRunning);
    /** The status list, 23 integers. */
    QList<int> report() const;
    /** The same, and from now on `step()` returns whether it differs from this one. */
    QList<int> takeReport();
    /** Which controls the rear zone has, by group. */
    QMap<int, bool> rearFeatures(int group) const;

private:
    struct Seat
    {
        int heat = 0;        // 0 to 3
        int cool = 0;        // 0 to 3
        bool cooled = false; // which of the two was set last
    };
    struct Zone
    {
        bool on = true;
        bool ac = false;
        bool maxAc = false;
        int fan = 2;               // 0 to 7
        int vent = 0;              // index in the order of the vent key
        int left = 70, right = 70; // degrees Fahrenheit
        Seat seats[2];
    };

    struct Key;
    static const Key keys[];

    void stepTemperature(int *degrees, int by);
    void stepFan(Zone *zone, int by);
    static void heatSeat(Seat *seat, int by);
    static void coolSeat(Seat *seat, int by);
    void automate();

    Trim m_trim;
    Zone m_front;
    Zone m_rear;
    bool m_automatic = false;
    bool m_dual = false;
    bool m_fresh = true;
    bool m_frontDefroster = false;
    bool m_rearDefroster = false;
    bool m_wheel = false;
    bool m_rearOnView = false;
    double m_cabin = 66; // degrees Fahrenheit
    QList<int> m_reported;
};

} // namespace module
