#include "panels/argumentfield.h"

#include "scenario/scenarioline.h"
#include "values.h"
#include "valuetype.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QJsonDocument>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <climits>

void ArgumentField::take(QWidget *editor)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(editor);
    setFocusProxy(editor);
}

class NumberField : public ArgumentField
{
public:
    explicit NumberField(int type) : m_box(new QSpinBox)
    {
        const bool isByte = type == QMetaType::UChar;
        m_box->setRange(isByte ? 0 : INT_MIN, isByte ? UCHAR_MAX : INT_MAX);
        take(m_box);
        connect(m_box, qOverload<int>(&QSpinBox::valueChanged), this, &NumberField::changed);
    }

    QVariant value() const override { return m_box->value(); }
    void setValue(const QVariant &value) override { m_box->setValue(value.toInt()); }

protected:
    QSpinBox *m_box;
};

/** A number, and a check box for each bit that has a name. */
class BitsField : public NumberField
{
public:
    BitsField(int type, const QVector<NamedValues::Name> &names) : NumberField(type)
    {
        static constexpr int columns = 2;
        auto *grid = new QGridLayout;
        for (const NamedValues::Name &name : names) {
            auto *box = new QCheckBox(name.text);
            box->setObjectName(QStringLiteral("bit-%1").arg(name.number));
            grid->addWidget(box, grid->count() / columns, grid->count() % columns);
            connect(box, &QCheckBox::clicked, this, [this, name](bool on) {
                m_box->setValue(on ? m_box->value() | 1 << name.number
                                   : m_box->value() & ~(1 << name.number));
            });
            connect(m_box, qOverload<int>(&QSpinBox::valueChanged), box,
                    [box, name](int value) { box->setChecked(value & 1 << name.number); });
        }
        static_cast<QVBoxLayout *>(layout())->addLayout(grid);
    }
};

/** Values by name. Any other number can be typed: a page must bear it. */
class NamedField : public ArgumentField
{
public:
    explicit NamedField(const NamedValues &names) : m_box(new QComboBox), m_names(names)
    {
        for (const NamedValues::Name &name : names.names)
            m_box->addItem(itemText(name.number));
        if (!names.other.isEmpty())
            m_box->addItem(itemText(unnamed()));
        m_box->setEditable(true);
        m_box->setInsertPolicy(QComboBox::NoInsert);
        take(m_box);
        connect(m_box, &QComboBox::currentTextChanged, this, &NamedField::changed);
    }

    QVariant value() const override
    {
        static const QRegularExpression number(QStringLiteral("^\\s*(-?\\d+)\\b"));
        const QString text = number.match(m_box->currentText()).captured(1);
        return text.isEmpty() ? QVariant() : text.toDouble();
    }
    void setValue(const QVariant &value) override
    {
        m_box->setCurrentText(itemText(value.toInt()));
    }

private:
    QString itemText(int value) const
    {
        return QStringLiteral("%1 %2").arg(value).arg(m_names.nameOf(value)).trimmed();
    }
    /** The lowest number that stands for all others. */
    int unnamed() const
    {
        int number = 0;
        while (std::any_of(m_names.names.begin(), m_names.names.end(),
                           [number](const auto &name) { return name.number == number; }))
            ++number;
        return number;
    }

    QComboBox *m_box;
    NamedValues m_names;
};

class SwitchField : public ArgumentField
{
public:
    SwitchField() : m_box(new QCheckBox)
    {
        take(m_box);
        connect(m_box, &QCheckBox::toggled, this, &SwitchField::changed);
    }

    QVariant value() const override { return m_box->isChecked(); }
    void setValue(const QVariant &value) override { m_box->setChecked(value.toBool()); }

private:
    QCheckBox *m_box;
};

class TextField : public ArgumentField
{
public:
    explicit TextField(const QString &text = {}) : m_line(new QLineEdit(text))
    {
        take(m_line);
        connect(m_line, &QLineEdit::textChanged, this, &TextField::changed);
    }

    QVariant value() const override { return m_line->text(); }
    void setValue(const QVariant &value) override { m_line->setText(value.toString()); }

protected:
    QLineEdit *m_line;
};

/** Lists, bytes and maps are edited as text, as in a scenario. */
class WrittenField : public TextField
{
public:
    WrittenField(int type, const QString &empty) : TextField(empty), m_type(type) {}

    QVariant value() const override
    {
        QVariantList words;
        QString error;
        splitScenarioLine(m_line->text(), &words, &error);
        return words.value(0);
    }
    /** Typed values and those of a preset, which come from a scenario line, read the same. */
    void setValue(const QVariant &value) override
    {
        const bool isJson =
            value.userType() == QMetaType::QVariantMap ||
            (value.userType() == QMetaType::QVariantList && m_type != QMetaType::QVariantList);
        const QJsonDocument document(QJsonArray{QJsonValue::fromVariant(value)});
        m_line->setText(
            isJson ? QString::fromUtf8(document.toJson(QJsonDocument::Compact)).mid(1).chopped(1)
                   : module::jsonText(value));
    }

private:
    int m_type;
};

ArgumentField *ArgumentField::make(int type, const NamedValues &names)
{
    const bool isNumber = type == QMetaType::UChar || type == QMetaType::Int;
    if (isNumber && names.kind == NamedValues::Bits)
        return new BitsField(type, names.names);
    if (isNumber && names.kind == NamedValues::Values)
        return new NamedField(names);
    if (isNumber)
        return new NumberField(type);
    if (type == QMetaType::Bool)
        return new SwitchField;
    if (type == QMetaType::QString)
        return new TextField;
    const module::ValueType *known = module::valueType(type);
    return new WrittenField(type, QLatin1String(known ? known->emptyText : "[]"));
}
