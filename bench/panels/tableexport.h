#pragma once

#include "inputfiles.h"

class QAbstractItemModel;

/** The rows and titles of a table as comma-separated values, quoted as RFC 4180 has it. */
QByteArray csvOf(const QAbstractItemModel &model);
/** Writes them. @param error  one line that names the file */
bool exportCsv(const QAbstractItemModel &model, const QString &file,
               const output::InputFiles &inputs, QString *error);
