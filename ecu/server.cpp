#include "server.h"

#include "ports/ptyport.h"
#include "ports/tcpport.h"

namespace ecu {

Server::Server(const Options &options, QObject *parent) : QObject(parent), m_options(options) {}

Server::~Server() = default;

bool Server::open(QString *error)
{
    auto drive = CarDrive::open(m_options.source, m_options.files, error);
    if (!drive)
        return false;
    m_car = std::make_unique<LiveCar>(std::move(drive), m_options.car, m_options.speed);
    return (m_options.can.isEmpty() || openCan(error)) &&
           (!m_options.hasTerminal ||
            openAdapter(QStringLiteral("pty"), std::make_unique<PtyPort>(m_options.link), error)) &&
           (m_options.tcpPort < 0 ||
            openAdapter(QStringLiteral("tcp"), std::make_unique<TcpPort>(m_options.tcpPort),
                        error));
}

bool Server::openCan(QString *error)
{
    std::optional<Broadcaster> broadcaster;
    if (!m_options.files.isEmpty())
        broadcaster = Broadcaster::open(m_options.files, error);
    if (!error->isEmpty())
        return false;
    auto port = std::make_unique<CanPort>(m_options.can);
    CanPort *opened = port.get();
    connect(opened, &CanPort::failed, this, &Server::failed);
    connect(opened, &CanPort::connected, this,
            [this, opened] { emit serving(QStringLiteral("can %1").arg(opened->name())); });
    const Outage silence =
        m_options.faults.pulled.isPlanned() ? m_options.faults.pulled : m_options.faults.silence;
    m_can = std::make_unique<CanLink>(m_car.get(), m_options.bus, std::move(broadcaster), silence,
                                      std::move(port));
    return opened->open(error);
}

bool Server::openAdapter(const QString &kind, std::unique_ptr<LinePort> port, QString *error)
{
    m_adapters.push_back(std::make_unique<AdapterLink>(m_car.get(), m_options.bus, m_options.faults,
                                                       std::move(port)));
    AdapterLink *link = m_adapters.back().get();
    const auto report = [this, link, kind] {
        emit serving(QStringLiteral("%1 %2").arg(kind, link->name()));
    };
    connect(link, &AdapterLink::reopened, this, report);
    connect(link, &AdapterLink::failed, this, &Server::failed);
    if (!link->open(error))
        return false;
    report();
    return true;
}

} // namespace ecu
