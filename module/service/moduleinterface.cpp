#include "service/moduleinterface.h"

#include "metacall.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"

namespace module {

const bus::Interface &moduleInterface()
{
    static const bus::Interface all(
        {&norda::VtqAdaptor::staticMetaObject, &norda::VtqService::staticMetaObject});
    return all;
}

QString commandOfCall(const QString &operation, QVariantList *arguments)
{
    static const QString scope = QStringLiteral("norda::");
    if (!operation.startsWith(scope))
        return {};
    const QString name = operation.mid(operation.lastIndexOf(QLatin1Char(':')) + 1);
    const bus::Interface::Member command = moduleInterface().command(name);
    const bool isSent = command.isValid() && command.resultSignature.isEmpty() &&
                        bus::convertArguments(command.method, arguments);
    return isSent ? name : QString();
}

} // namespace module
