#pragma once

#include <QObject>

namespace ecu {

/** The serial line of an adapter. */
class LinePort : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /** @param error  one line that names the port, when it cannot be opened */
    virtual bool open(QString *error) = 0;
    /** As if it was unplugged; it can be opened again. */
    virtual void close() = 0;
    /** Where a client finds it; it may be another one each time it was opened. */
    virtual QString name() const = 0;
    virtual void write(const QByteArray &characters) = 0;

signals:
    void received(const QByteArray &characters);
};

} // namespace ecu
