#pragma once

#include "vehiclesource.h"

#include <QHash>
#include <QMetaMethod>
#include <QObject>

namespace module {

/** A signal of the module, and the host's object that emits it. */
struct ModuleSignal
{
    QObject *emitter = nullptr;
    QMetaMethod method;
};

/** The host's objects that emit the module's signals: the adaptor and the vehicle service. */
QList<QObject *> moduleEmitters();
/** All signals of the adaptor and of the vehicle service. */
QList<ModuleSignal> moduleSignals();
/** The signal of this name; without an emitter when there is none. */
ModuleSignal moduleSignal(const QByteArray &name);

/** The name of a command, as in the call log, to the adaptor; empty for any other operation. */
QString adaptorCommand(const QString &operation);

/** Emits the signals of the host's objects, which it finds by name. */
class AdaptorLink
{
public:
    /**
     * @param source  emits the signal itself when its module is in another process; may be null
     * @return false, with one warning, for a signal or arguments that do not exist
     */
    bool deliver(const Emission &emission, VehicleSource *source = nullptr, qint64 nowMs = 0);
    /** How many emissions were refused. */
    int refused() const { return m_refused; }

private:
    int m_refused = 0;
};

} // namespace module
