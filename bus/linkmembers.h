#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QString>
#include <QVariantList>
#include <QVector>

namespace bus {

/** A signal with its arguments, as answers and the inbox hold it. */
struct Record
{
    QString name;
    QVariantList arguments;
};

// What the link itself needs, beside the signals and commands that it carries:
//   Snapshot       the last of each signal, in order, for who comes later; the features first
//   MissingValues  after how many milliseconds of silence a value is missing, and the signals that
//                  show all values as missing when the module is gone
//   Ping           answers while the module's event loop runs
//   FeaturesChanged(query, group, features)  what a query answers from now on
constexpr char snapshotMethod[] = "Snapshot";
constexpr char missingValuesMethod[] = "MissingValues";
constexpr char pingMethod[] = "Ping";
constexpr char featuresSignal[] = "FeaturesChanged";

QDBusArgument &operator<<(QDBusArgument &argument, const Record &record);
const QDBusArgument &operator>>(const QDBusArgument &argument, Record &record);

} // namespace bus

Q_DECLARE_METATYPE(bus::Record)
