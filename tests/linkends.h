#pragma once

#include "client.h"
#include "interface.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "privatebus.h"
#include "testmain.h"
#include "wirevalues.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

using bus::Client;
using bus::Record;

inline const bus::Interface &interface()
{
    static const bus::Interface all(
        {&norda::VtqAdaptor::staticMetaObject, &norda::VtqService::staticMetaObject});
    return all;
}

/** A unit's end of the link, which notes what arrives. */
class Unit : public Client
{
public:
    explicit Unit(const PrivateBus &bus) : Client(interface())
    {
        connect(this, &Client::received, this,
                [this](const QString &name, const QVariantList &arguments) {
                    all.append({name, arguments});
                });
        connect(this, &Client::featuresReceived, this,
                [this](const QString &query, const QVariantList &arguments) {
                    all.append({query, arguments});
                });
        open(bus.address());
    }

    QVector<QVariantList> of(const QString &name) const
    {
        QVector<QVariantList> found;
        for (const Record &record : all) {
            if (record.name == name)
                found.append(record.arguments);
        }
        return found;
    }

    QVector<Record> all;
};

/** A module that somebody else has written: it sends what it likes and answers when it likes. */
class ForeignModule : public QDBusVirtualObject
{
public:
    explicit ForeignModule(const PrivateBus &bus, bool ownsTheName = true)
    {
        bus::registerWireTypes();
        const QString name = QStringLiteral("foreign-%1").arg(quintptr(this));
        connection = QDBusConnection::connectToBus(bus.address(), name);
        connection.registerVirtualObject(QLatin1String(bus::objectPath), this);
        if (ownsTheName)
            connection.registerService(QLatin1String(bus::serviceName));
    }
    ~ForeignModule() override { QDBusConnection::disconnectFromBus(connection.name()); }

    void send(const QString &name, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(QLatin1String(bus::objectPath),
                                                          QLatin1String(bus::interfaceName), name);
        message.setArguments(arguments);
        connection.send(message);
    }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        calls.append(message.member());
        if (!isAnswering)
            return true;
        if (!refusal.isEmpty()) {
            connection.send(message.createErrorReply(QDBusError::AccessDenied, refusal));
            return true;
        }
        QVariantList answer;
        if (message.member() == QLatin1String("Snapshot"))
            answer = {QVariant::fromValue(snapshot)};
        else if (message.member() == QLatin1String("MissingValues"))
            answer = {uint(missingAfterMs), QVariant::fromValue(missing)};
        connection.send(message.createReply(answer));
        return true;
    }

    QDBusConnection connection = QDBusConnection(QString());
    QStringList calls;
    QVector<Record> snapshot;
    QVector<Record> missing = {{QStringLiteral("batteryVoltage"), {QStringLiteral("--")}}};
    int missingAfterMs = 300;
    bool isAnswering = true;
    QString refusal; // instead of answers
};

#define TRY_CONNECTED(unit) QTRY_COMPARE((unit).state(), Client::Connected)
#define TRY_WAITING(unit) QTRY_COMPARE((unit).state(), Client::Waiting)
