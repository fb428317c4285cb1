#pragma once

#include <QJsonObject>
#include <QString>

class QPluginLoader;

/** The plugin of the same build as the program, or the installed one. */
QString usualPlugin();
/** Why this cannot be a plugin at all, before anything opens it; empty where it can. */
QString faultOfPluginFile(const QString &file);
/**
 * Names the file to the loader, without loading it.
 * @return its metadata, empty where it has none or Qt finds it damaged
 */
QJsonObject openPluginFile(QPluginLoader *loader, const QString &file);
