#include "session/rig.h"

#include "live/liveports.h"
#include "serviceconnection.h"
#include "stepped/steppedsource.h"
#include "translator.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

Rig::Rig(const Setup &setup, QObject *parent)
    : QObject(parent)
    , m_setup(setup)
    , m_firstLog(setup.live.log)
    , m_trim(setup.trim)
    , m_actions(&m_unit)
{
    if (!m_setup.language.isEmpty())
        Translator::instance()->setLanguage(m_setup.language);
    m_setup.language = Translator::instance()->language();
}

Rig::~Rig() = default;

std::unique_ptr<module::VehicleSource> Rig::makeSource(QString *error) const
{
    if (!m_setup.moduleAddress.isEmpty())
        return SteppedSource::open(error);
    return module::openSource(m_setup.source, error, m_setup.trim, m_setup.car, m_setup.live);
}

bool Rig::open(const QString &plugin, QString *error)
{
    return load(plugin, error) && openSource(error);
}

/** The plugin connects to the module when it is loaded; one in this process is the source. */
bool Rig::load(const QString &plugin, QString *error)
{
    ServiceConnection::instance()->setAddress(m_setup.moduleAddress);
    return m_unit.load(plugin, error);
}

bool Rig::openSource(QString *error)
{
    m_setup.live.inputs = m_setup.inputs;
    auto source = makeSource(error);
    if (!source)
        return false;
    m_logs = module::isLiveName(m_setup.source) ? 1 : 0;
    m_session = std::make_unique<Session>(std::move(source));
    m_session->journal()->setLimit(m_setup.journalLimit);
    module::Drive *drive = m_session->drive();
    drive->setSpeed(m_setup.speed);
    drive->setLimit(m_setup.durationMs);
    drive->faults() = m_setup.faults;
    return m_setup.record.isEmpty() ||
           m_session->record(m_setup.record, m_setup.recordLimit, m_setup.inputs, error);
}

void Rig::begin(Replay::Extent replay)
{
    m_session->watchPages(m_unit.windows());
    const bool opensPages = m_session->drive()->source()->opensPages();
    if (m_setup.isPageGiven || !opensPages)
        m_session->open(m_unit.windows(), m_setup.page);
    bind();
    if (!m_setup.isPageGiven)
        replayActions(replay);
}

void Rig::bind()
{
    m_session->connectCamera(m_unit.screen()->camera());
    m_session->connectAudio(m_unit.audio());
    m_actions.setSession(m_session.get());
    connect(m_session.get(), &Session::noticed, this, &Rig::noticed);
    emit sessionBegun(m_session.get());
}

/** The session opens the same first page as its recording. */
void Rig::replayActions(Replay::Extent extent)
{
    m_replay = new Replay(&m_actions, extent, m_session.get());
    connect(m_replay, &Replay::failed, this, &Rig::noticed);
    connect(m_replay, &Replay::performed, this, &Rig::repeated);
    if (extent == Replay::Beginning)
        connect(m_replay, &Replay::performed, this,
                [this] { m_setup.page = m_unit.windows()->currentWindow(); });
}

void Rig::endReplay()
{
    delete m_replay;
}

/** What an earlier car has sent is kept: seen.log is followed by seen-2.log. */
QString Rig::nextLog() const
{
    if (m_firstLog.isEmpty() || m_logs == 0)
        return m_firstLog;
    const QFileInfo first(m_firstLog);
    const QString end = first.suffix().isEmpty() ? QString() : QLatin1Char('.') + first.suffix();
    return first.dir().filePath(
        QStringLiteral("%1-%2%3").arg(first.completeBaseName()).arg(m_logs + 1).arg(end));
}

/** A port has room for one: the car that is connected frees it for the next one. */
std::unique_ptr<module::VehicleSource> Rig::openNext(const QString &name, module::Trim trim,
                                                     QString *error)
{
    const bool isLive = module::isLiveName(name);
    const bool hasFrames = module::isCandumpLog(name) || name.startsWith(QLatin1String("can:"));
    const module::CarFiles car = hasFrames ? m_setup.car : module::CarFiles();
    module::VehicleSource *before = m_session->drive()->source();
    if (isLive)
        before->setReleased(true);
    module::LiveSettings live = m_setup.live;
    live.log = nextLog();
    auto source = module::openSource(name, error, trim, car, live);
    if (isLive && !source)
        before->setReleased(false);
    if (isLive && source) {
        m_setup.live = live;
        ++m_logs;
    }
    return source;
}

bool Rig::openDrive(const QString &name, QString *error)
{
    const bool isFile = QFileInfo::exists(name);
    const module::Trim trim = isFile ? module::Trim::Full : m_trim;
    auto source = openNext(name, trim, error);
    if (!source)
        return false;
    auto session = std::make_unique<Session>(std::move(source));
    session->journal()->setLimit(m_setup.journalLimit);
    session->drive()->setSpeed(m_session->drive()->speed());
    session->drive()->faults() = m_session->drive()->faults().forNextDrive();
    // No payload resets climate or the zones to unknown, so these pages are rebuilt.
    for (const int id : {ClimatePage, ParkingPage})
        m_unit.windows()->rebuildWindow(id);
    m_setup.source = isFile ? QFileInfo(name).absoluteFilePath() : name;
    m_setup.trim = trim;
    m_setup.language = Translator::instance()->language();
    m_setup.faults = session->drive()->faults();
    m_setup.page = m_unit.windows()->currentWindow();
    const std::unique_ptr<Session> before = std::exchange(m_session, std::move(session));
    m_session->watchPages(m_unit.windows());
    bind();
    m_session->continueRecording(before.get());
    if (!m_setup.isPageGiven)
        replayActions(Replay::Beginning);
    return true;
}

bool Rig::startRecording(const QString &file, QString *error)
{
    m_session->stopRecording();
    output::InputFiles inputs = m_setup.inputs;
    inputs.add(m_setup.source);
    return m_session->startRecording(file, m_setup.recordLimit, inputs, error);
}
