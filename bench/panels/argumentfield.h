#pragma once

#include "tools/headerwords.h"

#include <QVariant>
#include <QWidget>

/** The field for one argument of a method. Its focus proxy is what one types into. */
class ArgumentField : public QWidget
{
    Q_OBJECT
public:
    /** @param names  that the values, or the bits of a value, have */
    static ArgumentField *make(int type, const NamedValues &names);

    /** A value as a scenario has it, invalid for an entry that is none. */
    virtual QVariant value() const = 0;
    virtual void setValue(const QVariant &value) = 0;

signals:
    void changed();

protected:
    /** Fills the field. */
    void take(QWidget *editor);
};
