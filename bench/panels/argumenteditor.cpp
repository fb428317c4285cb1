#include "panels/argumenteditor.h"

#include "scenario/scenarioline.h"
#include "values.h"
#include "valuetype.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QJsonDocument>
#include <QLineEdit>
#include <QSpinBox>

#include <climits>

/** As a scenario writes it; null for the types with a field of their own. */
static QString emptyText(int type)
{
    const module::ValueType *known = module::valueType(type);
    return QLatin1String(known ? known->emptyText : "[]");
}

/** Lists, bytes and maps are edited as text, as in a scenario. */
static bool isWritten(int type)
{
    return !emptyText(type).isNull();
}

/** Typed values and those of a preset, which come from a scenario line, read the same. */
static QString writtenText(const QVariant &value, int type)
{
    const bool isJson =
        value.userType() == QMetaType::QVariantMap ||
        (value.userType() == QMetaType::QVariantList && type != QMetaType::QVariantList);
    if (!isJson)
        return module::jsonText(value);
    const QJsonDocument document(QJsonArray{QJsonValue::fromVariant(value)});
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact)).mid(1).chopped(1);
}

ArgumentEditor::ArgumentEditor(QWidget *parent) : QWidget(parent), m_form(new QFormLayout(this))
{
    m_form->setContentsMargins(0, 0, 0, 0);
}

QWidget *ArgumentEditor::makeField(int type)
{
    if (type == QMetaType::UChar || type == QMetaType::Int) {
        auto *field = new QSpinBox;
        if (type == QMetaType::UChar)
            field->setRange(0, UCHAR_MAX);
        else
            field->setRange(INT_MIN, INT_MAX);
        connect(field, qOverload<int>(&QSpinBox::valueChanged), this, &ArgumentEditor::changed);
        return field;
    }
    if (type == QMetaType::Bool) {
        auto *field = new QCheckBox;
        connect(field, &QCheckBox::toggled, this, &ArgumentEditor::changed);
        return field;
    }
    auto *field = new QLineEdit(emptyText(type));
    connect(field, &QLineEdit::textChanged, this, &ArgumentEditor::changed);
    return field;
}

void ArgumentEditor::setMethod(const QMetaMethod &method)
{
    m_method = method;
    while (m_form->rowCount() > 0)
        m_form->removeRow(0);
    m_fields.clear();
    const QList<QByteArray> names = method.parameterNames();
    const QList<QByteArray> types = method.parameterTypes();
    for (int i = 0; i < method.parameterCount(); ++i) {
        QWidget *field = makeField(method.parameterType(i));
        field->setObjectName(QStringLiteral("argument-%1").arg(i));
        field->setToolTip(QString::fromLatin1(types[i]));
        m_fields.append(field);
        m_form->addRow(QString::fromLatin1(names[i]), field);
    }
    emit changed();
}

void ArgumentEditor::setArguments(const QVariantList &arguments)
{
    for (int i = 0; i < qMin(arguments.size(), m_fields.size()); ++i) {
        const QVariant &value = arguments[i];
        if (auto *number = qobject_cast<QSpinBox *>(m_fields[i]))
            number->setValue(value.toInt());
        else if (auto *box = qobject_cast<QCheckBox *>(m_fields[i]))
            box->setChecked(value.toBool());
        else if (auto *line = qobject_cast<QLineEdit *>(m_fields[i]))
            line->setText(isWritten(m_method.parameterType(i))
                              ? writtenText(value, m_method.parameterType(i))
                              : value.toString());
    }
}

QVariantList ArgumentEditor::arguments() const
{
    QVariantList values;
    for (int i = 0; i < m_fields.size(); ++i) {
        const auto *line = qobject_cast<QLineEdit *>(m_fields[i]);
        if (const auto *number = qobject_cast<QSpinBox *>(m_fields[i])) {
            values.append(number->value());
        } else if (const auto *box = qobject_cast<QCheckBox *>(m_fields[i])) {
            values.append(box->isChecked());
        } else if (isWritten(m_method.parameterType(i))) {
            QVariantList words;
            QString error;
            splitScenarioLine(line->text(), &words, &error);
            values.append(words.value(0));
        } else {
            values.append(line->text());
        }
    }
    return values;
}

bool ArgumentEditor::isGood(QString *error) const
{
    QVariantList bound = arguments();
    return m_method.isValid() && module::bindArguments(m_method, &bound, error);
}
