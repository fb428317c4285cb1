#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <QDirIterator>

/** What is shipped: what the plugin shows, needs and carries, and what the services need. */
class tst_Library : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void exportsNothingElse();
    void needsOnlyWhatTheSdkDeclares();
    void needsFewLibraries();
    void isHardened();
    void isStripped();
    void carriesNoPaths();
    void servicesNeedNoWindows_data();
    void servicesNeedNoWindows();

private:
    struct Symbol
    {
        QString name;
        bool isDefined;
    };
    QString readelf(const QString &file, const QStringList &options) const
    {
        return runProgram(QStringList{testpaths::readelf(), "-W"} + options + QStringList(file))
            .out;
    }
    QList<Symbol> symbols(const QString &file) const;

    QTemporaryDir m_root;
    QString m_library;
};

void tst_Library::initTestCase()
{
    const ProgramResult install =
        runProgram({testpaths::cmake(), "--install", testpaths::buildFolder(), "--component",
                    "plugin", "--strip", "--prefix", m_root.path()});
    QVERIFY2(install.exitCode == 0, qPrintable(install.err));
    QDirIterator walk(m_root.path(), {"libnordaPlugin.so"}, QDir::Files,
                      QDirIterator::Subdirectories);
    QVERIFY(walk.hasNext());
    m_library = walk.next();
}

QList<tst_Library::Symbol> tst_Library::symbols(const QString &file) const
{
    static const QRegularExpression row(QStringLiteral(
        "^ *\\d+: +[0-9a-f]+ +\\S+ +\\S+ +(GLOBAL|WEAK|UNIQUE) +(\\S+) +(?:\\[.*\\] +)?"
        "(\\S+) (.+)$"));
    QList<Symbol> found;
    const QString table = readelf(file, {"--dyn-syms", "-C"});
    for (const QString &line : table.split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch match = row.match(line);
        if (match.hasMatch())
            found.append({match.captured(4).section(QLatin1Char('@'), 0, 0).trimmed(),
                          match.captured(3) != QLatin1String("UND")});
    }
    return found;
}

/** The class that a C++ symbol belongs to. */
static QString owner(QString name)
{
    static const QRegularExpression prefix(
        QStringLiteral("^(vtable for |typeinfo for |typeinfo name for |non-virtual thunk to )"));
    const bool isWhole =
        name.startsWith(QLatin1String("vtable")) || name.startsWith(QLatin1String("typeinfo"));
    name.remove(prefix);
    if (isWhole)
        return name;
    name = name.section(QLatin1Char('('), 0, 0);
    return name.left(qMax(0, name.lastIndexOf(QLatin1String("::"))));
}

void tst_Library::exportsNothingElse()
{
    const QSet<QString> entries = {"qt_plugin_instance", "qt_plugin_query_metadata"};
    const QSet<QString> components = {
        "norda::Dashboard", "vant_popup",       "norda::Vantiq_Top_Bar_Widget",
        "norda::TopWindow", "norda::BarWindow", "norda::MainWindow"};
    static const QRegularExpression linkers(
        QStringLiteral("^(_init|_fini|_?_?bss_\\w+|__bss_\\w+|_edata|_?_?end_?_?|_bss_end__|"
                       "__exidx_\\w+)$"));
    QSet<QString> seen;
    int count = 0;
    for (const Symbol &symbol : symbols(m_library)) {
        if (!symbol.isDefined)
            continue;
        ++count;
        seen.insert(symbol.name);
        seen.insert(owner(symbol.name));
        QVERIFY2(entries.contains(symbol.name) || components.contains(owner(symbol.name)) ||
                     linkers.match(symbol.name).hasMatch(),
                 qPrintable(symbol.name));
    }
    QVERIFY(count > 50);
    QVERIFY(seen.contains(entries) && seen.contains(components));
}

void tst_Library::needsOnlyWhatTheSdkDeclares()
{
    QSet<QString> declared;
    static const QRegularExpression aClass(
        QStringLiteral("(?:class|struct) (?:NORDAHOST_EXPORT )?(\\w+)"));
    QDirIterator headers(testpaths::source("host/include"), {"*.h"}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (headers.hasNext()) {
        QFile file(headers.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (auto it = aClass.globalMatch(QString::fromUtf8(file.readAll())); it.hasNext();)
            declared.insert(it.next().captured(1));
    }
    QSet<QString> host;
    for (const Symbol &symbol : symbols(testpaths::hostFile())) {
        if (symbol.isDefined)
            host.insert(symbol.name);
    }
    QVERIFY(host.size() > 200);
    int needed = 0;
    for (const Symbol &symbol : symbols(m_library)) {
        if (symbol.isDefined || !host.contains(symbol.name))
            continue;
        ++needed;
        const QString type = owner(symbol.name).section(QStringLiteral("::"), -1);
        QVERIFY2(declared.contains(type), qPrintable(symbol.name));
    }
    QVERIFY(needed > 100);
}

static QStringList neededLibraries(const QString &dynamicSection)
{
    static const QRegularExpression needed(QStringLiteral("\\(NEEDED\\).*\\[(.+)\\]"));
    QStringList libraries;
    for (auto it = needed.globalMatch(dynamicSection); it.hasNext();)
        libraries.append(it.next().captured(1));
    return libraries;
}

void tst_Library::needsFewLibraries()
{
    const QStringList libraries = neededLibraries(readelf(m_library, {"-d"}));
    QVERIFY(libraries.contains("libnordahost.so"));
    static const QRegularExpression known(
        QStringLiteral("^(libnordahost\\.so|libQt5(Core|Gui|Widgets)\\.so\\.5|lib(stdc\\+\\+|gcc_s|"
                       "c|m)\\.so\\.6?1?|"
                       "ld-linux.*)$"));
    for (const QString &library : libraries)
        QVERIFY2(known.match(library).hasMatch(), qPrintable(library));
}

void tst_Library::isHardened()
{
    const QString dynamic = readelf(m_library, {"-d"});
    QVERIFY(!dynamic.contains("TEXTREL"));
    QVERIFY(!dynamic.contains("RPATH") && !dynamic.contains("RUNPATH"));
    QVERIFY(dynamic.contains("BIND_NOW") || dynamic.contains("NOW"));
    const QString segments = readelf(m_library, {"-l"});
    QVERIFY(segments.contains("GNU_RELRO"));
    static const QRegularExpression stack(QStringLiteral("GNU_STACK.* (RW.?) +0x"));
    const QRegularExpressionMatch flags = stack.match(segments);
    QVERIFY2(flags.hasMatch(), qPrintable(segments));
    QCOMPARE(flags.captured(1).trimmed(), QStringLiteral("RW"));
    QStringList needed;
    for (const Symbol &symbol : symbols(m_library))
        needed.append(symbol.name);
    QVERIFY(needed.contains("__stack_chk_fail"));
}

void tst_Library::isStripped()
{
    const QString sections = readelf(m_library, {"-S"});
    QVERIFY(sections.contains(".dynsym"));
    QVERIFY(!sections.contains(".symtab") && !sections.contains(".debug_"));
}

void tst_Library::carriesNoPaths()
{
    QFile file(m_library);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    QVERIFY(content.contains("QTMETADATA"));
    for (const QString &path :
         {testpaths::sourceFolder(), testpaths::buildFolder(), QStringLiteral("/home/"),
          QStringLiteral("/root/"), QStringLiteral("/tmp/")})
        QVERIFY2(!content.contains(path.toUtf8()), qPrintable(path));
}

void tst_Library::servicesNeedNoWindows_data()
{
    QTest::addColumn<QString>("program");
    for (const char *program : {"norda-ecu", "norda-moduled"})
        QTest::newRow(program) << QString::fromLatin1(program);
}

/** They run where no screen is, and where its libraries are not installed. */
void tst_Library::servicesNeedNoWindows()
{
    QFETCH(QString, program);
    const QStringList libraries =
        neededLibraries(readelf(testpaths::buildFolder() + "/bin/" + program, {"-d"}));
    QVERIFY(libraries.contains("libQt5Core.so.5"));
    static const QRegularExpression known(
        QStringLiteral("^(libQt5(Core|DBus|Network|SerialBus|SerialPort)\\.so\\.5|"
                       "lib(stdc\\+\\+|gcc_s|c|m)\\.so\\.6?1?|ld-linux.*)$"));
    for (const QString &library : libraries)
        QVERIFY2(known.match(library).hasMatch(), qPrintable(library));
}

NORDA_TEST_MAIN(tst_Library)
#include "tst_library.moc"
