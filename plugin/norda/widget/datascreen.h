#pragma once

#include "norda/vtqadaptor.h"

#include <QWidget>

class QAbstractButton;
class QButtonGroup;

namespace norda {

class Vantiq_Bar_Widget;

/** The commands by which one zone of a data screen talks to the module. */
struct ScreenCommands
{
    using Command = void (VtqAdaptor::*)();
    using ControlCommand = void (VtqAdaptor::*)(unsigned char control, unsigned char action);

    Command listBack;
    Command listPrevious;
    Command listNext;
    Command settings;
    Command requestInfo;
    ControlCommand customControl;
};

/**
 * What the four data screens (gauges, vehicle, parking, climate) have in common: following the
 * module's display type, its lists and popups, two module-defined keys, the settings key, a beep
 * for every touch, and the report of the head unit's source.
 *
 * A screen hands in its page on the navigation bar and its commands, and keeps the slot names that
 * hosts know it by; where those differ from the ones here, it forwards them.
 */
class DataScreen : public QWidget
{
    Q_OBJECT
public:
    ~DataScreen() override;

public slots:
    /** The host enters the screen: the module is asked for its whole state. */
    virtual void onEnter();

    virtual void onPopup(const QString &title, const QStringList &texts, const QStringList &values,
                         const QByteArray &bytes);
    virtual void onPopupKeyClicked(int key);
    void createPopup(bool show);
    void createListview(bool show);

    void onListBackClicked();
    void onListUpClicked();
    void onListDnClicked();
    void onListItemClicked(int row);
    void onListCustomItemPressed(int item);
    void onListCustomItemReleased(int item);
    virtual void onListCustomItemClicked(int item);
    virtual void onShowListview();

    void onButtonPressed(int id);
    void onButtonClicked(int id);
    void onButtonReleased(int id);
    virtual void onSettingsClicked();

    void soundClickedBeep();
    /** Reports the head unit's current source and display to the module. For the host to invoke. */
    void UpdataVtqSourceDspl();

protected:
    enum ControlAction : unsigned char { ControlPressed = 1, ControlReleased = 2 };

    /** @param page  the screen's page on the navigation bar */
    DataScreen(int page, const ScreenCommands &commands, QWidget *parent);

    VtqAdaptor *adaptor() const { return m_adaptor; }
    void createNavigationBar();
    /** Texts come from the car: the form's labels show them letter for letter, never as markup. */
    void showTextsLiterally();
    /** Makes a pair of keys the screen's module-defined ones, ids 0 and 1. */
    QButtonGroup *groupCustomKeys(QAbstractButton *first, QAbstractButton *second);

    /** Sends a command; without an adaptor nothing is sent. */
    template <typename... Parameters, typename... Arguments>
    void send(void (VtqAdaptor::*command)(Parameters...), Arguments... arguments)
    {
        if (m_adaptor)
            (m_adaptor->*command)(arguments...);
    }
    /** The command of the module-defined keys: that of the zone on view where there are two. */
    virtual ScreenCommands::ControlCommand customControl() const;
    /** Sends the command of a module-defined key; an id without a key sends nothing. */
    void sendCustomControl(int id, ControlAction action);

    /** What a display type asks for. */
    struct DisplayWish
    {
        bool list = false;
        bool popup = false;
    };
    /** Neither for an unknown type, which is logged. */
    static DisplayWish displayWish(unsigned char type);
    /** Runs the popup step, then the list step, as a display type asks for it. */
    void followDisplayType(unsigned char type);

    void showEvent(QShowEvent *event) override;

private:
    const int m_page;
    const ScreenCommands m_commands;
    VtqAdaptor *const m_adaptor;
    Vantiq_Bar_Widget *m_bar = nullptr;
    DisplayWish m_wanted;
};

} // namespace norda
