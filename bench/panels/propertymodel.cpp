#include "panels/propertymodel.h"

#include "screen.h"
#include "tools/imagenames.h"
#include "tools/propertytext.h"
#include "tools/receivers.h"

#include <QFont>

#include <algorithm>

// Of the many properties that every widget has.
static constexpr const char *ofEveryWidget[] = {
    "visible",
    "enabled",
    "geometry",
    "minimumSize",
    "maximumSize",
    "sizePolicy",
    "focusPolicy",
    "focus",
    "font",
    "styleSheet",
    "toolTip",
    "cursor",
    "windowTitle",
    "mouseTracking",
    "autoFillBackground",
    "layoutDirection",
    "contextMenuPolicy",
};

PropertyModel::PropertyModel(const Screen *screen, QObject *parent)
    : QAbstractTableModel(parent), m_screen(screen)
{
}

PropertyModel::~PropertyModel() = default;

void PropertyModel::setWidget(QWidget *widget)
{
    m_widget = widget;
    beginResetModel();
    m_rows = describe();
    endResetModel();
}

/** Rows with the same names as before get their new texts, any others replace them all. */
void PropertyModel::refresh()
{
    const QVector<Row> rows = describe();
    const auto hasSameName = [](const Row &a, const Row &b) { return a.name == b.name; };
    if (!std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(), hasSameName)) {
        beginResetModel();
        m_rows = rows;
        endResetModel();
        return;
    }
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].text == m_rows[i].text)
            continue;
        m_rows[i] = rows[i];
        emit dataChanged(index(i, Value), index(i, Value));
    }
}

QVector<PropertyModel::Row> PropertyModel::describe() const
{
    QVector<Row> rows;
    if (!m_widget || (m_widget != m_screen && !m_screen->isAncestorOf(m_widget)))
        return rows;
    addWidget(&rows);
    addReceivers(&rows);
    for (const QMetaObject *meta = m_widget->metaObject(); meta != &QWidget::staticMetaObject;
         meta = meta->superClass())
        addClass(&rows, meta);
    rows.append({QStringLiteral("QWidget"), {}, -1, true});
    for (const char *name : ofEveryWidget)
        rows.append(rowOf(m_widget->metaObject()->indexOfProperty(name)));
    addDynamic(&rows);
    return rows;
}

void PropertyModel::addWidget(QVector<Row> *rows) const
{
    QStringList parents;
    for (const QWidget *parent = m_widget->parentWidget(); parent && parent != m_screen;
         parent = parent->parentWidget())
        parents.append(m_screen->nameOf(parent));
    const QRect place(m_widget->mapTo(m_screen, QPoint()), m_widget->size());
    rows->append({tr("Widget"), {}, -1, true});
    rows->append({tr("Name"), m_screen->nameOf(m_widget)});
    rows->append({tr("Class"), QLatin1String(m_widget->metaObject()->className())});
    rows->append({tr("On the screen"), valueText(place)});
    rows->append({tr("Parents"), parents.join(QStringLiteral(" < "))});
    const QStringList images = imagesShownBy(m_widget);
    if (!images.isEmpty())
        rows->append({tr("Images"), images.join(QStringLiteral(", "))});
}

void PropertyModel::addReceivers(QVector<Row> *rows) const
{
    const QVector<SignalReceivers> found = receiversOf(m_widget);
    if (found.isEmpty())
        return;
    rows->append({tr("Receivers"), {}, -1, true});
    for (const SignalReceivers &row : found)
        rows->append({row.signal, QString::number(row.count)});
}

/** Its own properties, without those of the classes that it is derived from. */
void PropertyModel::addClass(QVector<Row> *rows, const QMetaObject *meta) const
{
    if (meta->propertyCount() == meta->propertyOffset())
        return;
    rows->append({QLatin1String(meta->className()), {}, -1, true});
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        rows->append(rowOf(i));
}

void PropertyModel::addDynamic(QVector<Row> *rows) const
{
    QVector<Row> found;
    for (const QByteArray &name : m_widget->dynamicPropertyNames()) {
        if (!name.startsWith("_q_"))
            found.append({QString::fromUtf8(name), valueText(m_widget->property(name))});
    }
    if (!found.isEmpty())
        rows->append({tr("Dynamic properties"), {}, -1, true});
    *rows += found;
}

PropertyModel::Row PropertyModel::rowOf(int property) const
{
    const QMetaProperty meta = m_widget->metaObject()->property(property);
    return {QLatin1String(meta.name()), propertyText(meta, meta.read(m_widget)), property};
}

int PropertyModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int PropertyModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

static QStringList keysOf(const QMetaProperty &property)
{
    QStringList keys;
    const QMetaEnum known = property.enumerator();
    for (int i = 0; property.isEnumType() && !property.isFlagType() && i < known.keyCount(); ++i)
        keys.append(QLatin1String(known.key(i)));
    return keys;
}

QVariant PropertyModel::data(const QModelIndex &index, int role) const
{
    const Row &row = m_rows[index.row()];
    const bool isEditing = role == Qt::EditRole || role == KeysRole;
    if (isEditing && m_widget && row.property >= 0) {
        const QMetaProperty property = m_widget->metaObject()->property(row.property);
        if (role == KeysRole)
            return keysOf(property);
        return property.isEnumType() ? QVariant(row.text) : property.read(m_widget);
    }
    if (role == HeadingRole)
        return row.isHeading;
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return index.column() == Name ? row.name : row.text;
    if (role == Qt::FontRole && row.isHeading) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    return {};
}

QVariant PropertyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static constexpr const char *titles[] = {QT_TR_NOOP("Property"), QT_TR_NOOP("Value")};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return tr(titles[section]);
}

Qt::ItemFlags PropertyModel::flags(const QModelIndex &index) const
{
    const Row &row = m_rows[index.row()];
    if (row.isHeading)
        return Qt::ItemIsEnabled;
    const bool canBeEdited = index.column() == Value && row.property >= 0 && m_widget &&
                             isEditable(m_widget->metaObject()->property(row.property));
    return QAbstractTableModel::flags(index) | (canBeEdited ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

bool PropertyModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int property = m_rows[index.row()].property;
    if (role != Qt::EditRole || property < 0)
        return false;
    QString error = tr("expected a widget, it was deleted");
    const bool isTaken =
        m_widget &&
        writeProperty(m_widget, m_widget->metaObject()->property(property), value, &error);
    refresh();
    emit refused(isTaken ? QString() : error);
    return isTaken;
}
