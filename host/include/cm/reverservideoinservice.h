#pragma once

#include "nordahost_global.h"

#include <QObject>

namespace cm {

/** The service that shows the reversing camera and its warning overlay. */
class NORDAHOST_EXPORT ReverserVideoInService : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static ReverserVideoInService *getInstance();

    /** Redraws the warning overlay after the view changed. */
    void updateWarning();

signals:
    /** The warning overlay is to be laid out again. */
    void warningUpdated();

private:
    ReverserVideoInService();
};

} // namespace cm
