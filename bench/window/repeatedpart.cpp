#include "window/repeatedpart.h"

#include "drive.h"

RepeatedPart::RepeatedPart(QObject *parent) : QObject(parent) {}

void RepeatedPart::setDrive(module::Drive *drive)
{
    m_drive = drive;
    connect(drive, &module::Drive::positionChanged, this, &RepeatedPart::onPosition);
    clear();
}

void RepeatedPart::beginHere()
{
    if (!m_drive)
        return;
    m_fromMs = m_drive->nowMs();
    if (m_toMs <= m_fromMs)
        m_toMs = -1;
    emit changed();
}

/** Without a beginning it is repeated from the start of the drive. */
void RepeatedPart::endHere()
{
    if (!m_drive || m_drive->nowMs() <= qMax<qint64>(0, m_fromMs))
        return;
    m_fromMs = qMax<qint64>(0, m_fromMs);
    m_toMs = m_drive->nowMs();
    emit changed();
    if (m_drive->isPlaying())
        emit momentRequested(m_fromMs);
}

void RepeatedPart::clear()
{
    m_fromMs = m_toMs = -1;
    emit changed();
}

void RepeatedPart::onPosition(qint64 ms)
{
    if (m_toMs >= 0 && ms >= m_toMs && m_drive->isPlaying())
        emit momentRequested(m_fromMs);
}
