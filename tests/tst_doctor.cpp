#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <elf.h>
#include <sys/stat.h>
#include <unistd.h>

/** Whether the bench finds what is wrong with a plugin, and says what to do. */
class tst_Doctor : public QObject
{
    Q_OBJECT
private slots:
    void acceptsOurs();
    void refuses_data();
    void refuses();
    void anotherProcessor();
    void aFolder();
    void aPipe();
    void unreadable();
    void damagedMetadata();
    void endsTheProgramInADrive_data();
    void endsTheProgramInADrive();
    void damagedLibraries_data();
    void damagedLibraries();

private:
    static ProgramResult check(const QString &file)
    {
        return runProgram({testpaths::benchFile(), QStringLiteral("--check"), file});
    }
    static QByteArray ours()
    {
        QFile file(testpaths::pluginFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString write(const QByteArray &content) const
    {
        QFile file(m_folder.filePath(QStringLiteral("libplugin.so")));
        if (file.open(QIODevice::WriteOnly))
            file.write(content);
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

void tst_Doctor::acceptsOurs()
{
    const ProgramResult result = check(testpaths::pluginFile());
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    for (const char *found :
         {"ok  shared library for ", "ok  interface id com.stavel.Qt.nordaPlugin\n",
          "ok  root object norda::", "window 80 ", "window 85 ", ", 1280 x 720, attribute 0x201",
          "audio source 51 ", "audio source 53 ", "a head unit would accept it\n"})
        QVERIFY2(result.out.contains(QLatin1String(found)), found);
}

void tst_Doctor::refuses_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::addColumn<QString>("message");
    QTest::newRow("wrong interface id")
        << "WRONG_IID"
        << "expected the interface id com.stavel.Qt.nordaPlugin, found org.example.Another; state "
           "it in Q_PLUGIN_METADATA";
    QTest::newRow("missing interface")
        << "NO_INTERFACE"
        << "expected a root object with the interface com.stavel.Plugin.AppPlugin/1.0, found "
           "BrokenPlugin without; derive it from AppPlugin and name that in Q_INTERFACES";
    QTest::newRow("missing symbol")
        << "MISSING_SYMBOL"
        << "needs what neither the SDK nor its libraries offer: nordaSymbolThatNobodyHas(); link "
           "with -Wl,--no-undefined to see where from";
    QTest::newRow("crash in the constructor")
        << "CRASH_IN_CONSTRUCTOR"
        << "crashed while making the root object (Aborted); run it there under a debugger";
    // clang-format off
    QTest::newRow("exit() in the constructor") << "EXIT_IN_CONSTRUCTOR"
        << "ended the program while making the root object (exit code 0); leave that to the head unit";
    QTest::newRow("exit() in create()") << "EXIT_IN_CREATE"
        << "ended the program while starting in create() (exit code 0); leave that to the head unit";
    QTest::newRow("_exit() in create()") << "QUIET_EXIT_IN_CREATE"
        << "ended the program while starting in create() (exit code 0); leave that to the head unit";
    QTest::newRow("exit() in onCreate()") << "EXIT_IN_ON_CREATE"
        << "ended the program while building window 80 (exit code 0); leave that to the head unit";
    QTest::newRow("exit() in the destructor") << "EXIT_IN_DESTRUCTOR"
        << "ended the program while being unloaded (exit code 0); leave that to the head unit";
    QTest::newRow("never ends, and disarms every alarm") << "HANG_IN_CREATE"
        << "took longer than 30 s while starting in create(); wait for nothing there";
    // clang-format on
    QTest::newRow("no id") << "NO_ID"
                           << "offers no window and no audio source; list their ids in "
                              "windowInterfaceID() and sourceInterfaceID()";
    QTest::newRow("no window") << "NO_WINDOW"
                               << "offers window 90 and returns none for it; return one from "
                                  "requestWindowInterface()";
    QTest::newRow("no widget") << "NO_WIDGET"
                               << "window 90 has no widget after onCreate(); make one there and "
                                  "return it from mainWidget()";
    QTest::newRow("no audio source")
        << "NO_SOURCE"
        << "offers audio source 7 and returns none for it; return one from "
           "requestSourceInterface()";
}

void tst_Doctor::refuses()
{
    QFETCH(QString, plugin);
    QFETCH(QString, message);
    const QString file = testpaths::brokenPlugin(plugin);
    QVERIFY2(QFile::exists(file), qPrintable(file));
    const ProgramResult result = check(file);
    QCOMPARE(result.exitCode, 2);
    const QString line = file + QStringLiteral(": ") + message + QLatin1Char('\n');
    QVERIFY2(result.err.endsWith(line), qPrintable(result.err));
    QVERIFY(!result.out.contains(QLatin1String("would accept")));
}

void tst_Doctor::anotherProcessor()
{
    QByteArray content = ours();
    auto *header = reinterpret_cast<Elf32_Ehdr *>(content.data()); // alike in both as far as this
    header->e_machine = EM_386;
    const QString file = write(content);
    const ProgramResult result = check(file);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains(file + QStringLiteral(": built for x86, ")) &&
                 result.err.contains(QStringLiteral("build it with this unit's compiler")),
             qPrintable(result.err));
}

void tst_Doctor::aFolder()
{
    const ProgramResult result = check(m_folder.path());
    QCOMPARE(result.exitCode, 2);
    const QString line =
        m_folder.path() + QStringLiteral(": expected a plugin, found a directory\n");
    QVERIFY2(result.err.endsWith(line), qPrintable(result.err));
}

// Opening it would wait for somebody who writes.
void tst_Doctor::aPipe()
{
    const QString pipe = m_folder.filePath(QStringLiteral("pipe.so"));
    QCOMPARE(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    const QString line = pipe + ": expected a plugin, found something other than a file\n";
    for (const char *option : {"--check", "--plugin"}) {
        const ProgramResult result =
            runProgram({testpaths::benchFile(), "--headless", option, pipe}, 20);
        QCOMPARE(result.err, line);
        QCOMPARE(result.exitCode, 2);
    }
}

// The superuser reads every file, unless it gives up that capability.
void tst_Doctor::unreadable()
{
    QTemporaryDir folder;
    const auto all = QFile::Permissions(0x7777);
    QVERIFY(QFile::setPermissions(folder.path(), all));
    const QString file = folder.filePath("secret.so");
    QVERIFY(QFile::copy(testpaths::pluginFile(), file) && QFile::setPermissions(file, {}));
    QStringList command{"env", "-u", "XDG_RUNTIME_DIR", "TMPDIR=" + folder.path(),
                        "NORDA_HOST_ROOT=" + folder.filePath("root")};
    if (::geteuid() == 0)
        command += QStringList{"setpriv", "--bounding-set=-dac_override,-dac_read_search"};
    for (const char *option : {"--check", "--plugin"}) {
        const ProgramResult result =
            runProgram(command + QStringList{testpaths::benchFile(), "--headless", option, file});
        QCOMPARE(result.err, file + ": expected a plugin that can be read: Permission denied\n");
        QCOMPARE(result.exitCode, 2);
    }
}

// Qt's own remarks on it are not repeated.
void tst_Doctor::damagedMetadata()
{
    QByteArray content = ours();
    const int start = content.indexOf("QTMETADATA");
    QVERIFY(start > 0);
    content.replace(start + 12, 28, QByteArray(28, '\xff'));
    const QString file = write(content);
    const ProgramResult checked = check(file);
    QCOMPARE(checked.exitCode, 2);
    QCOMPARE(checked.err, file + ": expected the interface id com.stavel.Qt.nordaPlugin, found no "
                                 "Qt plugin; state it in Q_PLUGIN_METADATA\n");
    const ProgramResult loaded =
        runProgram({testpaths::benchFile(), "--headless", "--plugin", file});
    QCOMPARE(loaded.exitCode, 2);
    QCOMPARE(loaded.err, file + ": expected a plugin with the interface com.stavel.Qt.nordaPlugin, "
                                "found no plugin\n");
}

void tst_Doctor::endsTheProgramInADrive_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::newRow("constructor") << "EXIT_IN_CONSTRUCTOR";
    QTest::newRow("create()") << "EXIT_IN_CREATE";
    QTest::newRow("onCreate()") << "EXIT_IN_ON_CREATE";
    QTest::newRow("destructor") << "EXIT_IN_DESTRUCTOR";
}

// What a plugin leaves undone does not pass for a success.
void tst_Doctor::endsTheProgramInADrive()
{
    QFETCH(QString, plugin);
    const QString line =
        QStringLiteral("The plugin ended the program with exit(); leave that to the head unit\n");
    const QStringList bench{testpaths::benchFile(), "--plugin", testpaths::brokenPlugin(plugin)};
    const ProgramResult drive = runProgram(bench + QStringList{"--headless", "--duration", "1"});
    QVERIFY2(drive.err.endsWith(line), qPrintable(drive.err));
    QCOMPARE(drive.exitCode, 2);

    QFile scenario(m_folder.filePath(QStringLiteral("ends.scenario")));
    QVERIFY(scenario.open(QIODevice::WriteOnly));
    scenario.write("scenario \"A page\"\nsource none\n0 page 80\n1 expect page 80\n");
    scenario.close();
    const ProgramResult played = runProgram(bench + QStringList{"--script", scenario.fileName()});
    QVERIFY2(played.err.endsWith(line), qPrintable(played.err + played.out));
    QVERIFY2(played.out.endsWith("0 passed, 1 failed\n"), qPrintable(played.out));
    QCOMPARE(played.exitCode, 1);
}

void tst_Doctor::damagedLibraries_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const QString kind = QStringLiteral("expected a shared library, found another kind of file");
    QTest::newRow("empty") << QByteArray("") << kind;
    QTest::newRow("text") << QByteArray(5000, 'x') << kind;
    QTest::newRow("cut in its header") << ours().left(40) << kind;
    QTest::newRow("cut behind its header")
        << ours().left(100) << QStringLiteral("expected the interface id");
    QTest::newRow("cut in the middle")
        << ours().left(ours().size() / 3) << QStringLiteral("libplugin.so: ");
}

void tst_Doctor::damagedLibraries()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const ProgramResult result = check(write(content));
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains(message), qPrintable(result.err));
}

NORDA_TEST_MAIN(tst_Doctor)
#include "tst_doctor.moc"
