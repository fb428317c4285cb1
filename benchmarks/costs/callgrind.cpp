#include "callgrind.h"

#include "callgrindfile.h"
#include "costruns.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

/** Nothing of the user's settings, fonts and processor makes a difference. */
static QProcessEnvironment environmentIn(const QDir &folder)
{
    const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    const QString path = folder.path();
    // clang-format off
    const struct
    {
        const char *name;
        QString value;
    } variables[] = {
        {"PATH",              own.value(QStringLiteral("PATH"))},
        {"HOME",              path},
        {"XDG_RUNTIME_DIR",   path},
        {"XDG_CONFIG_HOME",   path},
        {"XDG_CACHE_HOME",    path},
        {"NORDA_HOST_ROOT",   path},
        {"LC_ALL",            QStringLiteral("C.UTF-8")},
        {"TZ",                QStringLiteral("UTC")},
        {"QT_QPA_PLATFORM",   QStringLiteral("offscreen")},
        {"QT_LOGGING_RULES",  QStringLiteral("default.debug=false")},
        {"QT_HASH_SEED",      QStringLiteral("0")},
        {"QT_NO_GLIB",        QStringLiteral("1")}, // its loop waits where no clock is skipped
        {"FONTCONFIG_FILE",   QStringLiteral(NORDA_COSTS_FOLDER "/fonts.conf")},
        {"QT_NO_CPU_FEATURE", QStringLiteral("ssse3 sse4.1 sse4.2 avx avx2")},
        {"GLIBC_TUNABLES",    QStringLiteral("glibc.cpu.hwcaps=-AVX2,-AVX,-BMI2,-ERMS,-FSRM,"
                                             "-LZCNT,-MOVBE,-AVX_Fast_Unaligned_Load")},
    };
    // clang-format on
    QProcessEnvironment environment;
    for (const auto &variable : variables)
        environment.insert(QLatin1String(variable.name), variable.value);
    return environment;
}

/** A run of this program that measures something. */
class MeasuredProcess
{
public:
    MeasuredProcess(const CostRun &run, const QDir &parent)
        : m_run(run), m_folder(parent.filePath(QLatin1String(run.name)))
    {
        parent.mkdir(QLatin1String(run.name));
        m_process.setProcessEnvironment(environmentIn(m_folder));
    }

    /** Once without counting, so that caches of fonts are filled. @return whether it has worked */
    bool warmUp(QString *error)
    {
        m_process.start(QCoreApplication::applicationFilePath(), measureArguments());
        return finish(error);
    }
    void start()
    {
        const QString collects = QLatin1String(m_run.fromStart ? "yes" : "no");
        m_process.start(QStringLiteral("valgrind"),
                        QStringList{QStringLiteral("--tool=callgrind"),
                                    QStringLiteral("--callgrind-out-file=") + outputFile(),
                                    QStringLiteral("--combine-dumps=yes"),
                                    QStringLiteral("--dump-line=no"),
                                    QStringLiteral("--collect-atstart=") + collects,
                                    QCoreApplication::applicationFilePath()} +
                            measureArguments());
    }
    bool finish(QString *error)
    {
        m_process.waitForFinished(-1);
        const bool isDone = m_process.error() == QProcess::UnknownError &&
                            m_process.exitStatus() == QProcess::NormalExit &&
                            m_process.exitCode() == 0;
        if (!isDone)
            *error =
                QStringLiteral("%1 %2: expected it to succeed: %3%4")
                    .arg(m_process.program(), QLatin1String(m_run.name), m_process.errorString(),
                         QLatin1String(m_process.readAllStandardError().right(2000)));
        return isDone;
    }
    QList<Cost> costs() const
    {
        QFile file(outputFile());
        return file.open(QIODevice::ReadOnly) ? costsOf(file.readAll()) : QList<Cost>();
    }

private:
    QStringList measureArguments() const
    {
        return {QStringLiteral("--measure"), QLatin1String(m_run.name)};
    }
    QString outputFile() const { return m_folder.filePath(QStringLiteral("callgrind.out")); }

    const CostRun &m_run;
    const QDir m_folder;
    QProcess m_process;
};

QList<Cost> countUnderCallgrind(QString *error)
{
    const QTemporaryDir folder;
    std::vector<std::unique_ptr<MeasuredProcess>> processes;
    for (const CostRun &run : costRuns())
        processes.push_back(std::make_unique<MeasuredProcess>(run, QDir(folder.path())));
    for (const auto &process : processes) {
        if (!process->warmUp(error))
            return {};
    }
    for (const auto &process : processes)
        process->start();
    QList<Cost> costs;
    for (const auto &process : processes) {
        if (!process->finish(error))
            return {};
        costs += process->costs();
    }
    return costs;
}
