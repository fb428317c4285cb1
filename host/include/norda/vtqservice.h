#pragma once

#include "nordahost_global.h"

#include <QByteArray>
#include <QMap>
#include <QObject>

namespace norda {

/** Feature queries, status settings and notices of the vehicle service. Fetched at each use. */
class NORDAHOST_EXPORT VtqService : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static VtqService *instance();
    /**
     * What a query answers, without a report to the call log: for what brings the features from one
     * process to another.
     * @param query  the query's name, such as "getParkingAssistZones"
     * @param group  the query's group, 0 for one that has none
     */
    QMap<int, bool> featuresOf(const QByteArray &query, int group) const;
    /** Sets what a query answers, by its name and group. A name that no query has is ignored. */
    void setFeaturesOf(const QByteArray &query, int group, const QMap<int, bool> &features);
    /** Rises whenever the queries begin to answer differently. */
    int featuresRevision() const { return m_featuresRevision; }

public slots:
    /**
     * Which controls the car's climate control has.
     * @param group  0 or 1; any other group is empty
     * @return feature number (0 to 7) to presence; a number that is missing is absent
     */
    QMap<int, bool> getFrontClimateControlFeatures(int group);
    /** The same for the second zone. */
    QMap<int, bool> getRearClimateControlFeatures(int group);
    /** Tells the module which climate zone is on view. @param rear  true for the second zone */
    void setClimateRearZone(bool rear);
    /** Which parking sensor zones the car has: zone number (1 to 8) to presence. */
    QMap<int, bool> getParkingAssistZones();
    /**
     * Reports the head unit's current source and display to the module.
     * @param source  the module's source code; 0 when the display shows no source
     * @param kind, volume, state, left, right  as the module's protocol defines them
     */
    void syncRadioStatus(unsigned char source, unsigned char kind, unsigned char volume,
                         unsigned char state, unsigned char left, unsigned char right);

public:
    /** What the queries answer from now on. For the vehicle module, benches and tests. */
    Q_INVOKABLE
    void setFrontClimateControlFeatures(int group, const QMap<int, bool> &features);
    /** The same for the second zone. */
    Q_INVOKABLE
    void setRearClimateControlFeatures(int group, const QMap<int, bool> &features);
    /** What `getParkingAssistZones()` answers from now on. */
    Q_INVOKABLE
    void setParkingAssistZones(const QMap<int, bool> &zones);

signals:
    /**
     * The module interrupts the audio, or its interruption is over. For the host, which hands it to
     * the slot `handingVTQAudioInterrupt` of a voice source.
     * @param kind      0 over, 2 voice information, 3 voice recognition, 4 warning tone
     * @param location  bit 0 front left, bit 1 front right, bit 2 rear right, bit 3 rear left, bit
     * 4 centre, bit 5 subwoofer
     */
    void audioInterruptNotify(unsigned char kind, unsigned char location);

private:
    VtqService();

    using Groups = QMap<int, QMap<int, bool>>;

    QMap<QByteArray, Groups> m_features; // by query
    int m_featuresRevision = 0;
};

} // namespace norda
