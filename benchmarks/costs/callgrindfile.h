#pragma once

#include "costtable.h"

/** The costs in a file that callgrind has written of a run: those that dumps were requested for. */
QList<Cost> costsOf(const QByteArray &callgrindFile);
