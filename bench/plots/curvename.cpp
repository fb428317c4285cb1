#include "plots/curvename.h"

#include "adaptorlink.h"
#include "session/journal.h"
#include "session/quantitylog.h"

#include <QAssociativeIterable>
#include <QRegularExpression>
#include <QSequentialIterable>

std::optional<CurveName> CurveName::parse(const QString &text)
{
    CurveName name;
    name.quantity = module::quantityOf(text);
    if (name.isQuantity())
        return name;
    static const QRegularExpression form(QStringLiteral("^(\\w+)\\.(\\w+)(?:\\[(\\w+)\\])?$"));
    const QRegularExpressionMatch match = form.match(text);
    const module::ModuleSignal signal = module::moduleSignal(match.captured(1).toLatin1());
    const QList<QByteArray> parameters = signal.method.parameterNames();
    name.signal = match.captured(1);
    name.argument = parameters.indexOf(match.captured(2).toLatin1());
    name.element = match.captured(3);
    name.unitArgument = parameters.indexOf("unit");
    if (!match.hasMatch() || !signal.emitter || name.argument < 0)
        return std::nullopt;
    return name;
}

/** A number with at most a unit after it: neither a clock time nor a version nor a sentence. */
static std::optional<Reading> readingOfText(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*([-+]?\\d+(?:\\.\\d+)?)\\s*([^\\d\\s.:,/+-][^\\d\\s]{0,7})?\\s*$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return Reading{match.captured(1).toDouble(), match.captured(2)};
}

std::optional<Reading> readingOf(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
        return Reading{value.toDouble(), {}};
    case QMetaType::QString:
        return readingOfText(value.toString());
    default:
        return std::nullopt;
    }
}

/** Calls visit(key, value) for each element; none for what is not a list, bytes or a map. */
template <typename Visit>
static void visitElements(const QVariant &container, Visit visit)
{
    if (container.userType() == QMetaType::QByteArray) {
        const QByteArray bytes = container.toByteArray();
        for (int i = 0; i < bytes.size(); ++i)
            visit(QString::number(i), QVariant(int(uchar(bytes[i]))));
    } else if (container.userType() == QMetaType::QString) {
        return; // converts to a list of itself
    } else if (container.canConvert<QVariantList>()) {
        const auto list = container.value<QSequentialIterable>();
        for (int i = 0; i < list.size(); ++i)
            visit(QString::number(i), list.at(i));
    } else if (container.canConvert<QVariantHash>()) {
        const auto map = container.value<QAssociativeIterable>();
        for (auto it = map.begin(); it != map.end(); ++it)
            visit(it.key().toString(), it.value());
    }
}

static std::optional<Reading> readingOfElement(const QVariant &container, const QString &element)
{
    std::optional<Reading> reading;
    visitElements(container, [&](const QString &key, const QVariant &value) {
        if (key == element)
            reading = readingOf(value);
    });
    return reading;
}

std::optional<Reading> readingOf(const CurveName &name, const QVariantList &arguments)
{
    const QVariant value = arguments.value(name.argument);
    std::optional<Reading> reading =
        name.element.isEmpty() ? readingOf(value) : readingOfElement(value, name.element);
    if (reading && reading->unit.isEmpty() && name.unitArgument >= 0)
        reading->unit = arguments.value(name.unitArgument).toString().trimmed();
    return reading;
}

/** The type is enough for a number; anything else has to have occurred. */
static QStringList namesOf(const QString &argument, int type, const QVariant &last)
{
    if (readingOf(last.isValid() ? last : QVariant(type, nullptr)))
        return {argument};
    QStringList names;
    visitElements(last, [&](const QString &key, const QVariant &value) {
        if (readingOf(value))
            names.append(QStringLiteral("%1[%2]").arg(argument, key));
    });
    return names;
}

QStringList curvesOf(const QString &signal, const Journal *journal)
{
    const QMetaMethod method = module::moduleSignal(signal.toLatin1()).method;
    const Journal::Total *total = journal ? journal->totalOf(Journal::Signal, signal) : nullptr;
    const QList<QByteArray> parameters = method.parameterNames();
    QStringList names;
    for (int i = 0; i < parameters.size(); ++i)
        names += namesOf(signal + QLatin1Char('.') + QString::fromLatin1(parameters[i]),
                         method.parameterType(i), total ? total->last.value(i) : QVariant());
    return names;
}

QStringList offeredCurves(const Journal *journal, const QuantityLog &quantities)
{
    QStringList names;
    for (const module::ModuleSignal &signal : module::moduleSignals())
        names += curvesOf(QString::fromLatin1(signal.method.name()), journal);
    for (int i = 0; i < int(module::Quantity::Count); ++i) {
        if (!quantities.values(module::Quantity(i)).isEmpty())
            names.append(QLatin1String(module::quantityInfo(module::Quantity(i)).path));
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}
