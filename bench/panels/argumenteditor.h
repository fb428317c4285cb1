#pragma once

#include <QMetaMethod>
#include <QVariant>
#include <QWidget>

class ArgumentField;
class QFormLayout;

/** A form for the arguments of a method, built from its meta-object and its documentation. */
class ArgumentEditor : public QWidget
{
    Q_OBJECT
public:
    explicit ArgumentEditor(QWidget *parent = nullptr);

    void setMethod(const QMetaMethod &method);
    /** Fills the form; arguments that do not fit leave their field unchanged. */
    void setArguments(const QVariantList &arguments);
    /** The arguments as entered, for module::bindArguments(). */
    QVariantList arguments() const;
    /** Whether every field is valid. @param error  what was expected in one that is not */
    bool isGood(QString *error) const;

signals:
    void changed();

private:
    void addField(int index, const QString &words);

    QMetaMethod m_method;
    QFormLayout *m_form;
    QVector<ArgumentField *> m_fields;
};
