#include "liveports.h"

#include "live/canobdlink.h"
#include "live/elm327link.h"
#include "live/livesource.h"

#include <QCanBus>
#include <QRegularExpression>
#include <QSerialPortInfo>

#include <limits>

namespace module {

static const QString can = QStringLiteral("can:");
static const QString elm327 = QStringLiteral("elm327:");

bool isLiveName(const QString &name)
{
    return name.startsWith(can) || name.startsWith(elm327);
}

QStringList livePorts()
{
    static const QString socketCan = QStringLiteral("socketcan");
    QStringList names;
    const auto interfaces = QCanBus::instance()->availableDevices(socketCan);
    for (const QCanBusDeviceInfo &interface : interfaces)
        names.append(can + socketCan + QLatin1Char(':') + interface.name());
    const auto ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports)
        names.append(elm327 + port.systemLocation());
    return names;
}

/** A whole number of at least 1; 0 for anything else. */
static int countOf(const QString &text, int most)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= 1 && number <= most ? number : 0;
}

static std::unique_ptr<ObdLink> canLink(const QString &name)
{
    const auto port = canPortOf(name.mid(can.size()));
    return port ? std::make_unique<CanObdLink>(*port) : nullptr;
}

static std::unique_ptr<ObdLink> socketLink(const QString &name)
{
    static const QRegularExpression form(
        QStringLiteral("^elm327:tcp:(\\[([^\\]]+)\\]|([^:\\[]+)):([0-9]+)$"));
    const QRegularExpressionMatch match = form.match(name);
    ElmPort port;
    port.host = match.captured(2) + match.captured(3);
    port.port = quint16(countOf(match.captured(4), std::numeric_limits<quint16>::max()));
    return port.port > 0 ? std::make_unique<Elm327Link>(port) : nullptr;
}

static std::unique_ptr<ObdLink> serialLink(const QString &name)
{
    static constexpr int fastest = 4000000;
    static const QRegularExpression form(QStringLiteral("^elm327:(/[^@]+)(@([0-9]+))?$"));
    const QRegularExpressionMatch match = form.match(name);
    ElmPort port;
    port.device = match.captured(1);
    if (!match.captured(2).isEmpty())
        port.baud = countOf(match.captured(3), fastest);
    const bool isSound = match.hasMatch() && port.baud > 0;
    return isSound ? std::make_unique<Elm327Link>(port) : nullptr;
}

static std::unique_ptr<ObdLink> linkOf(const QString &name)
{
    if (name.startsWith(can))
        return canLink(name);
    return name.startsWith(elm327 + QStringLiteral("tcp:")) ? socketLink(name) : serialLink(name);
}

std::unique_ptr<VehicleSource> openLive(const QString &name, const CarFiles &car,
                                        const LiveSettings &settings, QString *error)
{
    auto link = linkOf(name);
    if (!link) {
        *error = QStringLiteral("%1: expected can:PLUGIN:INTERFACE[?bitrate=N], "
                                "elm327:DEVICE[@BAUD] or elm327:tcp:HOST:PORT")
                     .arg(name);
        return nullptr;
    }
    if (!car.isEmpty() && !link->isListening()) {
        *error = QStringLiteral("%1: expected a CAN bus with --dbc and --map").arg(name);
        return nullptr;
    }
    auto decoder = car.isEmpty() ? nullptr : BusDecoder::open(car, error);
    if (!error->isEmpty())
        return nullptr;
    auto source = std::make_unique<LiveSource>(name, std::move(link), settings, std::move(decoder));
    if (!source->connectToCar(error))
        return nullptr;
    return source;
}

} // namespace module
