#pragma once

#include <QVariant>

/**
 * What a call to the host is about, in a few words: those of its operation, and what its arguments
 * mean. Empty for an operation that the host does not have.
 */
QString meaningOfCall(const QString &operation, const QVariantList &arguments);
