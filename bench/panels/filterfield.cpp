#include "panels/filterfield.h"

#include <QKeyEvent>

FilterField::FilterField(const QString &hint, QWidget *parent) : QLineEdit(parent)
{
    setPlaceholderText(hint);
    setClearButtonEnabled(true);
}

void FilterField::keyPressEvent(QKeyEvent *event)
{
    const QVector<int> leaving = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down};
    if (leaving.contains(event->key()))
        emit left();
    else
        QLineEdit::keyPressEvent(event);
}
