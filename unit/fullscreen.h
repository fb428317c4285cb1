#pragma once

#include <QWidget>

class HeadUnit;

/**
 * The whole display: the unit's screen in its own size, in the middle of black. Keys of the unit's
 * housing go to the open page; Back goes back.
 */
class FullScreen : public QWidget
{
    Q_OBJECT
public:
    explicit FullScreen(HeadUnit *unit);
    /** Leaves the screen to the head unit. */
    ~FullScreen() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    HeadUnit *m_unit;
};
