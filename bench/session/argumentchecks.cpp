#include "session/argumentchecks.h"

#include "adaptorlink.h"
#include "faults.h"
#include "nordahost.h"
#include "simulator/controls.h"
#include "values.h"

#include <algorithm>

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

bool emitSignal(const Arguments &values, bool isTrial, QString *error)
{
    const module::ModuleSignal signal = module::moduleSignal(values.value(0).toByteArray());
    QVariantList bound = values.mid(1);
    if (!signal.method.isValid()) {
        *error = QStringLiteral("expected a signal of the module, got '%1'")
                     .arg(values.value(0).toString());
        return false;
    }
    if (!module::bindArguments(signal.method, &bound, error))
        return false;
    if (!isTrial)
        module::invokeMethod(signal.emitter, signal.method, bound);
    return true;
}

bool isSignal(const Arguments &values, QString *error)
{
    return emitSignal(values, true, error);
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

bool callByName(QObject *object, const Arguments &values, bool isTrial, QString *error)
{
    const QByteArray name = values.value(1).toByteArray();
    QVariantList bound = values.mid(2);
    const QMetaMethod method = methodNamed(object, name, bound.size());
    if (!method.isValid()) {
        *error = QStringLiteral("expected a method of %1 with %2 arguments, got '%3'")
                     .arg(values.value(0).toString())
                     .arg(bound.size())
                     .arg(QString::fromLatin1(name));
        return false;
    }
    if (!module::bindArguments(method, &bound, error))
        return false;
    if (!isTrial)
        module::invokeMethod(object, method, bound);
    return true;
}

bool callHostObject(const Arguments &values, bool isTrial, QString *error)
{
    QObject *object = nordaHostObject(values.value(0).toByteArray().constData());
    if (object)
        return callByName(object, values, isTrial, error);
    *error =
        QStringLiteral("expected an object of the host, got '%1'").arg(values.value(0).toString());
    return false;
}

bool isHostCall(const Arguments &values, QString *error)
{
    return values.size() >= 2 && callHostObject(values, true, error);
}

bool isCall(const Arguments &values, QString *)
{
    return values.size() >= 2;
}
