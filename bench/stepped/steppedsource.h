#pragma once

#include "simulator/controls.h"
#include "vehiclesource.h"

#include <QVariantMap>

/**
 * The drive of a module in another process, in step with this one's clock. It asks for each
 * emission and has it emitted there; the signal arrives as in any head unit, through the host's
 * connection to the module. The same for commands: it only waits until they have been handled.
 */
class SteppedSource : public module::VehicleSource
{
public:
    ~SteppedSource() override;

    /**
     * Waits for the host's connection, which has been opened; events are handled meanwhile.
     * @param error  one line with what is not there
     */
    static std::unique_ptr<SteppedSource> open(QString *error);

    QString title() const override { return m_title; }
    qint64 durationMs() const override { return m_durationMs; }
    qint64 nextDueMs() const override { return m_nextDueMs; }
    module::Emission take() override;
    void seek(qint64 ms) override;
    bool command(qint64 nowMs, const QString &operation, const QVariantList &arguments) override;
    bool emitSignal(qint64 nowMs, const module::Emission &emission) override;
    void finish(qint64 nowMs) override;
    bool opensPages() const override { return m_opensPages; }
    bool isCatchingUp() const override { return m_isCatchingUp; }
    module::Controls *controls() override { return m_hasControls ? &m_controls : nullptr; }
    module::RearView rearView() const override;
    QStringList findings() const override;
    QJsonObject statistics() const override;

private:
    SteppedSource() = default;

    bool readProperties(QString *error);
    QVariant call(const char *method, const QVariantList &arguments = {}) const;
    void setPosition(const QVariantMap &position);
    void sendControls();

    QString m_title;
    qint64 m_durationMs = -1;
    qint64 m_nextDueMs = -1;
    bool m_opensPages = false;
    bool m_isCatchingUp = false;
    bool m_hasControls = false;
    module::Controls m_controls;
    module::Controls m_sentControls;
    mutable bool m_isLost = false; // nothing is asked then
};
