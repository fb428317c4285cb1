#pragma once

#include "vehiclesource.h"

#include <QHash>
#include <QMetaMethod>
#include <QObject>

namespace module {

/** Hands emissions to the adaptor, whose signals it finds by name. */
class AdaptorLink
{
public:
    /** @return false, with one warning, for a signal or arguments that the adaptor does not have */
    bool deliver(const Emission &emission);
    /** How many emissions were refused. */
    int refused() const { return m_refused; }

private:
    int m_refused = 0;
};

/** Brings a value to a parameter's type. @return false where that would make another value of it */
bool fitArgument(QVariant *value, int type);

/** The adaptor's signal of this name; invalid for one that it does not have. */
QMetaMethod adaptorSignal(const QByteArray &name);

} // namespace module
