#pragma once

#include "calllog.h"

#include <QMap>
#include <QStringList>

/** Writes down what the plugin asks of the host, one readable line a call: "Class::op(1, 2)". */
class CallSpy : public QObject
{
public:
    CallSpy()
    {
        connect(CallLog::instance(), &CallLog::called, this,
                [this](const QString &operation, const QVariantList &arguments) {
                    m_calls.append(operation + QLatin1Char('(') + text(arguments) +
                                   QLatin1Char(')'));
                });
    }

    /** All calls since the last take. */
    QStringList take() { return std::exchange(m_calls, {}); }

    /** The calls since the last take whose operation begins with one of these. */
    QStringList take(const QStringList &prefixes)
    {
        QStringList chosen;
        for (const QString &call : take()) {
            for (const QString &prefix : prefixes) {
                if (call.startsWith(prefix))
                    chosen.append(call);
            }
        }
        return chosen;
    }

    /** Commands to the module, beeps and navigation: what a touch leads to. */
    QStringList takeTouches()
    {
        return take({QStringLiteral("norda::Vtq"), QStringLiteral("svaudio::"),
                     QStringLiteral("TouchEvent")});
    }

private:
    static QString text(const QVariantList &arguments)
    {
        QStringList texts;
        for (const QVariant &argument : arguments)
            texts.append(argument.toString());
        return texts.join(QStringLiteral(", "));
    }

    QStringList m_calls;
};
