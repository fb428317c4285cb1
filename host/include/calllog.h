#pragma once

#include "nordahost_global.h"

#include <QObject>
#include <QVariant>

/**
 * The log of everything that the plugin asks of the host.
 *
 * The reference host reports every operation of its services and windows here, commands and
 * queries, in the order of the plugin's calls. The bench's log, the recorder, the vehicle module
 * and the tests all receive the same signal. Host widgets (`norda::SQuilloGauge`, `ScrollLabel`)
 * report nothing: their state is readable as Qt properties.
 *
 * Reached by name with `nordaHostObject("CallLog")`.
 */
class NORDAHOST_EXPORT CallLog : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static CallLog *instance();

    /**
     * Reports one operation; called by the reference host only.
     * Costs next to nothing while the signal has no receivers: the arguments are not converted
     * then.
     */
    template <typename... Args>
    static void report(const char *operation, const Args &...arguments)
    {
        CallLog *log = instance();
        if (log->isWatched())
            emit log->called(QString::fromLatin1(operation), {toVariant(arguments)...});
    }

signals:
    /**
     * @param operation  class and operation, for instance "svaudio::AudioService::doBeep"
     * @param arguments  the arguments in order. Bytes and enumerators arrive as int, maps and lists
     *                   as the type that they are, a listener as its client id.
     * "TouchEvent" (code, x, y) is reported when such an event reaches the application object.
     */
    void called(const QString &operation, const QVariantList &arguments);

private:
    bool isWatched() const;

    static QVariant toVariant(unsigned char byte) { return int(byte); }
    static QVariant toVariant(const QVariant &value) { return value; }
    template <typename T>
    static QVariant toVariant(const T &value)
    {
        if constexpr (std::is_enum_v<T>)
            return int(value);
        else
            return QVariant::fromValue(value);
    }
};
