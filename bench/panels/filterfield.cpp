#include "panels/filterfield.h"

#include <QKeyEvent>

FilterField::FilterField(const QString &hint, QWidget *parent) : QLineEdit(parent)
{
    setPlaceholderText(hint);
    setClearButtonEnabled(true);
}

bool FilterField::event(QEvent *event)
{
    // Otherwise a shortcut of the window would take the Esc that clears.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && !text().isEmpty()) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void FilterField::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        event->setAccepted(!text().isEmpty());
        clear();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        emit left();
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}
