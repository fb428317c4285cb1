#pragma once

#include <QBasicTimer>
#include <QTime>
#include <QWidget>

/** The head unit's status bar: a column at the left with the time and what the unit is doing. */
class StatusColumn : public QWidget
{
    Q_OBJECT
public:
    static constexpr int Width = 128;

    explicit StatusColumn(QWidget *parent);

    /** What feeds the pages, shown in a word. */
    enum class Source { Unstated, Simulator, Recorded, Live };
    void setSource(Source source);
    /** A notice takes the place of the source. */
    void setModuleMissing(bool missing);
    bool isModuleMissing() const { return m_moduleMissing; }
    /** Shows this time from now on instead of the machine's. */
    void setTime(QTime time);
    /** The volume hides while the module speaks. */
    void setVolumeShown(bool shown);
    bool isVolumeShown() const { return m_volumeShown; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void waitForNextMinute();
    void drawFoot(QPainter *painter) const;

    QTime m_time;
    QBasicTimer m_minute;
    Source m_source = Source::Unstated;
    bool m_moduleMissing = false;
    bool m_volumeShown = true;
};
