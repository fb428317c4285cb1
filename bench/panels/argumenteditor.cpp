#include "panels/argumenteditor.h"

#include "panels/argumentfield.h"
#include "values.h"

#include <QFormLayout>
#include <QLabel>

ArgumentEditor::ArgumentEditor(QWidget *parent) : QWidget(parent), m_form(new QFormLayout(this))
{
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setRowWrapPolicy(QFormLayout::DontWrapRows);
}

void ArgumentEditor::addField(int index, const QString &words)
{
    const int type = m_method.parameterType(index);
    ArgumentField *field = ArgumentField::make(type, NamedValues::read(words, type));
    field->focusProxy()->setObjectName(QStringLiteral("argument-%1").arg(index));
    field->setToolTip(
        QStringLiteral("<p>%1</p><p><tt>%2</tt></p>")
            .arg(words.toHtmlEscaped(),
                 QString::fromLatin1(m_method.parameterTypes()[index]).toHtmlEscaped()));
    connect(field, &ArgumentField::changed, this, &ArgumentEditor::changed);
    m_fields.append(field);
    m_form->addRow(QString::fromLatin1(m_method.parameterNames()[index]), field);
    m_form->labelForField(field)->setToolTip(field->toolTip());
}

void ArgumentEditor::setMethod(const QMetaMethod &method)
{
    m_method = method;
    while (m_form->rowCount() > 0)
        m_form->removeRow(0);
    m_fields.clear();
    const MethodWords words = headerWords(QString::fromLatin1(method.name()));
    const QList<QByteArray> names = method.parameterNames();
    for (int i = 0; i < names.size(); ++i)
        addField(i, words.arguments.value(QString::fromLatin1(names[i])));
    emit changed();
}

void ArgumentEditor::setArguments(const QVariantList &arguments)
{
    for (int i = 0; i < qMin(arguments.size(), m_fields.size()); ++i)
        m_fields[i]->setValue(arguments[i]);
}

QVariantList ArgumentEditor::arguments() const
{
    QVariantList values;
    for (const ArgumentField *field : m_fields)
        values.append(field->value());
    return values;
}

bool ArgumentEditor::isGood(QString *error) const
{
    QVariantList bound = arguments();
    return m_method.isValid() && module::bindArguments(m_method, &bound, error);
}
