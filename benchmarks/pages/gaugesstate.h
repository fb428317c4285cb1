#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

/** What one gauge shows. */
class GaugeState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(QString value READ value NOTIFY valueChanged)
    Q_PROPERTY(int position READ position NOTIFY positionChanged)
public:
    explicit GaugeState(const char *title, QObject *parent);

    QString title() const { return m_title; }
    QString value() const { return m_value; }
    int position() const { return m_position; }

    void setTitle(const QString &title);
    void show(const QString &value, int position);

signals:
    void titleChanged();
    void valueChanged();
    void positionChanged();

private:
    QString m_title;
    QString m_value;
    int m_position = 0;
};

/** What the page shows: the module's signals arrive here, the page is bound to its properties. */
class GaugesState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(GaugeState *centre READ centre CONSTANT)
    Q_PROPERTY(GaugeState *topLeft READ topLeft CONSTANT)
    Q_PROPERTY(GaugeState *topRight READ topRight CONSTANT)
    Q_PROPERTY(GaugeState *bottomLeft READ bottomLeft CONSTANT)
    Q_PROPERTY(GaugeState *bottomRight READ bottomRight CONSTANT)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString peak READ peak NOTIFY peakChanged)
    Q_PROPERTY(bool peakShown READ isPeakShown NOTIFY peakShownChanged)
    Q_PROPERTY(bool shifts READ shifts NOTIFY shiftsChanged)
public:
    explicit GaugesState(QObject *parent = nullptr);

    GaugeState *centre() { return &m_centre; }
    GaugeState *topLeft() { return &m_topLeft; }
    GaugeState *topRight() { return &m_topRight; }
    GaugeState *bottomLeft() { return &m_bottomLeft; }
    GaugeState *bottomRight() { return &m_bottomRight; }
    QString status() const { return m_status; }
    QString peak() const { return m_peak; }
    bool isPeakShown() const { return m_peakShown; }
    bool shifts() const { return m_shifts; }

    void setTitles(const QStringList &titles);
    void setEngineSpeed(const QString &value, int position);
    void setProperties(const QList<int> &properties);
    void setStatus(const QString &status);
    void setPeak(const QString &peak);
    void setPeakShown(bool shown);
    void setShifts(bool shifts);

signals:
    void statusChanged();
    void peakChanged();
    void peakShownChanged();
    void shiftsChanged();

private:
    GaugeState m_centre;
    GaugeState m_topLeft;
    GaugeState m_topRight;
    GaugeState m_bottomLeft;
    GaugeState m_bottomRight;
    QString m_status;
    QString m_peak = QStringLiteral("READY");
    bool m_peakShown = true;
    bool m_shifts = false;
};
