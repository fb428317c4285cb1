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

    /** What is being driven, in a word. */
    void setSource(const QString &text);
    /** What the driver should know, in place of the source; empty for nothing. */
    void setNotice(const QString &text);
    const QString &notice() const { return m_notice; }
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

private:
    void waitForNextMinute();

    QTime m_time;
    QBasicTimer m_minute;
    QString m_source;
    QString m_notice;
    bool m_volumeShown = true;
};
