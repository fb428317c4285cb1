#include "testmain.h"
#include "testpaths.h"

#include <QDirIterator>

/** Dependencies run one way: in what sources include, in what targets link, and in the drawing. */
class tst_Architecture : public QObject
{
    Q_OBJECT
private slots:
    void includesRunOneWay_data();
    void includesRunOneWay();
    void backwardIncludeIsFound_data();
    void backwardIncludeIsFound();
    void drawingShowsTheBuild();
    void linksRunOneWay();
    void backwardLinkIsFound_data();
    void backwardLinkIsFound();
    void walksNameWhatExists();
};

struct Folder
{
    QString path;
    QStringList roots; // below it, where its headers are looked up
    QStringList uses;  // folders whose headers and libraries it may use
};

// clang-format off
static const QList<Folder> folders = {
    {"host/include", {""},            {}},
    {"output",       {""},            {}},
    {"process",      {""},            {}},
    {"bus",          {""},            {}},
    {"host/src",     {""},            {"host/include", "bus", "output"}},
    {"plugin",       {"", "include"}, {"host/include"}},
    {"module",       {""},            {"host/include", "bus", "output"}},
    {"unit",         {""},            {"host/include", "process"}},
    {"bench",        {""},            {"host/include", "module", "unit", "bus", "output", "process"}},
    {"ecu",          {""},            {"host/include", "module", "process"}},
    {"moduled",      {""},            {"host/include", "module", "bus", "process"}},
};
// clang-format on

/** The folder that holds a path of the source tree; without a path for any other. */
static Folder folderOf(const QString &path)
{
    for (const Folder &folder : folders) {
        if (path.startsWith(folder.path + QLatin1Char('/')))
            return folder;
    }
    return {};
}

static bool mayUse(const Folder &folder, const QString &other)
{
    return other == folder.path || folder.uses.contains(other);
}

// ---- Includes -----------------------------------------------------------------------------------

/** Where a source may find a header: beside itself, in its own folder, in those it uses, in any. */
static QStringList searchPath(const QString &source)
{
    const Folder own = folderOf(source);
    QList<Folder> ordered = {own};
    for (const bool isUsed : {true, false}) {
        for (const Folder &folder : folders) {
            if (own.uses.contains(folder.path) == isUsed)
                ordered.append(folder);
        }
    }
    QStringList found = {QFileInfo(source).path()};
    for (const Folder &folder : qAsConst(ordered)) {
        for (const QString &root : folder.roots)
            found.append(folder.path + QLatin1Char('/') + root);
    }
    return found << QStringLiteral(".");
}

/** The project's own header of this name, as a path in the source tree; empty for any other. */
static QString headerOf(const QString &source, const QString &name)
{
    const QDir tree(testpaths::sourceFolder());
    for (const QString &folder : searchPath(source)) {
        const QString path = QDir::cleanPath(folder + QLatin1Char('/') + name);
        if (tree.exists(path))
            return path;
    }
    return {};
}

static QStringList backwardIncludes(const QString &source, const QString &text)
{
    static const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s*[\"<](.+)[\">]"));
    const Folder own = folderOf(source);
    QStringList faults;
    int number = 0;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        ++number;
        const QRegularExpressionMatch match = include.match(line);
        const QString header = match.hasMatch() ? headerOf(source, match.captured(1)) : QString();
        if (header.isEmpty() || mayUse(own, folderOf(header).path))
            continue;
        faults.append(QStringLiteral("%1:%2: includes %3; expected headers of %4")
                          .arg(source)
                          .arg(number)
                          .arg(header, (QStringList(own.path) + own.uses).join(", ")));
    }
    return faults;
}

static QString read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void tst_Architecture::includesRunOneWay_data()
{
    QTest::addColumn<QString>("folder");
    for (const Folder &folder : folders)
        QTest::newRow(qPrintable(folder.path)) << folder.path;
}

void tst_Architecture::includesRunOneWay()
{
    QFETCH(QString, folder);
    const QDir tree(testpaths::sourceFolder());
    QDirIterator walk(tree.filePath(folder), {"*.cpp", "*.h"}, QDir::Files,
                      QDirIterator::Subdirectories);
    QStringList faults;
    int sources = 0;
    for (; walk.hasNext(); ++sources) {
        const QString file = walk.next();
        faults += backwardIncludes(tree.relativeFilePath(file), read(file));
    }
    QVERIFY(sources > 0);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
}

void tst_Architecture::backwardIncludeIsFound_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("header");

    QTest::newRow("plugin to host/src") << "plugin/plugin.cpp"
                                        << "settingsstore.h"
                                        << "host/src/settingsstore.h";
    QTest::newRow("plugin to module") << "plugin/plugin.cpp"
                                      << "../module/drive.h"
                                      << "module/drive.h";
    QTest::newRow("host/src to plugin") << "host/src/events.cpp"
                                        << "norda/pages.h"
                                        << "plugin/norda/pages.h";
    QTest::newRow("host/include to host/src") << "host/include/mem/settingsutil.h"
                                              << "settingsstore.h"
                                              << "host/src/settingsstore.h";
    QTest::newRow("module to unit") << "module/simulator/body.cpp"
                                    << "screen.h"
                                    << "unit/screen.h";
    QTest::newRow("unit to module") << "unit/headunit.cpp"
                                    << "drive.h"
                                    << "module/drive.h";
    QTest::newRow("unit to bench") << "unit/headunit.cpp"
                                   << "session/rig.h"
                                   << "bench/session/rig.h";
    QTest::newRow("bench to plugin") << "bench/main.cpp"
                                     << "plugin/plugin.h"
                                     << "plugin/plugin.h";
    QTest::newRow("ecu to bench") << "ecu/main.cpp"
                                  << "tools/childprocess.h"
                                  << "bench/tools/childprocess.h";
    QTest::newRow("bench to tests") << "bench/main.cpp"
                                    << "../tests/testpaths.h"
                                    << "tests/testpaths.h";
}

void tst_Architecture::backwardIncludeIsFound()
{
    QFETCH(QString, source);
    QFETCH(QString, name);
    QFETCH(QString, header);
    const QStringList faults =
        backwardIncludes(source, QStringLiteral("#pragma once\n#include \"%1\"\n").arg(name));
    QCOMPARE(faults.size(), 1);
    const QString expected = QStringLiteral("%1:2: includes %2; expected headers of ");
    QVERIFY2(faults[0].startsWith(expected.arg(source, header)), qPrintable(faults[0]));
}

// ---- Targets ------------------------------------------------------------------------------------

/** Lines such as "bench: norda-bench", "a --> b" for a link, "a -.-> b" for what is built first. */
static QStringList builtGraph()
{
    const QString text = read(testpaths::buildFolder() + QStringLiteral("/tests/targetgraph.txt"));
    QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

/** The same lines from the drawing: its boxes are folders, its arrows links. */
static QStringList drawnGraph()
{
    static const QRegularExpression block(QStringLiteral("```mermaid\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression arrow(QStringLiteral("^([\\w-]+) (-->|-\\.->) ([\\w-]+)$"));
    const QString page = read(testpaths::source(QStringLiteral("docs/architecture.md")));
    QStringList lines;
    QString box;
    for (const QString &row : block.match(page).captured(1).split(QLatin1Char('\n'))) {
        const QStringList words = row.simplified().split(QLatin1Char(' '));
        if (words[0] == QLatin1String("subgraph"))
            box = words.value(1);
        else if (words[0] == QLatin1String("end"))
            box.clear();
        else if (arrow.match(row.trimmed()).hasMatch())
            lines.append(row.trimmed());
        else if (!box.isEmpty())
            lines.append(box + QStringLiteral(": ") + words[0]);
    }
    lines.sort();
    return lines;
}

static QStringList without(const QStringList &lines, const QStringList &others)
{
    QStringList rest = lines;
    for (const QString &line : others)
        rest.removeAll(line);
    return rest;
}

void tst_Architecture::drawingShowsTheBuild()
{
    const QStringList built = builtGraph();
    const QStringList drawn = drawnGraph();
    QVERIFY(!built.isEmpty());
    const QString message = QStringLiteral("in the build, not in docs/architecture.md: %1\n"
                                           "in docs/architecture.md, not in the build: %2")
                                .arg(without(built, drawn).join(QStringLiteral("; ")),
                                     without(drawn, built).join(QStringLiteral("; ")));
    QVERIFY2(built == drawn, qPrintable(message));
}

/** Who links a target gets its headers; those of the host lie in a folder of their own. */
static QString headersOf(const QString &box)
{
    return box == QLatin1String("host") ? QStringLiteral("host/include") : box;
}

static Folder folderOfBox(const QString &box)
{
    return folderOf(box == QLatin1String("host") ? QStringLiteral("host/src/") : box + '/');
}

static QStringList backwardLinks(const QStringList &graph)
{
    QMap<QString, QString> boxes;
    for (const QString &line : graph) {
        if (line.contains(QStringLiteral(": ")))
            boxes.insert(line.section(QStringLiteral(": "), 1),
                         line.section(QStringLiteral(": "), 0, 0));
    }
    QStringList faults;
    for (const QString &line : graph) {
        const QStringList ends = line.split(QStringLiteral(" --> "));
        if (ends.size() == 2 && !mayUse(folderOfBox(boxes[ends[0]]), headersOf(boxes[ends[1]])))
            faults.append(QStringLiteral("%1 of %2 links %3 of %4")
                              .arg(ends[0], boxes[ends[0]], ends[1], boxes[ends[1]]));
    }
    return faults;
}

void tst_Architecture::linksRunOneWay()
{
    const QStringList faults = backwardLinks(builtGraph());
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
}

void tst_Architecture::backwardLinkIsFound_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("fault");

    QTest::newRow("unit to module") << "nordaunit --> nordamodule"
                                    << "nordaunit of unit links nordamodule of module";
    QTest::newRow("module to unit") << "nordamodule --> nordaunit"
                                    << "nordamodule of module links nordaunit of unit";
    QTest::newRow("host to plugin") << "nordahost --> nordaplugin_objects"
                                    << "nordahost of host links nordaplugin_objects of plugin";
    QTest::newRow("bench to plugin") << "norda-bench --> nordaPlugin"
                                     << "norda-bench of bench links nordaPlugin of plugin";
}

void tst_Architecture::backwardLinkIsFound()
{
    QFETCH(QString, link);
    QFETCH(QString, fault);
    QVERIFY(backwardLinks(builtGraph() << link).contains(fault));
}

// ---- Walks --------------------------------------------------------------------------------------

/** Whether a source of the product has the class and the function of "Drive::deliver". */
static bool isNamedInSources(const QString &name)
{
    static const QStringList sources = [] {
        QStringList texts;
        for (const Folder &folder : folders) {
            QDirIterator walk(testpaths::source(folder.path), {"*.cpp", "*.h"}, QDir::Files,
                              QDirIterator::Subdirectories);
            while (walk.hasNext())
                texts.append(read(walk.next()));
        }
        return texts;
    }();
    const QString scope = name.section(QStringLiteral("::"), 0, -2);
    const QRegularExpression function("\\b" + name.section(QStringLiteral("::"), -1) +
                                      "(\\(|\\[|::)");
    const auto holdsBoth = [&](const QString &text) {
        return text.contains(scope) && text.contains(function);
    };
    return std::any_of(sources.begin(), sources.end(), holdsBoth);
}

void tst_Architecture::walksNameWhatExists()
{
    static const QRegularExpression section(QStringLiteral("\n## Three walks\n(.*?)\n## "),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression quoted(QStringLiteral("`([\\w:]+)`"));
    const QString page = read(testpaths::source(QStringLiteral("docs/architecture.md")));
    QStringList missing;
    int names = 0;
    auto found = quoted.globalMatch(section.match(page).captured(1));
    for (; found.hasNext(); ++names) {
        const QString name = found.next().captured(1);
        if (!isNamedInSources(name))
            missing.append(name);
    }
    QVERIFY(names > 0);
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QStringLiteral(", "))));
}

NORDA_TEST_MAIN(tst_Architecture)
#include "tst_architecture.moc"
