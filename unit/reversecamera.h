#pragma once

#include <QElapsedTimer>
#include <QObject>

class HeadUnit;

/**
 * Shows the rear camera while the module reports reverse gear, over whatever page is open. The
 * driver may close it or open another page meanwhile; it then stays closed until reverse gear is
 * selected again. A page that comes late, by a key touched before, opens below it.
 */
class ReverseCamera : public QObject
{
    Q_OBJECT
public:
    explicit ReverseCamera(HeadUnit *unit);
    ~ReverseCamera() override;

private:
    void onGear(int gear);
    void show();
    void onLeft();

    HeadUnit *m_unit;
    bool m_isReverse = false;
    bool m_hasOpened = false; // not the driver
    QElapsedTimer m_shown;
};
