#include "norda/vtqservice.h"

#include "calllog.h"

namespace norda {

static QMap<int, bool> allPresent(int first, int last)
{
    QMap<int, bool> features;
    for (int feature = first; feature <= last; ++feature)
        features.insert(feature, true);
    return features;
}

static constexpr char frontQuery[] = "getFrontClimateControlFeatures";
static constexpr char rearQuery[] = "getRearClimateControlFeatures";
static constexpr char parkingQuery[] = "getParkingAssistZones";
static constexpr int onlyGroup = 0; // of the parking zones

VtqService::VtqService()
{
    const Groups climate = {{0, allPresent(0, 7)}, {1, allPresent(0, 7)}};
    m_features = {{frontQuery, climate},
                  {rearQuery, climate},
                  {parkingQuery, {{onlyGroup, allPresent(1, 8)}}}};
}

VtqService *VtqService::instance()
{
    static auto *const service = new VtqService;
    return service;
}

QMap<int, bool> VtqService::featuresOf(const QByteArray &query, int group) const
{
    return m_features.value(query).value(group);
}

void VtqService::setFeaturesOf(const QByteArray &query, int group, const QMap<int, bool> &features)
{
    const auto groups = m_features.find(query);
    if (groups == m_features.end() || !groups->contains(group) || groups->value(group) == features)
        return;
    groups->insert(group, features);
    ++m_featuresRevision;
}

QMap<int, bool> VtqService::getFrontClimateControlFeatures(int group)
{
    CallLog::report("norda::VtqService::getFrontClimateControlFeatures", group);
    return featuresOf(frontQuery, group);
}

QMap<int, bool> VtqService::getRearClimateControlFeatures(int group)
{
    CallLog::report("norda::VtqService::getRearClimateControlFeatures", group);
    return featuresOf(rearQuery, group);
}

void VtqService::setClimateRearZone(bool rear)
{
    CallLog::report("norda::VtqService::setClimateRearZone", rear);
}

QMap<int, bool> VtqService::getParkingAssistZones()
{
    CallLog::report("norda::VtqService::getParkingAssistZones");
    return featuresOf(parkingQuery, onlyGroup);
}

void VtqService::syncRadioStatus(unsigned char source, unsigned char kind, unsigned char volume,
                                 unsigned char state, unsigned char left, unsigned char right)
{
    CallLog::report("norda::VtqService::syncRadioStatus", source, kind, volume, state, left, right);
}

void VtqService::setFrontClimateControlFeatures(int group, const QMap<int, bool> &features)
{
    setFeaturesOf(frontQuery, group, features);
}

void VtqService::setRearClimateControlFeatures(int group, const QMap<int, bool> &features)
{
    setFeaturesOf(rearQuery, group, features);
}

void VtqService::setParkingAssistZones(const QMap<int, bool> &zones)
{
    setFeaturesOf(parkingQuery, onlyGroup, zones);
}

} // namespace norda
