#pragma once

#include <QMetaMethod>
#include <QVariant>
#include <QWidget>

class QFormLayout;

/** A form for the arguments of a method, made from what the meta-object says of it. */
class ArgumentEditor : public QWidget
{
    Q_OBJECT
public:
    explicit ArgumentEditor(QWidget *parent = nullptr);

    void setMethod(const QMetaMethod &method);
    /** Fills the form; arguments that do not fit leave their field as it is. */
    void setArguments(const QVariantList &arguments);
    /** The arguments as they stand, for module::bindArguments(). */
    QVariantList arguments() const;
    /** Whether every field can be read. @param error  what was expected in the one that cannot */
    bool isGood(QString *error) const;

signals:
    void changed();

private:
    QWidget *makeField(int type);

    QMetaMethod m_method;
    QFormLayout *m_form;
    QVector<QWidget *> m_fields;
};
