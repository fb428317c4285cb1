#include "serviceconnection.h"

ServiceConnection::ServiceConnection() : m_address(qEnvironmentVariable("NORDA_MODULE_BUS")) {}

ServiceConnection *ServiceConnection::instance()
{
    static auto *const connection = new ServiceConnection;
    return connection;
}

void ServiceConnection::setAddress(const QString &address)
{
    m_address = address;
}
