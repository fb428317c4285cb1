#include "metacall.h"

#include <QVarLengthArray>

#include <climits>

namespace bus {

bool convertValue(QVariant *value, int type)
{
    if (value->userType() == type)
        return true;
    if (type != QMetaType::UChar)
        return value->convert(type);
    bool isNumber = false;
    const int number = value->toInt(&isNumber);
    *value = QVariant::fromValue(uchar(number));
    return isNumber && number >= 0 && number <= UCHAR_MAX;
}

bool convertArguments(const QMetaMethod &method, QVariantList *arguments)
{
    if (!method.isValid() || arguments->size() != method.parameterCount())
        return false;
    for (int i = 0; i < arguments->size(); ++i) {
        if (!convertValue(&(*arguments)[i], method.parameterType(i)))
            return false;
    }
    return true;
}

QVariant invokeMethod(QObject *object, const QMetaMethod &method, QVariantList arguments)
{
    const bool hasResult = method.returnType() != QMetaType::Void;
    QVariant result = hasResult ? QVariant(method.returnType(), nullptr) : QVariant();
    QVarLengthArray<void *, 8> passed = {hasResult ? result.data() : nullptr};
    for (int i = 0; i < arguments.size(); ++i) {
        const bool isAny = method.parameterType(i) == QMetaType::QVariant;
        passed.append(isAny ? static_cast<void *>(&arguments[i]) : arguments[i].data());
    }
    object->qt_metacall(QMetaObject::InvokeMetaMethod, method.methodIndex(), passed.data());
    return result;
}

} // namespace bus
