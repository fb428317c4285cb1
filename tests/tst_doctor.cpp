#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <elf.h>

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
