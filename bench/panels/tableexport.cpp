#include "panels/tableexport.h"

#include "outputfile.h"

#include <QAbstractItemModel>

static QString quoted(QString text)
{
    const bool isPlain = std::none_of(
        text.cbegin(), text.cend(), [](QChar c) { return QStringLiteral(",\"\r\n").contains(c); });
    if (isPlain)
        return text;
    text.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

static QByteArray csvLine(const QStringList &cells)
{
    return cells.join(QLatin1Char(',')).toUtf8() + "\r\n";
}

QByteArray csvOf(const QAbstractItemModel &model)
{
    QStringList cells;
    const int columns = model.columnCount();
    for (int column = 0; column < columns; ++column)
        cells.append(quoted(model.headerData(column, Qt::Horizontal).toString()));
    QByteArray csv = csvLine(cells);
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < columns; ++column)
            cells[column] = quoted(model.index(row, column).data().toString());
        csv += csvLine(cells);
    }
    return csv;
}

bool exportCsv(const QAbstractItemModel &model, const QString &file,
               const output::InputFiles &inputs, QString *error)
{
    return output::writeResult(file, csvOf(model), inputs, error);
}
