#include "stepped/steppedmodule.h"

#include "calllog.h"
#include "interface.h"
#include "recording.h"
#include "session/setup.h"
#include "simulator/controls.h"
#include "stepped/driveinterface.h"
#include "wirevalues.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QJsonDocument>
#include <QJsonObject>

using module::Emission;

SteppedModule::SteppedModule()
    : m_tap(module::moduleEmitters(),
            [this](const QByteArray &name, const QVariantList &arguments) {
                onSignal(name, arguments);
            })
{
    connect(CallLog::instance(), &CallLog::called, this,
            [this](const QString &operation, const QVariantList &arguments) {
                m_calls.enqueue({operation, arguments});
            });
}

SteppedModule::~SteppedModule() = default;

bool SteppedModule::open(const Setup &setup, const QString &address, QString *error)
{
    m_source = module::openSource(setup.source, error, setup.trim, setup.car, setup.live);
    if (!m_source)
        return false;
    if (m_source->liveMs() >= 0) {
        *error = QStringLiteral("%1: expected a drive that can be stepped, with --module-process")
                     .arg(setup.source);
        return false;
    }
    return record(setup, error) && m_service.open(address, error) &&
           m_service.addObject(QLatin1String(driveinterface::path), this);
}

bool SteppedModule::record(const Setup &setup, QString *error)
{
    if (setup.moduleRecord.isEmpty())
        return true;
    m_recording = std::make_unique<module::RecordingWriter>(setup.moduleRecord, m_source->title(),
                                                            error, setup.inputs);
    return m_recording->isOpen();
}

// ---- The drive ----------------------------------------------------------------------------------

QVariantMap SteppedModule::position() const
{
    return {{QStringLiteral("nextDueMs"), m_source->nextDueMs()},
            {QStringLiteral("isCatchingUp"), m_source->isCatchingUp()}};
}

QVariantMap SteppedModule::properties() const
{
    QVariantMap all = position();
    all.insert(QStringLiteral("title"), m_source->title());
    all.insert(QStringLiteral("durationMs"), m_source->durationMs());
    all.insert(QStringLiteral("opensPages"), m_source->opensPages());
    all.insert(QStringLiteral("hasControls"), m_source->controls() != nullptr);
    return all;
}

QString SteppedModule::statistics() const
{
    return QString::fromUtf8(QJsonDocument(m_source->statistics()).toJson(QJsonDocument::Compact));
}

QVariantList SteppedModule::rearView() const
{
    const module::RearView view = m_source->rearView();
    return {view.steeringDegrees, view.headingDegrees, view.wall, view.bayX,
            view.postX,           view.postZ};
}

QVariantMap SteppedModule::take()
{
    const Emission emission = m_source->take();
    QVariantMap answer = position();
    answer.insert(QStringLiteral("atMs"), emission.atMs);
    answer.insert(QStringLiteral("signal"), QString::fromLatin1(emission.signal));
    answer.insert(QStringLiteral("arguments"), emission.arguments);
    answer.insert(QStringLiteral("isAction"), emission.isAction);
    answer.insert(QStringLiteral("isRepeat"), emission.isRepeat);
    return answer;
}

QVariantMap SteppedModule::seek(qlonglong ms)
{
    m_source->seek(ms);
    return position();
}

void SteppedModule::setControl(int control, int value)
{
    if (control >= 0 && control < module::Controls::Count && m_source->controls())
        m_source->controls()->set(module::Controls::Control(control), value);
}

// ---- The adaptor --------------------------------------------------------------------------------

void SteppedModule::emitSignal(qlonglong nowMs, const QString &signal,
                               const QVariantList &arguments, bool isRepeat)
{
    m_nowMs = nowMs;
    m_isRepeating = isRepeat;
    m_link.deliver(
        {nowMs, signal.toLatin1(), bus::fromWire(arguments, QMetaType::QVariantList).toList()});
}

void SteppedModule::onSignal(const QByteArray &name, const QVariantList &arguments)
{
    if (m_recording && !m_isRepeating)
        m_recording->writeSignal(m_nowMs, name, arguments);
}

QVariantMap SteppedModule::command(qlonglong nowMs)
{
    QVariantMap answer = position();
    if (m_calls.isEmpty())
        return answer; // without a word on it: an error of the one who asks
    const Call call = m_calls.dequeue();
    if (m_recording && !m_source->isCatchingUp())
        m_recording->writeCall(nowMs, call.operation, call.arguments);
    const bool answers = m_source->command(nowMs, call.operation, call.arguments);
    answer = position();
    answer.insert(QStringLiteral("answers"), answers);
    return answer;
}

void SteppedModule::finish(qlonglong nowMs)
{
    if (m_recording)
        m_recording->finish(nowMs);
    m_recording.reset();
}
