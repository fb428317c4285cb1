#include "session/argumentchecks.h"

#include "faults.h"
#include "session/boundcall.h"
#include "simulator/controls.h"
#include "translator.h"

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

bool isLanguage(const Arguments &values, QString *)
{
    return values.size() == 1 && Translator::languages().contains(values[0].toString());
}

bool isTime(const Arguments &values, QString *)
{
    return areNumbers(values, 1) && values[0].toDouble() >= 0;
}

bool isSignal(const Arguments &values, QString *error)
{
    return bindSignal(values, error).has_value();
}

bool isHostCall(const Arguments &values, QString *error)
{
    return values.size() >= 2 && bindHostMethod(values, error);
}

bool isCall(const Arguments &values, QString *)
{
    return values.size() >= 2;
}
