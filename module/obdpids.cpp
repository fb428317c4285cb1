#include "obdpids.h"

#include "obdservices.h"

#include <algorithm>
#include <iterator>

namespace module {

static constexpr Quantity unused = Quantity::Count;

// clang-format off
static constexpr Pid pids[] = {
    {0x04, 1, Quantity::EngineLoad,              100.0 / 255,     0},
    {0x05, 1, Quantity::CoolantTemperature,      1,             -40},
    {0x0B, 1, Quantity::ManifoldPressure,        1,               0},
    {0x0C, 2, Quantity::EngineSpeed,             0.25,            0},
    {0x0D, 1, Quantity::VehicleSpeed,            1,               0},
    {0x0F, 1, Quantity::IntakeTemperature,       1,             -40},
    {0x10, 2, unused,                            0.01,            0},
    {0x11, 1, Quantity::Throttle,                100.0 / 255,     0},
    {0x1F, 2, unused,                            1,               0},
    {0x21, 2, unused,                            1,               0},
    {0x2F, 1, Quantity::FuelLevel,               100.0 / 255,     0},
    {0x31, 2, unused,                            1,               0},
    {0x33, 1, Quantity::BarometricPressure,      1,               0},
    {0x3C, 2, Quantity::CatalystTemperature,     0.1,           -40},
    {0x42, 2, Quantity::Voltage,                 0.001,           0},
    {0x43, 2, unused,                            100.0 / 255,     0},
    {0x44, 2, unused,                            2.0 / 65536,     0},
    {0x46, 1, Quantity::AmbientTemperature,      1,             -40},
    {0x49, 1, unused,                            100.0 / 255,     0},
    {0x5C, 1, Quantity::OilTemperature,          1,             -40},
    {0x5E, 2, Quantity::FuelRate,                0.05,            0},
    {0x62, 1, unused,                            1,            -125},
    {0x63, 2, unused,                            1,               0},
};
// clang-format on

const Pid *findPid(quint8 id)
{
    const auto found = std::find_if(std::begin(pids), std::end(pids),
                                    [id](const Pid &pid) { return pid.id == id; });
    return found == std::end(pids) ? nullptr : found;
}

double pidValue(const Pid &pid, const quint8 *data)
{
    const int raw = pid.bytes == 1 ? data[0] : data[0] * 256 + data[1];
    return raw * pid.factor + pid.offset;
}

std::optional<PidReading> pidReading(const QByteArray &answer)
{
    static constexpr int header = 2;
    static constexpr quint8 lampBit = 0x80;
    const auto *bytes = reinterpret_cast<const quint8 *>(answer.constData());
    if (answer.size() <= header || bytes[0] != obd::currentDataAnswer)
        return std::nullopt;
    if (bytes[1] == lampPid)
        return PidReading{Quantity::EngineLamp, double((bytes[header] & lampBit) != 0)};
    const Pid *pid = findPid(bytes[1]);
    if (!pid || pid->quantity == Quantity::Count || answer.size() < header + pid->bytes)
        return std::nullopt;
    return PidReading{pid->quantity, pidValue(*pid, bytes + header)};
}

QByteArray pidData(const Pid &pid, double value)
{
    const double most = pid.bytes == 1 ? 255 : 65535;
    const int raw = qRound(qBound(0.0, (value - pid.offset) / pid.factor, most));
    const QByteArray both = QByteArray(1, char(raw >> 8)) + char(raw & 255);
    return both.right(pid.bytes);
}

} // namespace module
