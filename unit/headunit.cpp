#include "headunit.h"

#include "statuscolumn.h"

HeadUnit::HeadUnit(QObject *parent) : QObject(parent), m_windows(&m_screen), m_audio(&m_windows)
{
    StatusColumn *column = m_screen.statusColumn();
    connect(&m_audio, &AudioStage::changed, column,
            [this, column] { column->setVolumeShown(m_audio.isVolumeShown()); });
    const ServiceConnection *link = ServiceConnection::instance();
    connect(link, &ServiceConnection::stateChanged, this, &HeadUnit::showLink);
    showLink(link->state());
}

void HeadUnit::showLink(ServiceConnection::State state)
{
    m_screen.statusColumn()->setModuleMissing(state == ServiceConnection::Waiting);
}

HeadUnit::~HeadUnit() = default;
