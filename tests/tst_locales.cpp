#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

/** A decimal comma, a dotless i and a clock that jumps change nothing. */
class tst_Locales : public QObject
{
    Q_OBJECT
private slots:
    void sameResults_data();
    void sameResults();
    void jumpingClock_data();
    void jumpingClock();

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /** All but what depends on how fast the machine is. */
    QJsonObject summary(const QString &name) const
    {
        QJsonObject object = QJsonDocument::fromJson(content(name)).object();
        object.remove("wallSeconds");
        object.remove("framesPainted");
        return object;
    }
    bool drive(const QStringList &environment, const QString &name) const;

    QTemporaryDir m_folder;
};

/** A row a second, with numbers that a locale writes in another way. */
static QByteArray csv()
{
    QByteArray text = "Time (s),Engine RPM (RPM),Coolant Temperature (C)\n";
    for (int i = 0; i < 20; ++i)
        text += QByteArray::number(i) + ".5," + QByteArray::number(900 + 10 * i) + ".25,71.5\n";
    return text;
}

bool tst_Locales::drive(const QStringList &environment, const QString &name) const
{
    QFile source(path("drive.csv"));
    if (!source.open(QIODevice::WriteOnly) || source.write(csv()) < 0)
        return false;
    source.close();
    const ProgramResult result = runProgram(
        QStringList{"env"} + environment +
        QStringList{testpaths::benchFile(), "--headless", "--source", source.fileName(),
                    "--summary", path(name + ".json"), "--record", path(name + ".jsonl")});
    if (result.exitCode != 0)
        qWarning("%s", qPrintable(result.err));
    return result.exitCode == 0;
}

void tst_Locales::sameResults_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("decimal comma") << "de_DE";
    QTest::newRow("dotless i") << "tr_TR";
}

// The locale is made for the test, the system keeps its own.
void tst_Locales::sameResults()
{
    QFETCH(QString, locale);
    if (QStandardPaths::findExecutable("localedef").isEmpty() ||
        !QFile::exists("/usr/share/i18n/locales/" + locale))
        QSKIP("the sources of this locale are not installed");
    const QString name = locale + ".UTF-8";
    const ProgramResult made =
        runProgram({"localedef", "--no-archive", "-i", locale, "-f", "UTF-8", path(name)});
    QVERIFY2(made.exitCode == 0, qPrintable(made.err));
    const QStringList environment{"LOCPATH=" + m_folder.path(), "LC_ALL=" + name};
    const ProgramResult comma = runProgram(QStringList{"env"} + environment +
                                           QStringList{"sh", "-c", "locale decimal_point"});
    QCOMPARE(comma.out, QString(",\n"));

    QVERIFY(drive({"LC_ALL=C"}, "c"));
    QVERIFY(drive(environment, locale));
    QCOMPARE(summary(locale + ".json"), summary("c.json"));
    const QJsonObject emitted = summary("c.json").value("signals").toObject();
    QCOMPARE(emitted.value("centerGaugeValueNotify").toInt(), 20);
    const ProgramResult diff = runProgram(
        QStringList{"env"} + environment +
        QStringList{testpaths::benchFile(), "--diff", path("c.jsonl"), path(locale + ".jsonl")});
    QVERIFY2(diff.exitCode == 0, qPrintable(diff.out + diff.err));
}

void tst_Locales::jumpingClock_data()
{
    QTest::addColumn<QString>("clock");
    QTest::newRow("a year back") << "-1y";
    QTest::newRow("past 2038") << "+20y";
    QTest::newRow("a thousand times too fast") << "+0 x1000";
}

/** The first and the last time of a recording's lines, in ms, or -1 where they go back. */
static double lastTime(const QByteArray &recording)
{
    double last = 0;
    for (const QByteArray &line : recording.split('\n')) {
        const double ms = QJsonDocument::fromJson(line).object().value("t").toDouble(last);
        if (ms < last)
            return -1;
        last = ms;
    }
    return last;
}

// The time of day is set while the bench records, by the network for instance.
void tst_Locales::jumpingClock()
{
    QFETCH(QString, clock);
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("the sanitizer must be the first library that is loaded, and so must faketime");
#endif
    if (QStandardPaths::findExecutable("faketime").isEmpty() || !testpaths::emulator().isEmpty())
        QSKIP("faketime is not installed, or cannot be preloaded under emulation");
    // Time since the start is not the time of day: faketime leaves it alone, as setting a clock
    // does.
    const QString settings = path("clock");
    QFile file(settings);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("+0\n");
    file.close();
    const QString script =
        QStringLiteral("\"$@\" & bench=$!; sleep 1; echo '%1' >'%2.new'; mv '%2.new' '%2'; "
                       "wait $bench")
            .arg(clock, settings);
    const QString library = runProgram({"faketime", "-f", "+0", "printenv", "LD_PRELOAD"}).out;
    QVERIFY(library.contains("faketime"));
    const ProgramResult result =
        runProgram({"env", "LD_PRELOAD=" + library.trimmed(), "FAKETIME_TIMESTAMP_FILE=" + settings,
                    "FAKETIME_NO_CACHE=1", "FAKETIME_DONT_FAKE_MONOTONIC=1", "sh", "-c", script,
                    "sh", testpaths::benchFile(), "--headless", "--speed", "1", "--duration", "3",
                    "--record", path("jump.jsonl"), "--summary", path("jump.json")},
                   30);
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    QCOMPARE(summary("jump.json").value("driveSeconds").toDouble(), 3.0);
    const double last = lastTime(content("jump.jsonl"));
    QVERIFY2(last > 2000 && last <= 3000, qPrintable(QString::number(last)));
    const double wall =
        QJsonDocument::fromJson(content("jump.json")).object().value("wallSeconds").toDouble();
    QVERIFY2(wall > 2.5 && wall < 15, qPrintable(QString::number(wall)));
}

NORDA_TEST_MAIN(tst_Locales)
#include "tst_locales.moc"
