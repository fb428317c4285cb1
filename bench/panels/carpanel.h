#pragma once

#include "faults.h"
#include "panels/panel.h"
#include "simulator/controls.h"

#include <QVector>

class Actions;
class QDoubleSpinBox;
class QPushButton;
class QVBoxLayout;

/** Overrides for the simulated car, and fault injection. */
class CarPanel : public Panel
{
    Q_OBJECT
public:
    explicit CarPanel(Actions *actions, QWidget *parent = nullptr);

    void setSession(Session *session) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void refresh() override;

private:
    struct Row
    {
        QWidget *title;
        QWidget *field;
    };

    void makeControls();
    void makeFaults(QVBoxLayout *column);
    QWidget *makeControl(module::Controls::Control control);
    QWidget *makeChoice(module::Controls::Control control);
    QWidget *makeNumber(module::Controls::Control control);
    QWidget *makeButtons(module::Controls::Control control);
    QWidget *makeFault(module::Faults::Kind kind);
    static void showControl(const Row &row, int value);
    void releaseAll();
    void setControl(module::Controls::Control control, int value);

    Actions *m_actions;
    QPushButton *m_releaseAll;
    QWidget *m_controls;
    QVector<Row> m_rows; ///< by control
    QVector<QDoubleSpinBox *> m_faults;
};
