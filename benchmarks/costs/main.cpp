// What the head unit's work takes, counted: instructions by callgrind and heap allocations.
//
//   norda-costs TABLE            counts, and fails where the table's counts are exceeded
//   norda-costs --accept TABLE   counts, and writes the table
//   norda-costs --measure NAME   does what one of the counting processes does

#include "callgrind.h"
#include "costruns.h"
#include "costtable.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QProcess>
#include <QSaveFile>

#include <cstdio>

const std::vector<CostRun> &costRuns()
{
    static const std::vector<CostRun> runs = {
        {"start-page", true, measureStartOfPage},
        {"start-empty", true, measureStartOfEmptyWindow},
        {"unit", false, measureUnit},
        {"drive", false, measureDrive},
    };
    return runs;
}

static int fail(const QString &line)
{
    std::fprintf(stderr, "%s\n", qPrintable(line));
    return 2;
}

static int runMeasurement(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial")));
    const QString name = QApplication::arguments().value(2);
    for (const CostRun &run : costRuns()) {
        if (name == QLatin1String(run.name)) {
            run.measure();
            return 0;
        }
    }
    return fail(QStringLiteral("--measure: expected one of the runs, found '%1'").arg(name));
}

/** The packages whose code is counted, each with its version. */
static QList<QByteArray> packages()
{
    QProcess query;
    query.start(QStringLiteral("dpkg-query"),
                {"-W", "-f=${Package} ${Version}\n", "fontconfig-config", "fonts-liberation",
                 "g++-12", "libc6", "libexpat1", "libfontconfig1", "libfreetype6", "libharfbuzz0b",
                 "libpng16-16", "libqt5core5a", "libqt5gui5", "libqt5widgets5", "valgrind",
                 "zlib1g"});
    query.waitForFinished(-1);
    return query.readAllStandardOutput().trimmed().split('\n');
}

static int accept(const QString &path, const CostTable &counted)
{
    QSaveFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(counted.text()) > 0 && file.commit();
    if (!isWritten)
        return fail(QStringLiteral("%1: %2").arg(path, file.errorString()));
    std::printf("%d costs accepted\n", int(counted.costs.size()));
    return 0;
}

static int compare(const QString &path, const CostTable &counted)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("%1: %2").arg(path, file.errorString()));
    QString error;
    const CostTable accepted = CostTable::read(file.readAll(), &error);
    if (!error.isEmpty())
        return fail(QStringLiteral("%1: %2").arg(path, error));

    const double margin = 100 * costMargin(accepted, counted);
    if (accepted.packages != counted.packages)
        std::printf("Other versions of packages than in the table: the margin is %g %%\n", margin);
    const CostChanges changes = compareCosts(accepted, counted);
    for (const QString &line : changes.faults)
        std::printf("%s\n", qPrintable(line));
    std::printf("%d costs, %d beyond %g %%, %d lower by more than that\n",
                int(counted.costs.size()), int(changes.faults.size()), margin, changes.lower);
    if (changes.lower > 0 && changes.faults.isEmpty())
        std::printf("./test --accept-costs takes the lower ones over\n");
    return changes.faults.isEmpty() ? 0 : 1;
}

int main(int argc, char *argv[])
{
    if (argc > 1 && qstrcmp(argv[1], "--measure") == 0)
        return runMeasurement(argc, argv);
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool accepts = arguments.removeAll(QStringLiteral("--accept")) > 0;
    if (arguments.size() != 1)
        return fail(QStringLiteral("expected [--accept] TABLE"));

    CostTable counted;
    counted.packages = packages();
    QString error;
    counted.costs = countUnderCallgrind(&error);
    if (!error.isEmpty())
        return fail(error);
    return accepts ? accept(arguments[0], counted) : compare(arguments[0], counted);
}
