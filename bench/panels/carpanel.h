#pragma once

#include "faults.h"
#include "simulator/controls.h"

#include <QPointer>
#include <QVector>
#include <QWidget>

class Operator;
class QDoubleSpinBox;
class Session;

/** The simulated car in somebody's hands, and what its module does wrong on demand. */
class CarPanel : public QWidget
{
    Q_OBJECT
public:
    explicit CarPanel(Operator *hand, QWidget *parent = nullptr);

    void setSession(Session *session);

private:
    QWidget *makeControl(module::Controls::Control control);
    QWidget *makeChoice(module::Controls::Control control);
    QWidget *makeNumber(module::Controls::Control control);
    QWidget *makeButtons(module::Controls::Control control);
    QWidget *makeFault(module::Faults::Kind kind);
    void hold(module::Controls::Control control, int value);
    void showFaults();

    Operator *m_hand;
    QPointer<Session> m_session;
    QWidget *m_controls;
    QVector<QDoubleSpinBox *> m_faults;
};
