#pragma once

#include "canlink.h"
#include "options.h"

namespace ecu {

/** Everything that one run serves. */
class Server : public QObject
{
    Q_OBJECT
public:
    explicit Server(const Options &options, QObject *parent = nullptr);
    ~Server() override;

    /** @param error  one line, when something of it cannot be served */
    bool open(QString *error);

signals:
    /** Where a client finds the car or the adapter. */
    void serving(const QString &place);
    void failed(const QString &error);

private:
    bool openCan(QString *error);
    bool openAdapter(const QString &kind, std::unique_ptr<LinePort> port, QString *error);

    Options m_options;
    std::unique_ptr<LiveCar> m_car;
    std::vector<std::unique_ptr<AdapterLink>> m_adapters;
    std::unique_ptr<CanLink> m_can;
};

} // namespace ecu
