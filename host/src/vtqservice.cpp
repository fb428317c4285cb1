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

VtqService::VtqService() : m_parkingZones(allPresent(1, 8))
{
    m_frontFeatures = {{0, allPresent(0, 7)}, {1, allPresent(0, 7)}};
    m_rearFeatures = m_frontFeatures;
}

VtqService *VtqService::instance()
{
    static auto *const service = new VtqService;
    return service;
}

QMap<int, bool> VtqService::getFrontClimateControlFeatures(int group)
{
    CallLog::report("norda::VtqService::getFrontClimateControlFeatures", group);
    return m_frontFeatures.value(group);
}

QMap<int, bool> VtqService::getRearClimateControlFeatures(int group)
{
    CallLog::report("norda::VtqService::getRearClimateControlFeatures", group);
    return m_rearFeatures.value(group);
}

void VtqService::setClimateRearZone(bool rear)
{
    CallLog::report("norda::VtqService::setClimateRearZone", rear);
}

QMap<int, bool> VtqService::getParkingAssistZones()
{
    CallLog::report("norda::VtqService::getParkingAssistZones");
    return m_parkingZones;
}

void VtqService::syncRadioStatus(unsigned char source, unsigned char kind, unsigned char volume,
                                 unsigned char state, unsigned char left, unsigned char right)
{
    CallLog::report("norda::VtqService::syncRadioStatus", source, kind, volume, state, left, right);
}

template <typename Features>
void VtqService::change(Features *features, const Features &to)
{
    if (*features == to)
        return;
    *features = to;
    ++m_featuresRevision;
}

void VtqService::setFrontClimateControlFeatures(int group, const QMap<int, bool> &features)
{
    change(&m_frontFeatures[group], features);
}

void VtqService::setRearClimateControlFeatures(int group, const QMap<int, bool> &features)
{
    change(&m_rearFeatures[group], features);
}

void VtqService::setParkingAssistZones(const QMap<int, bool> &zones)
{
    change(&m_parkingZones, zones);
}

} // namespace norda
