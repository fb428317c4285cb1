#pragma once

#include "norda/pages.h"
#include "norda/vtqadaptor.h"

#include <QWidget>

namespace norda {

class Vantiq_Bar_Widget;

/**
 * What all six screens have in common: the navigation bar with the screen's page marked, a beep for
 * every touch, and the adaptor to the vehicle module.
 */
class BarScreen : public QWidget
{
    Q_OBJECT
public:
    ~BarScreen() override;

public slots:
    void soundClickedBeep();

protected:
    BarScreen(BarPage page, QWidget *parent);

    VtqAdaptor *adaptor() const { return m_adaptor; }
    /** To be called after the form is set up, so that the bar lies on top. */
    void createNavigationBar();
    /** Asks the module for its configuration menu. */
    void requestMenu();

    /** Sends a command; without an adaptor nothing is sent. */
    template <typename... Parameters, typename... Arguments>
    void send(void (VtqAdaptor::*command)(Parameters...), Arguments... arguments)
    {
        if (m_adaptor)
            (m_adaptor->*command)(arguments...);
    }

    /** Connects a signal of the module for as long as the screen lives, once. */
    template <typename Signal, typename Screen, typename... Arguments>
    void receive(Signal signal, void (Screen::*slot)(Arguments...))
    {
        if (m_adaptor)
            connect(m_adaptor, signal, static_cast<Screen *>(this), slot, Qt::UniqueConnection);
    }

    void showEvent(QShowEvent *event) override;

private:
    const BarPage m_page;
    VtqAdaptor *const m_adaptor;
    Vantiq_Bar_Widget *m_bar = nullptr;
};

} // namespace norda
