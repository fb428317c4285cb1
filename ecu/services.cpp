#include "services.h"

#include "obdpids.h"
#include "obdservices.h"

#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>

namespace ecu {

namespace obd = module::obd;

using module::Pid;
using module::Quantity;

static constexpr quint8 standardPid = 0x1C;
static constexpr char europeanObd = 6; // which standard the car complies with
static constexpr int pidsInMask = 32;
static constexpr int mostPids = 6; // of a request
static constexpr int engine = 0;

// ---- Current data -------------------------------------------------------------------------------

static bool isMask(quint8 id)
{
    return id % pidsInMask == 0;
}

static bool hasSensor(const Car &car, int unit, quint8 id)
{
    const Pid *pid = module::findPid(id);
    return pid && pid->quantity != Quantity::Count && car.sensors[size_t(pid->quantity)] &&
           (unit == engine || pid->quantity == Quantity::VehicleSpeed);
}

static bool supportsPid(const Car &car, int unit, quint8 id)
{
    if (car.missingPids.contains(id))
        return false;
    if (id == module::lampPid || id == standardPid)
        return true;
    if (!isMask(id))
        return hasSensor(car, unit, id);
    for (int higher = id + 1; higher < 256; ++higher) { // a mask leads to what is above it
        if (!isMask(quint8(higher)) && supportsPid(car, unit, quint8(higher)))
            return true;
    }
    return false;
}

static QByteArray bigEndian(quint32 word)
{
    QByteArray bytes(sizeof word, '\0');
    qToBigEndian(word, bytes.data());
    return bytes;
}

/** Which of the 32 parameters above this one are known. */
static QByteArray maskFrom(const Car &car, int unit, quint8 id)
{
    quint32 mask = 0;
    for (int i = 1; i <= pidsInMask && id + i < 256; ++i) {
        if (supportsPid(car, unit, quint8(id + i)))
            mask |= 1U << (pidsInMask - i);
    }
    return bigEndian(mask);
}

static QStringList storedCodes(const Car &car, int unit)
{
    return unit == engine ? car.troubleCodes() : QStringList();
}

static QByteArray status(const Car &car, int unit)
{
    static constexpr char lamp = char(0x80);
    static constexpr char allMonitorsReady = 0x07;
    const int codes = storedCodes(car, unit).size();
    const char first = codes > 0 ? char(lamp | codes) : '\0';
    return QByteArray(1, first) + allMonitorsReady + QByteArray(2, '\0');
}

/** Empty for a parameter that is not known, or not at this moment. */
static QByteArray pidBytes(const Car &car, int unit, quint8 id)
{
    if (!supportsPid(car, unit, id))
        return {};
    if (isMask(id))
        return maskFrom(car, unit, id);
    if (id == module::lampPid)
        return status(car, unit);
    if (id == standardPid)
        return QByteArray(1, europeanObd);
    const Pid &pid = *module::findPid(id);
    return car.values.knows(pid.quantity) ? module::pidData(pid, car.values.value(pid.quantity))
                                          : QByteArray();
}

static QByteArray currentData(const Car &car, int unit, const QByteArray &ids)
{
    if (ids.size() > mostPids)
        return {};
    QByteArray data;
    for (const char id : ids) {
        const QByteArray bytes = pidBytes(car, unit, quint8(id));
        if (!bytes.isEmpty())
            data += id + bytes;
    }
    return data;
}

// ---- Trouble codes ------------------------------------------------------------------------------

QByteArray troubleCodeBytes(const QString &code)
{
    static const QRegularExpression form(QStringLiteral("^([PCBU])([0-3])([0-9A-F]{3})$"));
    const QRegularExpressionMatch match = form.match(code);
    if (!match.hasMatch())
        return {};
    const int system = QStringLiteral("PCBU").indexOf(match.captured(1));
    const int number =
        system << 14 | match.captured(2).toInt() << 12 | match.captured(3).toInt(nullptr, 16);
    return bigEndian(quint32(number)).right(2);
}

static QByteArray troubleCodes(const Car &car, int unit, const QByteArray &parameters)
{
    if (!parameters.isEmpty())
        return {};
    const QStringList codes = storedCodes(car, unit);
    QByteArray data(1, char(codes.size()));
    for (const QString &code : codes)
        data += troubleCodeBytes(code);
    return data;
}

// ---- Vehicle information ------------------------------------------------------------------------

static QByteArray vehicleInformation(const Car &car, int unit, const QByteArray &parameters)
{
    static constexpr char known = 0;
    static constexpr char identification = 2;
    static constexpr quint32 knownMask = 1U << (pidsInMask - identification);
    if (unit != engine || parameters.size() != 1)
        return {};
    if (parameters[0] == known)
        return parameters + bigEndian(knownMask);
    return parameters[0] == identification ? parameters + '\1' + car.identification : QByteArray();
}

// ---- All services -------------------------------------------------------------------------------

struct Service
{
    quint8 id;
    QByteArray (*data)(const Car &car, int unit, const QByteArray &parameters);
};

static constexpr Service services[] = {
    {obd::currentData, currentData},
    {obd::storedCodes, troubleCodes},
    {obd::vehicleInformation, vehicleInformation},
};

static QByteArray refusal(char service, char reason, Addressing addressing)
{
    return addressing == Addressing::Physical ? QByteArray(1, obd::refusal) + service + reason
                                              : QByteArray();
}

QByteArray answer(const Car &car, int unit, const QByteArray &request, Addressing addressing)
{
    static constexpr char serviceNotSupported = 0x11;
    static constexpr char parameterNotSupported = 0x12;
    if (request.isEmpty())
        return {};
    const char id = request[0];
    const auto *const service =
        std::find_if(std::begin(services), std::end(services),
                     [id](const Service &row) { return row.id == quint8(id); });
    if (service == std::end(services))
        return refusal(id, serviceNotSupported, addressing);
    const QByteArray data = service->data(car, unit, request.mid(1));
    return data.isEmpty() ? refusal(id, parameterNotSupported, addressing)
                          : QByteArray(1, char(id | obd::answerBit)) + data;
}

} // namespace ecu
