#pragma once

#include "interface.h"

#include <QVariantList>

namespace module {

/** The signals and commands of the adaptor and of the vehicle service, as the bus carries them. */
const bus::Interface &moduleInterface();

/**
 * The command to the module that a call of the plugin is; empty for a query, which is answered in
 * this process, and for any other call.
 * @param arguments  as in the call log; of the command's types when it is one
 */
QString commandOfCall(const QString &operation, QVariantList *arguments);

} // namespace module
