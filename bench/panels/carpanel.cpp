#include "panels/carpanel.h"

#include "session/actions.h"
#include "session/session.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

using module::Controls;
using module::Faults;

static QFormLayout *addGroup(QVBoxLayout *column, const QString &title)
{
    auto *box = new QGroupBox(title);
    auto *form = new QFormLayout(box);
    column->addWidget(box);
    return form;
}

/** A row whose field is aligned with those of the other groups. */
static void addRow(QFormLayout *form, const QString &title, QWidget *field)
{
    static constexpr int titleWidth = 130;
    form->addRow(title, field);
    form->labelForField(field)->setMinimumWidth(titleWidth);
}

CarPanel::CarPanel(Actions *actions, QWidget *parent)
    : Panel(parent), m_actions(actions), m_controls(new QWidget)
{
    auto *controls = new QVBoxLayout(m_controls);
    controls->setContentsMargins(0, 0, 0, 0);
    QFormLayout *form = nullptr;
    QString group;
    for (int i = 0; i < Controls::Count; ++i) {
        const Controls::Row &row = Controls::row(Controls::Control(i));
        if (group != QLatin1String(row.group))
            form = addGroup(controls, tr(row.group));
        group = QLatin1String(row.group);
        addRow(form, tr(row.title), makeControl(Controls::Control(i)));
    }

    auto *all = new QWidget;
    auto *column = new QVBoxLayout(all);
    column->addWidget(m_controls);
    QFormLayout *faults = addGroup(column, tr("Fault injection"));
    for (int i = 0; i < Faults::KindCount; ++i)
        addRow(faults, QLatin1String(Faults::nameOf(Faults::Kind(i))), makeFault(Faults::Kind(i)));
    column->addStretch(1);

    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(all);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(area);
}

QWidget *CarPanel::makeControl(Controls::Control control)
{
    QWidget *made = nullptr;
    if (control == Controls::Prompt)
        made = makeButtons(control);
    else
        made = Controls::row(control).words ? makeChoice(control) : makeNumber(control);
    made->setObjectName(QStringLiteral("car-") + QLatin1String(Controls::row(control).name));
    return made;
}

/** The first entry releases the control. */
QWidget *CarPanel::makeChoice(Controls::Control control)
{
    auto *box = new QComboBox;
    box->addItem(control == Controls::ClimateTrim ? tr("Unchanged") : tr("From trip"));
    box->addItems(Controls::words(control));
    connect(box, qOverload<int>(&QComboBox::activated), this,
            [this, control](int row) { setControl(control, row - 1); });
    return box;
}

QWidget *CarPanel::makeNumber(Controls::Control control)
{
    const Controls::Row &row = Controls::row(control);
    auto *box = new QSpinBox;
    box->setRange(Controls::Automatic, row.highest);
    box->setSpecialValueText(tr("From trip"));
    box->setValue(Controls::Automatic);
    box->setSuffix(QLatin1Char(' ') + QLatin1String(row.unit));
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this,
            [this, control](int value) { setControl(control, value); });
    return box;
}

/** For one-time events. */
QWidget *CarPanel::makeButtons(Controls::Control control)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const QStringList words = Controls::words(control);
    for (int value = 0; value < words.size(); ++value) {
        auto *button = new QPushButton(words[value]);
        button->setObjectName(words[value]);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this,
                [this, control, value] { setControl(control, value); });
    }
    return row;
}

/** Shows a number as the command line takes it: without trailing zeros. */
class FaultBox : public QDoubleSpinBox
{
public:
    QString textFromValue(double value) const override { return locale().toString(value, 'g', 6); }
};

QWidget *CarPanel::makeFault(Faults::Kind kind)
{
    auto *box = new FaultBox;
    const bool inSeconds = Faults::isInSeconds(kind);
    box->setObjectName(QStringLiteral("fault-") + QLatin1String(Faults::nameOf(kind)));
    box->setToolTip(
        inSeconds
            ? tr(Faults::meaningOf(kind))
            : tr("Share of the signals, from 0 to 1, that %1").arg(tr(Faults::meaningOf(kind))));
    box->setKeyboardTracking(false); // not while a number is being typed
    box->setDecimals(3);
    box->setRange(0, Faults::highestValue(kind));
    box->setSingleStep(inSeconds ? 1 : 0.05);
    box->setSuffix(inSeconds ? tr(" s") : QString());
    box->setSpecialValueText(tr("off"));
    m_faults.append(box);
    connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            [this, kind](double value) { m_actions->setFault(kind, value); });
    return box;
}

void CarPanel::setControl(Controls::Control control, int value)
{
    QString error;
    if (!m_actions->setControl(control, value, &error))
        m_controls->setToolTip(error);
}

void CarPanel::setSession(Session *session)
{
    const bool canBeChanged = session->drive()->source()->controls() != nullptr;
    m_controls->setEnabled(canBeChanged);
    m_controls->setToolTip(canBeChanged ? QString() : tr("A recorded drive cannot be changed."));
    Panel::setSession(session);
}

void CarPanel::refresh()
{
    for (int i = 0; i < m_faults.size(); ++i) {
        const QSignalBlocker silent(m_faults[i]);
        if (!m_faults[i]->hasFocus()) // a value may be being typed
            m_faults[i]->setValue(session()->drive()->faults().value(Faults::Kind(i)));
    }
}
