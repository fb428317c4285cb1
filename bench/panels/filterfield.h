#pragma once

#include <QLineEdit>

/** A filter above a table. Enter and the down key go on to the table. */
class FilterField : public QLineEdit
{
    Q_OBJECT
public:
    explicit FilterField(const QString &hint, QWidget *parent = nullptr);

signals:
    void left();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
