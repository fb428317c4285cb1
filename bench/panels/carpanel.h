#pragma once

#include "faults.h"
#include "panels/panel.h"
#include "simulator/controls.h"

#include <QVector>

class Actions;
class QDoubleSpinBox;

/** The simulated car in somebody's hands, and what its module does wrong on demand. */
class CarPanel : public Panel
{
    Q_OBJECT
public:
    explicit CarPanel(Actions *hand, QWidget *parent = nullptr);

    void setSession(Session *session) override;

protected:
    void refresh() override;

private:
    QWidget *makeControl(module::Controls::Control control);
    QWidget *makeChoice(module::Controls::Control control);
    QWidget *makeNumber(module::Controls::Control control);
    QWidget *makeButtons(module::Controls::Control control);
    QWidget *makeFault(module::Faults::Kind kind);
    void hold(module::Controls::Control control, int value);

    Actions *m_actions;
    QWidget *m_controls;
    QVector<QDoubleSpinBox *> m_faults;
};
