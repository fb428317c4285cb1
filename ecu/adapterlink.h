#pragma once

#include "adapter/elmadapter.h"
#include "livecar.h"
#include "outage.h"
#include "ports/lineport.h"

#include <QTimer>

namespace ecu {

/** An adapter at a serial line. */
class AdapterLink : public QObject
{
    Q_OBJECT
public:
    struct Faults
    {
        BadAnswers answers;
        Outage silence; ///< the adapter is there and does not answer
        Outage pulled;  ///< it is not there
    };

    AdapterLink(LiveCar *car, const CarBus::Settings &bus, const Faults &faults,
                std::unique_ptr<LinePort> port, QObject *parent = nullptr);
    ~AdapterLink() override;

    bool open(QString *error);
    QString name() const { return m_port->name(); }

signals:
    /** It was plugged in again. */
    void reopened();
    void failed(const QString &error);

private:
    void receive(const QByteArray &characters);
    void advance();
    void flush(qint64 nowMs);
    void reopen();

    LiveCar *m_car;
    CarBus m_bus;
    ElmAdapter m_adapter;
    Faults m_faults;
    std::unique_ptr<LinePort> m_port;
    QTimer m_timer;
};

} // namespace ecu
