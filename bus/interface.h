#pragma once

#include <QHash>
#include <QMetaMethod>
#include <QStringList>
#include <QVector>

namespace bus {

// Where the vehicle module is found.
constexpr char serviceName[] = "com.stavel.norda.Module";
constexpr char objectPath[] = "/com/stavel/norda/Module";
constexpr char interfaceName[] = "com.stavel.norda.Adaptor1";

/** The signature of a type of the meta-type system; null for one that the bus does not carry. */
const char *signatureOf(int type);

/**
 * The signals and slots of some classes as one D-Bus interface: a signal for each signal, a method
 * for each slot, with the same names. Beside them stand the members that serve the link itself.
 */
class Interface
{
public:
    struct Member
    {
        int place = -1; ///< of its class in the list
        QMetaMethod method;
        QString signature;       ///< of its arguments
        QString resultSignature; ///< empty where it returns nothing

        bool isValid() const { return place >= 0; }
    };

    explicit Interface(const QList<const QMetaObject *> &classes);

    Member signal(const QString &name) const { return m_signals.value(name); }
    Member command(const QString &name) const { return m_commands.value(name); }
    QStringList signalNames() const;
    QStringList commandNames() const;

    /** What introspection returns for the interface, without the node around it. */
    QString xml() const;

private:
    QHash<QString, Member> m_signals;
    QHash<QString, Member> m_commands;
    QVector<Member> m_members; // in the order of the classes' declarations
};

} // namespace bus
