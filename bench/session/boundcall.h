#pragma once

#include <QMetaMethod>
#include <QVariant>

#include <optional>

/** A method or signal with arguments of the types that it takes, ready to be invoked. */
struct BoundCall
{
    QObject *object;
    QMetaMethod method;
    QVariantList arguments;

    void invoke() const;
};

// Each takes the words of a scenario, and sets one line about what was expected when it fails.

/** A signal of the module and its arguments. */
std::optional<BoundCall> bindSignal(const QVariantList &words, QString *error);
/** What a person calls the object, a method of it, and its arguments. */
std::optional<BoundCall> bindMethod(QObject *object, const QVariantList &words, QString *error);
/** An object of the host, a method of it, and its arguments. */
std::optional<BoundCall> bindHostMethod(const QVariantList &words, QString *error);
