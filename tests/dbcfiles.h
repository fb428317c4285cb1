#pragma once

#include "dbc/dbc.h"
#include "testpaths.h"

#include <QString>
#include <QtGlobal>

/** Where a real car's DBC file and map would lie; tests skip, saying so, where they are absent. */
inline QString dbcFile(const char *name)
{
    const QString folder = testpaths::source("../shared/dbc");
    return qEnvironmentVariable("NORDA_DBC", folder) + QLatin1Char('/') + QLatin1String(name);
}

/** A DBC file or a map from its content, which must be good. */
template <typename T>
T parsed(const QByteArray &content)
{
    QString error;
    const auto file = T::parse(content, QStringLiteral("car"), &error);
    if (!file)
        qFatal("%s", qPrintable(error));
    return *file;
}

/** What is wrong with a content, without the name of its file; empty for a good one. */
template <typename T>
QString parseError(const QByteArray &content)
{
    QString error;
    const bool isGood = T::parse(content, QStringLiteral("car"), &error).has_value();
    return isGood || !error.startsWith(QLatin1String("car: ")) ? QString() : error.mid(5);
}

/** The same for a file. */
template <typename T>
QString readError(const QString &path)
{
    QString error;
    const bool isGood = T::read(path, &error).has_value();
    return isGood || !error.startsWith(path + QLatin1String(": ")) ? QString()
                                                                   : error.mid(path.size() + 2);
}
