#pragma once

#include <QVariant>

/**
 * What an operation's arguments mean, in words: which key a byte map stands for, which page was
 * asked for, which source a code names. Empty where the arguments speak for themselves.
 */
QString meaningOfCall(const QString &operation, const QVariantList &arguments);
