#include "panels/carpanel.h"

#include "session/actions.h"
#include "session/session.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
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
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    column->addWidget(box);
    return form;
}

/** A row whose field is aligned with those of the other groups. @return its title */
static QWidget *addRow(QFormLayout *form, const QString &title, QWidget *field)
{
    static constexpr int titleWidth = 130;
    form->addRow(title, field);
    form->labelForField(field)->setMinimumWidth(titleWidth);
    return form->labelForField(field);
}

CarPanel::CarPanel(Actions *actions, QWidget *parent)
    : Panel(parent)
    , m_actions(actions)
    , m_releaseAll(new QPushButton(tr("Release all")))
    , m_controls(new QWidget)
{
    m_releaseAll->setObjectName(QStringLiteral("release-all"));
    m_releaseAll->setToolTip(tr("Let the car follow its trip again in everything"));
    connect(m_releaseAll, &QPushButton::clicked, this, &CarPanel::releaseAll);
    makeControls();

    auto *all = new QWidget;
    auto *column = new QVBoxLayout(all);
    column->addWidget(m_controls);
    makeFaults(column);
    column->addStretch(1);
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(all);

    auto *top = new QHBoxLayout;
    top->setContentsMargins(11, 11, 11, 0);
    top->addWidget(m_releaseAll);
    top->addStretch(1);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addLayout(top);
    outer->addWidget(area);
    for (QWidget *field : all->findChildren<QWidget *>())
        field->installEventFilter(this);
}

/** The wheel scrolls the panel, and changes only the field that is being used. */
bool CarPanel::eventFilter(QObject *watched, QEvent *event)
{
    const auto *field = static_cast<QWidget *>(watched);
    if (event->type() != QEvent::Wheel || field->hasFocus())
        return false;
    event->ignore();
    return true;
}

void CarPanel::makeControls()
{
    auto *column = new QVBoxLayout(m_controls);
    column->setContentsMargins(0, 0, 0, 0);
    QFormLayout *form = nullptr;
    QString group;
    for (int i = 0; i < Controls::Count; ++i) {
        const Controls::Row &row = Controls::row(Controls::Control(i));
        if (group != QLatin1String(row.group))
            form = addGroup(column, tr(row.group));
        group = QLatin1String(row.group);
        QWidget *field = makeControl(Controls::Control(i));
        m_rows.append(Row{addRow(form, tr(row.title), field), field});
    }
}

void CarPanel::makeFaults(QVBoxLayout *column)
{
    QFormLayout *form = addGroup(column, tr("Fault injection"));
    for (int i = 0; i < Faults::KindCount; ++i)
        addRow(form, QLatin1String(Faults::nameOf(Faults::Kind(i))), makeFault(Faults::Kind(i)));
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
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(box, qOverload<int>(&QComboBox::activated), this,
            [this, control](int row) { setControl(control, row ? row - 1 : Controls::Automatic); });
    return box;
}

/** A number that can be released, which is one step below its lowest value. */
class NumberBox : public QSpinBox
{
public:
    explicit NumberBox(const Controls::Row &row) : m_middle((row.lowest + row.highest) / 2)
    {
        static constexpr int steps = 100;
        setRange(row.lowest - 1, row.highest);
        setSingleStep(qMax(1, (row.highest - row.lowest) / steps));
        setSuffix(QLatin1Char(' ') + QString::fromUtf8(row.unit));
    }
    /** The first step begins in the middle. */
    void stepBy(int steps) override
    {
        if (value() == minimum())
            setValue(m_middle);
        else
            QSpinBox::stepBy(steps);
    }

private:
    int m_middle;
};

static constexpr char isTyped[] = "isTyped";

/** Takes a number when it has been typed, and not digit by digit. */
template <typename Box>
static void takeWhole(Box *box)
{
    const auto done = [box] { box->setProperty(isTyped, false); };
    box->setKeyboardTracking(false);
    QObject::connect(box->template findChild<QLineEdit *>(), &QLineEdit::textEdited, box,
                     [box] { box->setProperty(isTyped, true); });
    QObject::connect(box, &Box::editingFinished, box, done);
    QObject::connect(box, qOverload<decltype(box->value())>(&Box::valueChanged), box, done);
}

QWidget *CarPanel::makeNumber(Controls::Control control)
{
    auto *box = new NumberBox(Controls::row(control));
    box->setSpecialValueText(tr("From trip"));
    box->setValue(box->minimum());
    takeWhole(box);
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, [this, control, box](int value) {
        setControl(control, value == box->minimum() ? Controls::Automatic : value);
    });
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
    takeWhole(box);
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

void CarPanel::releaseAll()
{
    const Controls *controls = session()->drive()->source()->controls();
    for (int i = 0; controls && i < Controls::Count; ++i) {
        if (controls->isOverridden(Controls::Control(i)))
            setControl(Controls::Control(i), Controls::Automatic);
    }
    refresh();
}

void CarPanel::refresh()
{
    const Controls released;
    const Controls *controls = session()->drive()->source()->controls();
    int overrides = 0;
    for (int i = 0; i < Controls::Count; ++i) {
        const int value = (controls ? *controls : released).value(Controls::Control(i));
        overrides += value != Controls::Automatic;
        showControl(m_rows[i], value);
    }
    m_releaseAll->setEnabled(overrides > 0);
    m_releaseAll->setText(overrides ? tr("Release all (%1)").arg(overrides) : tr("Release all"));
    for (int i = 0; i < m_faults.size(); ++i) {
        const QSignalBlocker silent(m_faults[i]);
        if (!m_faults[i]->property(isTyped).toBool())
            m_faults[i]->setValue(session()->drive()->faults().value(Faults::Kind(i)));
    }
}

/** Whoever has set it: this panel, a scenario or another session. */
void CarPanel::showControl(const Row &row, int value)
{
    const bool isOverridden = value != Controls::Automatic;
    const QSignalBlocker silent(row.field);
    if (auto *choice = qobject_cast<QComboBox *>(row.field)) {
        if (!choice->view()->isVisible())
            choice->setCurrentIndex(isOverridden ? value + 1 : 0);
    } else if (auto *number = qobject_cast<QSpinBox *>(row.field)) {
        if (!number->property(isTyped).toBool())
            number->setValue(isOverridden ? value : number->minimum());
    }
    QFont font = row.title->font();
    font.setBold(isOverridden);
    row.title->setFont(font);
    row.title->setForegroundRole(isOverridden ? QPalette::Link : QPalette::WindowText);
}
