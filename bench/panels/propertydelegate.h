#pragma once

#include <QStyledItemDelegate>

/** Edits properties, enums from a list of their keys, and shows what cannot be edited paler. */
class PropertyDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit PropertyDelegate(QObject *parent = nullptr);
    ~PropertyDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QWidget *makeChoice(QWidget *parent, const QStringList &keys) const;
};
