#pragma once

#include <QLineEdit>

/**
 * A filter above a table. Esc clears it, and is left to the window when there is nothing to clear.
 * Enter and the down key go on to the table.
 */
class FilterField : public QLineEdit
{
    Q_OBJECT
public:
    explicit FilterField(const QString &hint, QWidget *parent = nullptr);

signals:
    void left();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
