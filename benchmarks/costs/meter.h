#pragma once

#include <QByteArray>

#include <functional>

/**
 * Does something and dumps, under callgrind, what it took: the instructions as the dump's total,
 * name and heap allocations as what has triggered it ("name|allocations").
 */
void measure(const QByteArray &name, const std::function<void()> &action);

/** Dumps what the process has taken from its start on. */
void dumpTotal(const QByteArray &name);
