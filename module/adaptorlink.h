#pragma once

#include "vehiclesource.h"

#include <QHash>
#include <QMetaMethod>
#include <QObject>

namespace module {

/** A signal by which the module is heard, and the host's object that emits it. */
struct ModuleSignal
{
    QObject *emitter = nullptr;
    QMetaMethod method;
};

/** All signals of the adaptor, and the notices of the vehicle service. */
QList<ModuleSignal> moduleSignals();
/** The signal of this name; without an emitter when there is none. */
ModuleSignal moduleSignal(const QByteArray &name);

/** Hands emissions to the host's objects, whose signals it finds by name. */
class AdaptorLink
{
public:
    /** @return false, with one warning, for a signal or arguments that do not exist */
    bool deliver(const Emission &emission);
    /** How many emissions were refused. */
    int refused() const { return m_refused; }

private:
    int m_refused = 0;
};

/** Brings a value to a parameter's type. @return false where that would make another value of it */
bool fitArgument(QVariant *value, int type);

} // namespace module
