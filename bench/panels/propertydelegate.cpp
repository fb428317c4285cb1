#include "panels/propertydelegate.h"

#include "panels/propertymodel.h"

#include <QComboBox>
#include <QDoubleSpinBox>

PropertyDelegate::PropertyDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

PropertyDelegate::~PropertyDelegate() = default;

QWidget *PropertyDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    static constexpr int decimals = 6;
    const QStringList keys = index.data(PropertyModel::KeysRole).toStringList();
    if (!keys.isEmpty())
        return makeChoice(parent, keys);
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto *number = qobject_cast<QDoubleSpinBox *>(editor))
        number->setDecimals(decimals);
    return editor;
}

/** A chosen key is written at once. */
QWidget *PropertyDelegate::makeChoice(QWidget *parent, const QStringList &keys) const
{
    auto *choice = new QComboBox(parent);
    auto *that = const_cast<PropertyDelegate *>(this); // the base class creates editors const
    choice->addItems(keys);
    connect(choice, qOverload<int>(&QComboBox::activated), that, [that, choice] {
        emit that->commitData(choice);
        emit that->closeEditor(choice);
    });
    return choice;
}

void PropertyDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(PropertyModel::HeadingRole).toBool())
        option->backgroundBrush = option->palette.alternateBase();
    else if (index.column() == PropertyModel::Value && !(index.flags() & Qt::ItemIsEditable))
        option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
}
