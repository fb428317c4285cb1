#include "stepped/steppedsource.h"

#include "service/moduleinterface.h"
#include "serviceconnection.h"
#include "stepped/driveinterface.h"
#include "wirevalues.h"

#include <QDBusArgument>
#include <QEventLoop>
#include <QJsonDocument>
#include <QTimer>

using module::Controls;
using module::Emission;

static QVariant ask(const char *method, const QVariantList &arguments, QString *error)
{
    return ServiceConnection::instance()
        ->call(QLatin1String(driveinterface::path), QLatin1String(driveinterface::name),
               QLatin1String(method), arguments, error)
        .value(0);
}

/** In the middle of a drive. Without its module it has no more emissions. */
QVariant SteppedSource::call(const char *method, const QVariantList &arguments) const
{
    if (m_isLost)
        return {};
    QString error;
    QVariant answer = ask(method, arguments, &error);
    m_isLost = !error.isEmpty();
    if (m_isLost)
        qWarning("vehicle module: %s", qPrintable(error));
    return answer;
}

static QVariantMap toMap(const QVariant &answer)
{
    return qdbus_cast<QVariantMap>(answer);
}

// ---- The connection -----------------------------------------------------------------------------

static bool waitForModule()
{
    static constexpr int longestMs = 30000;
    ServiceConnection *connection = ServiceConnection::instance();
    QEventLoop loop;
    QObject::connect(connection, &ServiceConnection::stateChanged, &loop, &QEventLoop::quit);
    QTimer::singleShot(longestMs, &loop, &QEventLoop::quit);
    if (connection->state() != ServiceConnection::Connected)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    return connection->state() == ServiceConnection::Connected;
}

std::unique_ptr<SteppedSource> SteppedSource::open(QString *error)
{
    std::unique_ptr<SteppedSource> source(new SteppedSource);
    if (!waitForModule())
        *error = QStringLiteral("--module-process: expected a module, got none");
    else if (source->readProperties(error))
        return source;
    return nullptr;
}

/** The bus ends before the process: nobody waits for another one. */
SteppedSource::~SteppedSource()
{
    ServiceConnection::instance()->setAddress({});
    ServiceConnection::instance()->open();
}

bool SteppedSource::readProperties(QString *error)
{
    const QVariantMap all = toMap(ask("properties", {}, error));
    setPosition(all);
    m_title = all.value(QStringLiteral("title")).toString();
    m_durationMs = all.value(QStringLiteral("durationMs"), -1).toLongLong();
    m_opensPages = all.value(QStringLiteral("opensPages")).toBool();
    m_hasControls = all.value(QStringLiteral("hasControls")).toBool();
    return error->isEmpty();
}

// ---- The drive ----------------------------------------------------------------------------------

void SteppedSource::setPosition(const QVariantMap &position)
{
    m_nextDueMs = position.value(QStringLiteral("nextDueMs"), -1).toLongLong();
    m_isCatchingUp = position.value(QStringLiteral("isCatchingUp")).toBool();
}

Emission SteppedSource::take()
{
    sendControls();
    const QVariantMap answer = toMap(call("take"));
    setPosition(answer);
    if (m_isLost)
        return {0, module::beginAction, {}, true}; // which changes nothing
    const QVariantList arguments =
        qdbus_cast<QVariantList>(answer.value(QStringLiteral("arguments")));
    return {answer.value(QStringLiteral("atMs")).toLongLong(),
            answer.value(QStringLiteral("signal")).toString().toLatin1(),
            bus::fromWire(arguments, QMetaType::QVariantList).toList(),
            answer.value(QStringLiteral("isAction")).toBool(),
            answer.value(QStringLiteral("isRepeat")).toBool()};
}

void SteppedSource::seek(qint64 ms)
{
    sendControls();
    setPosition(toMap(call("seek", {ms})));
}

bool SteppedSource::emitSignal(qint64 nowMs, const Emission &emission)
{
    call("emitSignal", {nowMs, QString::fromLatin1(emission.signal), QVariant(emission.arguments),
                        emission.isRepeat});
    return true;
}

/** The host has sent the command already, since it was connected to the call log before. */
bool SteppedSource::command(qint64 nowMs, const QString &operation, const QVariantList &arguments)
{
    QVariantList sent = arguments;
    if (module::commandOfCall(operation, &sent).isEmpty())
        return false;
    sendControls();
    const QVariantMap answer = toMap(call("command", {nowMs}));
    setPosition(answer);
    if (!m_isLost && !answer.contains(QStringLiteral("answers")))
        qWarning("vehicle module: %s: expected to arrive, it did not", qPrintable(operation));
    return answer.value(QStringLiteral("answers")).toBool();
}

void SteppedSource::finish(qint64 nowMs)
{
    call("finish", {nowMs});
}

void SteppedSource::sendControls()
{
    for (int i = 0; i < Controls::Count; ++i) {
        const auto control = Controls::Control(i);
        const int value = m_controls.value(control);
        if (value == m_sentControls.value(control))
            continue;
        call("setControl", {i, value});
        m_sentControls.set(control, value);
    }
    for (const Controls::Control once : {Controls::Prompt, Controls::ClimateTrim}) {
        m_controls.take(once);
        m_sentControls.take(once);
    }
}

// ---- What it shows ------------------------------------------------------------------------------

module::RearView SteppedSource::rearView() const
{
    if (!m_hasControls)
        return {};
    const QVariantList values = qdbus_cast<QVariantList>(call("rearView"));
    const auto value = [&values](int i) { return values.value(i).toDouble(); };
    return {value(0), value(1), value(2), value(3), value(4), value(5)};
}

QStringList SteppedSource::findings() const
{
    return call("findings").toStringList();
}

QJsonObject SteppedSource::statistics() const
{
    return QJsonDocument::fromJson(call("statistics").toString().toUtf8()).object();
}
