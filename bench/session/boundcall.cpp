#include "session/boundcall.h"

#include "adaptorlink.h"
#include "metacall.h"
#include "nordahost.h"
#include "values.h"

void BoundCall::invoke() const
{
    bus::invokeMethod(object, method, arguments);
}

static std::optional<BoundCall> bind(QObject *object, const QMetaMethod &method,
                                     QVariantList arguments, QString *error)
{
    if (!module::bindArguments(method, &arguments, error))
        return {};
    return BoundCall{object, method, arguments};
}

std::optional<BoundCall> bindSignal(const QVariantList &words, QString *error)
{
    const module::ModuleSignal signal = module::moduleSignal(words.value(0).toByteArray());
    if (signal.method.isValid())
        return bind(signal.emitter, signal.method, words.mid(1), error);
    *error =
        QStringLiteral("expected a signal of the module, got '%1'").arg(words.value(0).toString());
    return {};
}

/** Those of every QObject, deleteLater() above all, are no calls of a head unit. */
static QMetaMethod methodNamed(const QObject *object, const QByteArray &name, int arguments)
{
    const QMetaObject *meta = object->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.name() == name && method.parameterCount() == arguments &&
            method.methodType() != QMetaMethod::Signal)
            return method;
    }
    return {};
}

std::optional<BoundCall> bindMethod(QObject *object, const QVariantList &words, QString *error)
{
    const QByteArray name = words.value(1).toByteArray();
    const QVariantList arguments = words.mid(2);
    const QMetaMethod method = methodNamed(object, name, arguments.size());
    if (method.isValid())
        return bind(object, method, arguments, error);
    *error = QStringLiteral("expected a method of %1 with %2 arguments, got '%3'")
                 .arg(words.value(0).toString(), QString::number(arguments.size()),
                      QString::fromLatin1(name));
    return {};
}

std::optional<BoundCall> bindHostMethod(const QVariantList &words, QString *error)
{
    QObject *object = nordaHostObject(words.value(0).toByteArray().constData());
    if (object)
        return bindMethod(object, words, error);
    *error =
        QStringLiteral("expected an object of the host, got '%1'").arg(words.value(0).toString());
    return {};
}
