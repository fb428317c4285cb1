#pragma once

#include "simulator/emissionqueue.h"
#include "simulator/menu.h"
#include "snapshot.h"
#include "vehiclesource.h"

namespace module {

/**
 * The module of a recorded drive. The drive itself cannot answer; the module reports what the drive
 * lacks as unknown, repeats the state snapshot to a page that opens late, and has the menu and the
 * versions of the simulated car's module.
 */
class RecordedModule : public VehicleSource
{
public:
    enum class Answers {
        New,    ///< the drive holds no answers of a module
        Repeats ///< the drive holds what the module answered then
    };
    RecordedModule(std::unique_ptr<VehicleSource> drive, Answers answers);
    ~RecordedModule() override;

    QString title() const override { return m_drive->title(); }
    qint64 durationMs() const override { return m_drive->durationMs(); }
    qint64 liveMs() const override { return m_drive->liveMs(); }
    void setWakeUp(const std::function<void()> &wakeUp) override { m_drive->setWakeUp(wakeUp); }
    void setReleased(bool isReleased) override { m_drive->setReleased(isReleased); }
    qint64 nextDueMs() const override;
    Emission take() override;
    void seek(qint64 ms) override;
    bool command(qint64 nowMs, const QString &operation, const QVariantList &arguments) override;
    bool opensPages() const override { return m_drive->opensPages(); }
    bool isCatchingUp() const override;
    QVector<Sample> samplesOf(qint64 afterMs, qint64 untilMs) const override
    {
        return m_drive->samplesOf(afterMs, untilMs);
    }
    QStringList findings() const override { return m_drive->findings(); }
    QVector<Findings> findingsByPage() const override { return m_drive->findingsByPage(); }
    QJsonObject statistics() const override { return m_drive->statistics(); }

private:
    void begin(qint64 ms);
    qint64 nextOfDriveMs() const;
    bool isAnswerDue() const;
    Emission takeFromDrive();
    void remember(const Emission &emission);
    void repeat(qint64 atMs, int page);

    std::unique_ptr<VehicleSource> m_drive;
    QVector<Emission> m_ahead; // taken from the drive before their time
    EmissionQueue m_answers;
    Snapshot<Emission> m_state;
    Menu m_menu;
    Answers m_kind;
};

} // namespace module
