#include "interface.h"

#include "linkmembers.h"

#include <QMap>
#include <QVariant>

namespace bus {

// clang-format off
static constexpr char linkMembersXml[] =
    "    <method name=\"Snapshot\">\n"
    "      <arg name=\"signals\" type=\"a(sav)\" direction=\"out\"/>\n"
    "    </method>\n"
    "    <method name=\"MissingValues\">\n"
    "      <arg name=\"afterMs\" type=\"u\" direction=\"out\"/>\n"
    "      <arg name=\"signals\" type=\"a(sav)\" direction=\"out\"/>\n"
    "    </method>\n"
    "    <method name=\"Ping\"/>\n"
    "    <signal name=\"FeaturesChanged\">\n"
    "      <arg name=\"query\" type=\"s\"/>\n"
    "      <arg name=\"group\" type=\"i\"/>\n"
    "      <arg name=\"features\" type=\"a{ib}\"/>\n"
    "    </signal>\n";
// clang-format on

const char *signatureOf(int type)
{
    static const QHash<int, const char *> signatures = {
        {QMetaType::Void, ""},
        {QMetaType::UChar, "y"},
        {QMetaType::Int, "i"},
        {QMetaType::Bool, "b"},
        {QMetaType::QString, "s"},
        {QMetaType::QStringList, "as"},
        {QMetaType::QByteArray, "ay"},
        {QMetaType::QVariantList, "av"},
        {qMetaTypeId<QList<int>>(), "ai"},
        {qMetaTypeId<QMap<int, int>>(), "a{ii}"},
        {qMetaTypeId<QMap<int, bool>>(), "a{ib}"},
    };
    return signatures.value(type);
}

/** The signature of all parameters. @return a null text if the bus cannot carry one of them */
static QString argumentsSignature(const QMetaMethod &method)
{
    QString signature = QLatin1String("");
    for (int i = 0; i < method.parameterCount(); ++i) {
        const char *type = signatureOf(method.parameterType(i));
        if (!type)
            return {};
        signature += QLatin1String(type);
    }
    return signature;
}

Interface::Interface(const QList<const QMetaObject *> &classes)
{
    for (int place = 0; place < classes.size(); ++place) {
        const QMetaObject *meta = classes[place];
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            const bool isSignal = method.methodType() == QMetaMethod::Signal;
            if (!isSignal && method.methodType() != QMetaMethod::Slot)
                continue;
            const Member member = {place, method, argumentsSignature(method),
                                   QLatin1String(signatureOf(method.returnType()))};
            Q_ASSERT_X(!member.signature.isNull(), "bus::Interface", method.methodSignature());
            (isSignal ? m_signals : m_commands).insert(QString::fromLatin1(method.name()), member);
            m_members.append(member);
        }
    }
}

static QStringList sortedNames(const QHash<QString, Interface::Member> &members)
{
    QStringList names = members.keys();
    names.sort();
    return names;
}

QStringList Interface::signalNames() const
{
    return sortedNames(m_signals);
}

QStringList Interface::commandNames() const
{
    return sortedNames(m_commands);
}

static QString argumentXml(const QString &name, const char *type, const char *direction)
{
    return QStringLiteral("      <arg%1 type=\"%2\"%3/>\n")
        .arg(name.isEmpty() ? QString() : QStringLiteral(" name=\"%1\"").arg(name),
             QLatin1String(type), QLatin1String(direction));
}

static QString memberXml(const QMetaMethod &method)
{
    const bool isSignal = method.methodType() == QMetaMethod::Signal;
    const QString tag = isSignal ? QStringLiteral("signal") : QStringLiteral("method");
    QString arguments;
    for (int i = 0; i < method.parameterCount(); ++i)
        arguments +=
            argumentXml(QString::fromLatin1(method.parameterNames()[i]),
                        signatureOf(method.parameterType(i)), isSignal ? "" : " direction=\"in\"");
    if (method.returnType() != QMetaType::Void)
        arguments += argumentXml({}, signatureOf(method.returnType()), " direction=\"out\"");
    const QString name = QString::fromLatin1(method.name());
    if (arguments.isEmpty())
        return QStringLiteral("    <%1 name=\"%2\"/>\n").arg(tag, name);
    return QStringLiteral("    <%1 name=\"%2\">\n%3    </%1>\n").arg(tag, name, arguments);
}

QString Interface::xml() const
{
    QString members;
    for (const Member &member : m_members)
        members += memberXml(member.method);
    return QStringLiteral("  <interface name=\"%1\">\n%2%3  </interface>\n")
        .arg(QLatin1String(interfaceName), members, QLatin1String(linkMembersXml));
}

} // namespace bus
