#pragma once

#include <QString>
#include <QVector>

class QObject;

struct SignalReceivers
{
    QString signal; ///< with its parameters
    int count;
};

/** The signals of an object that have receivers, without those that every object has. */
QVector<SignalReceivers> receiversOf(const QObject *object);
