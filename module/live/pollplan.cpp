#include "pollplan.h"

#include "obdpids.h"
#include "obdservices.h"
#include "pagesignals.h"

#include <algorithm>

namespace module {

using namespace obd;

static constexpr int codesMs = 60000;

bool SupportedPids::add(int block, const ObdAnswer &answer)
{
    static constexpr int header = 2;
    static constexpr int maskBytes = 4;
    if (answer.message.size() < header + maskBytes ||
        byteAt(answer.message, 0) != currentDataAnswer || byteAt(answer.message, 1) != block)
        return false;
    for (int i = 0; i < BlockSize; ++i) {
        if ((byteAt(answer.message, header + i / 8) & 0x80 >> i % 8) != 0)
            m_pids[answer.ecu].insert(block + i + 1);
    }
    return true;
}

QVector<quint32> SupportedPids::unitsWith(int pid) const
{
    QVector<quint32> units;
    for (auto it = m_pids.cbegin(); it != m_pids.cend(); ++it) {
        if (it->contains(pid))
            units.append(it.key());
    }
    return units;
}

struct Pace
{
    Quantity quantity;
    int intervalMs;
};

// What moves fast; the others are asked every few seconds.
static constexpr Pace paces[] = {
    {Quantity::EngineSpeed, 100},
    {Quantity::EngineLoad, 200},
    {Quantity::VehicleSpeed, 200},
    {Quantity::Voltage, 2000},
};
static constexpr int slowMs = 5000;

static int intervalOf(Quantity quantity)
{
    const auto found = std::find_if(std::begin(paces), std::end(paces),
                                    [quantity](const Pace &of) { return of.quantity == quantity; });
    return found == std::end(paces) ? slowMs : found->intervalMs;
}

/** A request to all units that answer it, or to the only one. */
static ObdRequest requestOfAll(const QByteArray &message, const QVector<quint32> &units)
{
    return {message, units.size() == 1 ? units.first() : 0, units.size()};
}

/** Each unit commands the lamp for what it watches. */
static void addLamp(const SupportedPids &supported, QVector<PollItem> *plan)
{
    const QVector<quint32> units = supported.unitsWith(lampPid);
    if (!units.isEmpty())
        plan->append({requestOfAll(QByteArray(1, currentData) + char(lampPid), units),
                      Quantity::EngineLamp, intervalOf(Quantity::EngineLamp)});
}

/** The first unit that has it is asked; a link that cannot choose one knows how many answer. */
static void addPid(int pid, Quantity quantity, const SupportedPids &supported,
                   QVector<PollItem> *plan)
{
    const QVector<quint32> units = supported.unitsWith(pid);
    if (units.isEmpty())
        return;
    const QByteArray message = QByteArray(1, currentData) + char(pid);
    plan->append({{message, units.first(), units.size()}, quantity, intervalOf(quantity)});
}

static bool isShown(Quantity quantity)
{
    return quantity != Quantity::Count && quantityInfo(quantity).page != ShownOn::NoPage;
}

/** One gauge shows the best of several temperatures. */
static void keepBestTemperature(QVector<PollItem> *plan)
{
    bool isFound = false;
    for (const Quantity temperature : topLeftTemperatures) {
        const auto first = std::remove_if(plan->begin(), plan->end(), [&](const PollItem &item) {
            return isFound && item.quantity == temperature;
        });
        plan->erase(first, plan->end());
        isFound |= std::any_of(plan->begin(), plan->end(), [temperature](const PollItem &item) {
            return item.quantity == temperature;
        });
    }
}

QVector<PollItem> pollPlan(const SupportedPids &supported)
{
    QVector<PollItem> plan;
    for (int pid = 1; pid <= lastPidBlock + SupportedPids::BlockSize; ++pid) {
        const Pid *known = findPid(quint8(pid));
        if (known && isShown(known->quantity))
            addPid(pid, known->quantity, supported, &plan);
    }
    keepBestTemperature(&plan);
    addLamp(supported, &plan);
    const QVector<quint32> units = supported.units();
    if (!units.isEmpty())
        plan.append({requestOfAll(QByteArray(1, storedCodes), units), Quantity::Count, codesMs});
    return plan;
}

} // namespace module
