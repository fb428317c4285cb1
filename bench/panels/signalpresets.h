#pragma once

#include <QStringList>
#include <QVariant>

/** Arguments worth sending, by the signal that they belong to. */
struct SignalPreset
{
    QString title;
    QVariantList arguments;
    QVector<QVariantList> followers; ///< further signals that belong to it: name and arguments
};

QVector<SignalPreset> presetsOf(const QByteArray &signal);
