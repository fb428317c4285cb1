#pragma once

#include "body.h"
#include "carstate.h"
#include "climate.h"
#include "controls.h"
#include "emissionqueue.h"
#include "gaugecluster.h"
#include "manoeuvre.h"
#include "menu.h"
#include "powertrain.h"
#include "prompts.h"
#include "tires.h"

namespace module {

struct PacedSignal;

/**
 * A simulated car: it drives the built-in trip and answers touches. Its parts hand over quantities;
 * what is none they report themselves. It depends on drive time alone
 * and has a fixed seed, so that it emits the same signals at any speed.
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
    QVector<Sample> samplesOf(qint64 afterMs, qint64 untilMs) const override;
    bool command(qint64 nowMs, const QString &operation, const QVariantList &arguments) override;
    Controls *controls() override { return &m_controls; }
    RearView rearView() const override { return m_manoeuvre.rearView(); }
    QStringList findings() const override;
    QJsonObject statistics() const override;

    /** What its sensors measure, as of its next emission. */
    const CarState &measured() const { return m_car; }

private:
    struct Answer;
    static const Answer answers[];

    void equip(Trim trim);
    void restart();
    void runUntilEmission();
    void step();
    void applyOverrides(DriverWish *wish);
    void applyTrim(Trim trim);

    void handOver();
    void report();
    void report(const QVector<PacedSignal> &rows);
    void reportProperties();
    void reportClock(qint64 atMs);
    void reportClimate(qint64 atMs);

    Trim m_trim;
    Controls m_controls;
    Powertrain m_powertrain;
    GaugeCluster m_gauges;
    Climate m_climate;
    Tires m_tires;
    Body m_body;
    Manoeuvre m_manoeuvre;
    Prompts m_prompts;
    Menu m_menu;
    CarState m_car;
    EmissionQueue m_out;
    qint64 m_nowMs = 0;
    bool m_reportsClock = false;
    double m_highestRpm = 0;
};

} // namespace module
