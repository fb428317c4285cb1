#include "session/argumentchecks.h"

#include "adaptorlink.h"
#include "faults.h"
#include "nordahost.h"
#include "simulator/controls.h"
#include "values.h"

#include <algorithm>
#include <optional>

using module::Controls;
using module::Faults;

static bool isNumber(const QVariant &value)
{
    static constexpr double most = 1e9; // far beyond any place, page or time
    const int type = value.userType();
    const bool isOne =
        type == QMetaType::Double || type == QMetaType::Int || type == QMetaType::LongLong;
    return isOne && qAbs(value.toDouble()) <= most;
}

static bool areNumbers(const Arguments &values, int count)
{
    return values.size() == count &&
           std::all_of(values.begin(), values.end(), [](const QVariant &v) { return isNumber(v); });
}

bool isOneNumber(const Arguments &values, QString *)
{
    return areNumbers(values, 1);
}

bool isNothing(const Arguments &values, QString *)
{
    return values.isEmpty();
}

bool isPlace(const Arguments &values, QString *)
{
    const bool isNamed = values.value(0).userType() == QMetaType::QString;
    return isNamed ? values.size() == 1 || areNumbers(values.mid(1), 2) : areNumbers(values, 2);
}

bool isBarePlace(const Arguments &values, QString *)
{
    return areNumbers(values, 2);
}

bool isFault(const Arguments &values, QString *error)
{
    const QString text = values.value(0).toString();
    return values.size() == 1 && (text == QLatin1String("none") || Faults().add(text, error));
}

bool isControl(const Arguments &values, QString *error)
{
    Controls::Control control = Controls::Count;
    int value = 0;
    return values.size() == 2 &&
           Controls::read(values[0].toString(), values[1].toString(), &control, &value, error);
}

bool isFocus(const Arguments &values, QString *)
{
    return values.size() == 1 && QStringList{"granted", "refused"}.contains(values[0].toString());
}

bool isTime(const Arguments &values, QString *)
{
    return areNumbers(values, 1) && values[0].toDouble() >= 0;
}

/** A method or signal with arguments of its parameters' types. */
struct BoundCall
{
    QObject *object = nullptr;
    QMetaMethod method;
    QVariantList arguments;
};

static std::optional<BoundCall> bind(QObject *object, const QMetaMethod &method,
                                     const QVariantList &arguments, QString *error)
{
    BoundCall call{object, method, arguments};
    return module::bindArguments(method, &call.arguments, error) ? std::optional(call)
                                                                 : std::nullopt;
}

static bool invoke(const std::optional<BoundCall> &call)
{
    if (call)
        module::invokeMethod(call->object, call->method, call->arguments);
    return call.has_value();
}

static std::optional<BoundCall> bindSignal(const Arguments &values, QString *error)
{
    const module::ModuleSignal signal = module::moduleSignal(values.value(0).toByteArray());
    if (signal.method.isValid())
        return bind(signal.emitter, signal.method, values.mid(1), error);
    *error =
        QStringLiteral("expected a signal of the module, got '%1'").arg(values.value(0).toString());
    return std::nullopt;
}

static QMetaMethod methodNamed(const QObject *object, const QByteArray &name, int arguments)
{
    const QMetaObject *meta = object->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.name() == name && method.parameterCount() == arguments &&
            method.methodType() != QMetaMethod::Signal)
            return method;
    }
    return {};
}

static std::optional<BoundCall> bindMethod(QObject *object, const Arguments &values, QString *error)
{
    const QByteArray name = values.value(1).toByteArray();
    const QVariantList arguments = values.mid(2);
    const QMetaMethod method = methodNamed(object, name, arguments.size());
    if (method.isValid())
        return bind(object, method, arguments, error);
    *error = QStringLiteral("expected a method of %1 with %2 arguments, got '%3'")
                 .arg(values.value(0).toString())
                 .arg(arguments.size())
                 .arg(QString::fromLatin1(name));
    return std::nullopt;
}

static std::optional<BoundCall> bindHostCall(const Arguments &values, QString *error)
{
    QObject *object = nordaHostObject(values.value(0).toByteArray().constData());
    if (object)
        return bindMethod(object, values, error);
    *error =
        QStringLiteral("expected an object of the host, got '%1'").arg(values.value(0).toString());
    return std::nullopt;
}

bool isSignal(const Arguments &values, QString *error)
{
    return bindSignal(values, error).has_value();
}

bool isHostCall(const Arguments &values, QString *error)
{
    return values.size() >= 2 && bindHostCall(values, error);
}

bool isCall(const Arguments &values, QString *)
{
    return values.size() >= 2;
}

bool emitSignal(const Arguments &values, QString *error)
{
    return invoke(bindSignal(values, error));
}

bool callByName(QObject *object, const Arguments &values, QString *error)
{
    return invoke(bindMethod(object, values, error));
}

bool callHostObject(const Arguments &values, QString *error)
{
    return invoke(bindHostCall(values, error));
}
