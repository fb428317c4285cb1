// Characters of any content for the adapter, and frames for the car's control units, at any time.
// What they send must be what such a line and such a bus carry, and both must come to rest.

#include "adapter/elmadapter.h"
#include "fuzzinput.h"

using ecu::CarBus;
using ecu::ElmAdapter;

static ecu::Car car(FuzzInput *input)
{
    ecu::Car car;
    for (int i = 0; i < int(module::Quantity::Count); ++i) {
        if (input->byte() & 1)
            car.sensors.set(size_t(i));
        if (input->byte() & 1)
            car.values.set(module::Quantity(i), input->byte() * 100.0 - 5000);
    }
    car.hasFault = input->byte() & 1;
    return car;
}

static CarBus::Settings settings(FuzzInput *input)
{
    CarBus::Settings settings;
    settings.isExtended = input->byte() & 1;
    settings.units = 1 + input->byte() % CarBus::MostUnits;
    settings.delayMs = input->byte();
    settings.lost = input->byte() / 512.0;
    return settings;
}

static ecu::BadAnswers badAnswers(FuzzInput *input)
{
    ecu::BadAnswers answers;
    const QStringList names = ecu::BadAnswers::names();
    QString error;
    for (int count = input->byte() & 3; count > 0; --count)
        answers.add(names[input->byte() % names.size()] + QStringLiteral(":0.5"), &error);
    return answers;
}

static void check(CarBus *bus)
{
    for (const module::CanFrame &frame : bus->takeFrames()) {
        if (frame.data.isEmpty() || frame.data.size() > 8 || frame.isExtended != bus->isExtended())
            std::abort();
    }
}

template <typename Part>
static void rest(Part *part, qint64 nowMs)
{
    for (int i = 0; part->nextDueMs() >= 0; ++i) {
        if (i > 10000)
            std::abort();
        nowMs = qMax(nowMs, part->nextDueMs());
        part->advance(nowMs);
    }
}

/** Whatever it was told, after a reset it answers as at first. */
static void checkAtRest(ElmAdapter *adapter, qint64 nowMs)
{
    rest(adapter, nowMs);
    adapter->receive("\r", nowMs); // ends a line, or repeats one
    rest(adapter, nowMs);
    adapter->receive("ATZ\rATE0\r", nowMs);
    adapter->takeOutput();
    adapter->receive("ATRV\r", nowMs);
    const QByteArray answer = adapter->takeOutput();
    if (!answer.endsWith("V\r\r>") || answer.size() > 12)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const ecu::Car served = car(&input);
    CarBus bus(&served, settings(&input));
    CarBus ofAdapter(&served, settings(&input));
    ElmAdapter adapter(&served, &ofAdapter, badAnswers(&input));
    qint64 nowMs = 0;
    while (!input.atEnd()) {
        const uint8_t step = input.byte();
        nowMs += step & 0x3F;
        if (step & 0x80)
            bus.receive({CarBus::functionalId(bus.isExtended()) - (step & 0x40 ? 0 : input.byte()),
                         bus.isExtended(), input.bytes()},
                        nowMs);
        else
            adapter.receive(input.bytes() + '\r', nowMs);
        bus.advance(nowMs);
        adapter.advance(nowMs);
        check(&bus);
    }
    rest(&bus, nowMs);
    checkAtRest(&adapter, nowMs);
    return 0;
}
