#pragma once

#include "norda/modulecodes.h"

#include <QByteArray>
#include <QStringList>

#include <array>
#include <optional>

class QAbstractButton;
class QLabel;

namespace norda {

/** A pair of module-defined keys with their captions. */
struct CustomControls
{
    static constexpr int Count = 2;

    std::array<QAbstractButton *, Count> keys;
    std::array<QLabel *, Count> captions;
};

/**
 * Shows the keys that the module defines, with its captions and states.
 *
 * A null state array hides both pairs, one state shows the first pair only, two or more show both;
 * an empty array that is not null leaves the visibility as it is. Captions and states beyond the
 * second are ignored, a caption that is missing is empty.
 */
void applyCustomControlLabels(const CustomControls &controls, const QStringList &captions,
                              const QByteArray &states);

/** The module's key of this id, 0 or 1; none for any other id. */
std::optional<ModuleKey> moduleKey(int id);

} // namespace norda
