#include "panels/wordfilter.h"

#include "panels/tableroles.h"

#include <QRegularExpression>

#include <algorithm>

WordFilter::WordFilter(const QString &text)
    : m_words(text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts))
{
}

bool WordFilter::matches(const QString &text) const
{
    return std::all_of(m_words.cbegin(), m_words.cend(), [&text](const QString &word) {
        return text.contains(word, Qt::CaseInsensitive);
    });
}

void WordFilterModel::setFilter(const QString &text)
{
    m_filter = WordFilter(text);
    invalidateFilter();
}

bool WordFilterModel::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    return m_filter.isEmpty() ||
           m_filter.matches(sourceModel()->index(row, 0, parent).data(FilterRole).toString());
}
