#pragma once

#include "body.h"
#include "climate.h"
#include "controls.h"
#include "emissionqueue.h"
#include "manoeuvre.h"
#include "menu.h"
#include "powertrain.h"
#include "prompts.h"
#include "tires.h"

namespace module {

/**
 * A car that is simulated: it drives the built-in trip and answers touches. It runs on drive time
 * alone with a fixed seed, so that it says the same at any speed.
 */
class SimulatedCar : public VehicleSource
{
public:
    explicit SimulatedCar(Trim trim = Trim::Full);

    QString title() const override { return QStringLiteral("Simulated car"); }
    qint64 durationMs() const override { return tripMs; }
    qint64 nextDueMs() const override;
    Emission take() override;
    void seek(qint64 ms) override;
    bool command(qint64 nowMs, const QString &operation, const QVariantList &arguments) override;
    Controls *controls() override { return &m_controls; }
    RearView rearView() const override { return m_manoeuvre.rearView(); }
    QStringList findings() const override;
    QJsonObject statistics() const override;

private:
    /** What the top left gauge shows; a touch goes on to the next. */
    enum TopLeft { Transmission, Oil, Ambient, TopLeftCount };

    void equip(Trim trim);
    void restart();
    void obeyHands(DriverWish *wish);
    void runUntilEmission();
    void step();
    void report();
    void reportCorner(const char *place, double value, const char *unit, int fullScale);
    void reportProperties();
    void reportGear();
    void sayClock(qint64 atMs);
    void sayTitles(qint64 atMs);
    void sayPresets(qint64 atMs);
    void sayClimate(qint64 atMs);
    bool answerClimate(qint64 atMs, const QString &command, const QVariantList &arguments);
    bool answer(qint64 atMs, const QString &command, const QVariantList &arguments);

    Trim m_trim;
    Controls m_controls;
    Powertrain m_powertrain;
    Climate m_climate;
    Tires m_tires;
    Body m_body;
    Manoeuvre m_manoeuvre;
    Prompts m_prompts;
    Menu m_menu;
    EmissionQueue m_out;
    qint64 m_nowMs = 0;
    TopLeft m_topLeft = Transmission;
    bool m_arcs = false;
    bool m_tellsTime = false;
    uchar m_preset = 0;
    double m_highestRpm = 0;
};

} // namespace module
