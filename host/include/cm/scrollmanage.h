#pragma once

#include "nordahost_global.h"

#include <QObject>

class QScrollArea;

namespace cm {

/** Gives a scroll area the touch scrolling of the head unit. */
class NORDAHOST_EXPORT ScrollManage : public QObject
{
    Q_OBJECT
public:
    /**
     * @param area       the scroll area; owns the manager
     * @param direction  1 vertical, 0 horizontal
     * @param mode       0 kinetic: the content follows the finger and glides on
     */
    ScrollManage(QScrollArea *area, int direction, int mode);
    ~ScrollManage() override;
};

} // namespace cm
