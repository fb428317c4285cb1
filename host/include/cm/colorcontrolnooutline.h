#pragma once

#include "nordahost_global.h"

#include <QString>

class QWidget;

namespace cm {

/** Colours widgets in the head unit's current colour scheme, without a focus outline. */
class NORDAHOST_EXPORT ColorControlNoOutLine
{
public:
    /**
     * Gives a widget the colours of a group.
     * @param widget  what to colour
     * @param group   the group's name, for instance "ColorGroup7"; kept as the widget's dynamic
     *                property "colorGroup". An unknown group leaves the widget as it is.
     */
    static void setColorGroup(QWidget *widget, const QString &group);
};

} // namespace cm
