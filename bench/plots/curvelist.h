#pragma once

#include "plots/curve.h"

#include <QColor>
#include <QObject>

#include <memory>
#include <vector>

class Session;

/** The curves of the plots, with their colours. It is remembered from one start to the next. */
class CurveList : public QObject
{
    Q_OBJECT
public:
    struct Item
    {
        std::unique_ptr<Curve> curve;
        QColor color;
    };

    explicit CurveList(QObject *parent = nullptr);
    ~CurveList() override;

    const std::vector<Item> &items() const { return m_items; }
    bool isEmpty() const { return m_items.empty(); }
    QStringList names() const;

    /** Adds the curves that exist and are not there yet. @return whether there was one */
    bool add(const QStringList &names);
    void remove(const QString &name);
    void clear();
    void catchUp(const Session *session);
    /** Forgets what was read, for another session. */
    void restart();

    /** The colours, which are readable on a light and a dark background. */
    static const QVector<QColor> &colors();

signals:
    void changed();

private:
    bool addOne(const QString &name);
    QColor freeColor() const;
    void store();

    std::vector<Item> m_items;
};
