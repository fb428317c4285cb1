#include "cardrive.h"

#include "samplesource.h"
#include "simulator/simulatedcar.h"

#include <utility>

namespace ecu {

using module::Quantity;

CarDrive::~CarDrive() = default;

/** The built-in trip. */
class SimulatedDrive : public CarDrive
{
public:
    void advance(qint64 ms, Car *car) override
    {
        const qint64 round = ms / module::tripMs;
        if (std::exchange(m_round, round) != round)
            m_source.seek(0);
        while (m_source.nextDueMs() >= 0 && m_source.nextDueMs() <= ms % module::tripMs)
            m_source.take();
        car->values = m_source.measured();
        for (int i = 0; i < int(Quantity::Count); ++i) {
            if (car->values.knows(Quantity(i)))
                car->sensors.set(size_t(i));
        }
        car->hasFault = car->values.isOn(Quantity::EngineLamp);
    }

private:
    module::SimulatedCar m_source;
    qint64 m_round = 0;
};

/** A drive of which the values are known. */
class RecordedDrive : public CarDrive
{
public:
    explicit RecordedDrive(module::SampleLog log) : m_log(std::move(log))
    {
        for (const module::Sample &sample : qAsConst(m_log.samples))
            m_sensors.set(size_t(sample.quantity));
    }

    void advance(qint64 ms, Car *car) override
    {
        const qint64 lengthMs = m_log.durationMs + 1; // with its last moment
        const qint64 round = ms / lengthMs;
        if (std::exchange(m_round, round) != round)
            m_index = 0;
        if (m_index == 0)
            car->values.forgetAll();
        const QVector<module::Sample> &samples = m_log.samples;
        for (; m_index < samples.size() && samples[m_index].atMs <= ms % lengthMs; ++m_index)
            car->values.set(samples[m_index].quantity, double(samples[m_index].value));
        car->sensors = m_sensors;
        car->hasFault = car->values.isOn(Quantity::EngineLamp);
    }

private:
    module::SampleLog m_log;
    decltype(Car::sensors) m_sensors;
    int m_index = 0;
    qint64 m_round = 0;
};

std::unique_ptr<CarDrive> CarDrive::open(const QString &source, const module::CarFiles &files,
                                         QString *error)
{
    if (source == QLatin1String("simulator"))
        return std::make_unique<SimulatedDrive>();
    const bool isExplained = module::isCandumpLog(source);
    auto log = module::readSamples(source, isExplained ? files : module::CarFiles(), error);
    return log ? std::make_unique<RecordedDrive>(*std::move(log)) : nullptr;
}

} // namespace ecu
