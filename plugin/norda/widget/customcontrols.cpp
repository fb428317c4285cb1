#include "customcontrols.h"

#include <QAbstractButton>
#include <QLabel>

namespace norda {

struct ControlState
{
    bool enabled;
    bool checked;
};

// By state byte.
static constexpr ControlState controlStates[] = {{false, false}, {true, false}, {true, true}};

static constexpr ModuleKey moduleKeys[CustomControls::Count] = {ModuleKey::First,
                                                                ModuleKey::Second};

static void applyState(QAbstractButton *key, unsigned char state)
{
    if (state >= std::size(controlStates))
        return;
    key->setEnabled(controlStates[state].enabled);
    key->setChecked(controlStates[state].checked);
}

static void showPairs(const CustomControls &controls, int shown)
{
    for (int i = 0; i < CustomControls::Count; ++i) {
        controls.keys[size_t(i)]->setVisible(i < shown);
        controls.captions[size_t(i)]->setVisible(i < shown);
    }
}

void applyCustomControlLabels(const CustomControls &controls, const QStringList &captions,
                              const QByteArray &states)
{
    if (states.isNull() || !states.isEmpty())
        showPairs(controls, states.size());

    for (int i = 0; i < qMin(states.size(), CustomControls::Count); ++i) {
        controls.captions[size_t(i)]->setText(captions.value(i));
        applyState(controls.keys[size_t(i)], static_cast<unsigned char>(states.at(i)));
    }
}

std::optional<ModuleKey> moduleKey(int id)
{
    if (id < 0 || id >= CustomControls::Count)
        return std::nullopt;
    return moduleKeys[id];
}

} // namespace norda
