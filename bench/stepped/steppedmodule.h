#pragma once

#include "adaptorlink.h"
#include "service/moduleservice.h"
#include "signaltap.h"
#include "vehiclesource.h"

#include <QObject>
#include <QQueue>
#include <QVariantMap>

#include <memory>

struct Setup;

namespace module {
class RecordingWriter;
}

/**
 * A vehicle module whose clock is in another process, which asks for each emission, and for what
 * becomes of each command. Signals and commands themselves go the way of any other module.
 */
class SteppedModule : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.stavel.norda.Drive1")
public:
    SteppedModule();
    ~SteppedModule() override;

    /**
     * Opens the source and the recording, and offers both interfaces.
     * @param error  one line that names what cannot be used
     */
    bool open(const Setup &setup, const QString &address, QString *error);

public slots: // called over the bus
    /** What does not change during a drive, and the position. */
    QVariantMap properties() const;
    QStringList findings() const { return m_source->findings(); }
    /** As JSON. */
    QString statistics() const;
    QVariantList rearView() const;
    /** The next emission, and the position after it. Nothing is emitted. */
    QVariantMap take();
    QVariantMap seek(qlonglong ms);
    /** Emits a signal; it is sent before the answer. @param isRepeat  it is not recorded then */
    void emitSignal(qlonglong nowMs, const QString &signal, const QVariantList &arguments,
                    bool isRepeat);
    /** Hands the command that came last to the source, and whether it answers. */
    QVariantMap command(qlonglong nowMs);
    void setControl(int control, int value);
    void finish(qlonglong nowMs);

private:
    struct Call
    {
        QString operation;
        QVariantList arguments;
    };
    QVariantMap position() const;
    bool record(const Setup &setup, QString *error);
    void onSignal(const QByteArray &name, const QVariantList &arguments);

    std::unique_ptr<module::VehicleSource> m_source;
    std::unique_ptr<module::RecordingWriter> m_recording;
    module::AdaptorLink m_link;
    bus::SignalTap m_tap;
    module::ModuleService m_service;
    QQueue<Call> m_calls; // commands whose time is not known yet
    qint64 m_nowMs = 0;   // of what is emitted
    bool m_isRepeating = false;
};
