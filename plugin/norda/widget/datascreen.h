#pragma once

#include "adaptorbinding.h"
#include "barscreen.h"
#include "norda/modulecodes.h"

class QAbstractButton;
class QButtonGroup;
class ScrollLabel;

namespace norda {

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

/** What a data screen connects and disconnects as a host asks for it. */
struct StepBindings
{
    constexpr StepBindings() = default;
    /** @param last  connected for life, but always after the others: what it shows stays */
    template <size_t Count>
    constexpr StepBindings(const AdaptorBinding (&rows)[Count],
                           const AdaptorBinding *last = nullptr)
        : rows(rows), count(Count), last(last)
    {
    }

    const AdaptorBinding *begin() const { return rows; }
    const AdaptorBinding *end() const { return rows + count; }

    const AdaptorBinding *rows = nullptr;
    size_t count = 0;
    const AdaptorBinding *last = nullptr;
};

/**
 * What the four data screens (gauges, vehicle, parking, climate) have in common: following the
 * module's display type, its lists and popups, two module-defined keys, the settings key, and the
 * report of the head unit's source.
 *
 * A screen hands in its page on the navigation bar, its commands and its step signals, and keeps
 * the slot names that hosts know it by; where those differ from the ones here, it forwards them.
 */
class DataScreen : public BarScreen
{
    Q_OBJECT
public:
    ~DataScreen() override;

public slots:
    /** Connects the step signals; one that is connected stays as it is. */
    virtual void connectVtqAdaptor();
    /** Drops what `connectVtqAdaptor()` connected, and nothing else. */
    virtual void disconnectVtqAdaptor();

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

    /** Reports the head unit's current source and display to the module. For the host to invoke. */
    void UpdataVtqSourceDspl();

protected:
    /** @param steps  tables that live as long as the program */
    DataScreen(BarPage page, const ScreenCommands &commands, const StepBindings &steps,
               QWidget *parent);

    /** Makes the receiver that is to come after all steps. */
    void connectLastReceiver();
    /**
     * Texts come from the car: the form's labels show them letter for letter, never as markup.
     * Their size is the form's, so that a new text does not make the page look for another layout.
     */
    void setUpLabels();
    /** Makes a pair of keys the screen's module-defined ones, ids 0 and 1. */
    QButtonGroup *groupCustomKeys(QAbstractButton *first, QAbstractButton *second);
    /** Has texts that are too long scroll through, again and again. */
    void scrollLongTexts(const QList<ScrollLabel *> &labels);

    /** The command of the module-defined keys: that of the zone on view where there are two. */
    virtual ScreenCommands::ControlCommand customControl() const;
    /** Sends the command of a module-defined key; an id without a key sends nothing. */
    void sendCustomControl(int id, TouchAction action);

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
    const ScreenCommands m_commands;
    const StepBindings m_steps;
    DisplayWish m_wanted;
};

} // namespace norda
