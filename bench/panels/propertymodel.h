#pragma once

#include <QAbstractTableModel>
#include <QPointer>
#include <QVector>
#include <QWidget>

class Screen;

/**
 * What there is to know about a widget on the screen: its name and place, its images, the receivers
 * of its signals, and the properties of each of its classes. Those that a person can edit are
 * written to the widget.
 */
class PropertyModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Name, Value, ColumnCount };
    enum Role {
        HeadingRole = Qt::UserRole, ///< whether the row is the heading of those below it
        KeysRole                    ///< the keys of an enum, to choose from
    };

    explicit PropertyModel(const Screen *screen, QObject *parent = nullptr);
    ~PropertyModel() override;

    /** Null for none. */
    void setWidget(QWidget *widget);
    /** Follows the widget; one that was deleted leaves no rows. */
    void refresh();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

signals:
    /** An edited value was not taken. @param line  what was expected, or what the widget keeps */
    void refused(const QString &line);

private:
    struct Row
    {
        QString name;
        QString text;
        int property = -1; // its index in the meta-object
        bool isHeading = false;
    };

    QVector<Row> describe() const;
    void addWidget(QVector<Row> *rows) const;
    void addReceivers(QVector<Row> *rows) const;
    void addClass(QVector<Row> *rows, const QMetaObject *meta) const;
    void addDynamic(QVector<Row> *rows) const;
    Row rowOf(int property) const;

    const Screen *m_screen;
    QPointer<QWidget> m_widget;
    QVector<Row> m_rows;
};
