#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

/** Words that a text must contain: all of them, in any order and case. Blanks ask for nothing. */
class WordFilter
{
public:
    explicit WordFilter(const QString &text = {});

    bool isEmpty() const { return m_words.isEmpty(); }
    bool matches(const QString &text) const;

private:
    QStringList m_words;
};

/** The rows of a model whose FilterRole contains all words of a filter. */
class WordFilterModel : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setFilter(const QString &text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    WordFilter m_filter;
};
