#pragma once

#include <QStringList>
#include <QVariant>

/** Useful arguments for a signal. */
struct SignalPreset
{
    QString title;
    QVariantList arguments;
    QVector<QVariantList> followers; ///< further signals that belong to it: name and arguments
};

QVector<SignalPreset> presetsOf(const QByteArray &signal);
