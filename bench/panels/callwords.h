#pragma once

#include <QVariant>

/**
 * What the arguments of an operation mean: the key behind a byte map, the requested page, the
 * source of a code. Empty where the arguments need no explanation.
 */
QString meaningOfCall(const QString &operation, const QVariantList &arguments);
