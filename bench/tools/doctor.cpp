#include "tools/doctor.h"

#include "appplugin.h"
#include "pluginfile.h"
#include "sourceinterface.h"
#include "tools/childprocess.h"
#include "tools/libraryfile.h"
#include "windowinterface.h"
#include "windowstack.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QVersionNumber>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <cxxabi.h>
#include <dlfcn.h>
#include <unistd.h>

static constexpr int longestCheckMs = 30'000;

static void printPassed(const QString &what)
{
    std::printf("ok  %s\n", qPrintable(what));
}

static QString machineName(int machine, int bits)
{
    static const struct
    {
        int machine;
        const char *name;
    } known[] = {{EM_X86_64, "x86-64"}, {EM_386, "x86"}, {EM_ARM, "ARM"}, {EM_AARCH64, "ARMv8"}};
    for (const auto &row : known) {
        if (row.machine == machine)
            return QStringLiteral("%1, %2 bits").arg(QLatin1String(row.name)).arg(bits);
    }
    return QStringLiteral("processor number %1, %2 bits").arg(machine).arg(bits);
}

/** The machine that this program was built for, from its own header. */
static const LibraryFile::Header &ownHeader()
{
    static LibraryFile::Header header = {};
    QFile own(QStringLiteral("/proc/self/exe"));
    if (header.e_machine == 0 && own.open(QIODevice::ReadOnly))
        own.read(reinterpret_cast<char *>(&header), sizeof header);
    return header;
}

static QString machineOf(const LibraryFile::Header &header)
{
    return machineName(header.e_machine, header.e_ident[EI_CLASS] == ELFCLASS64 ? 64 : 32);
}

static bool isSameMachine(const LibraryFile::Header &a, const LibraryFile::Header &b)
{
    return a.e_machine == b.e_machine && a.e_ident[EI_CLASS] == b.e_ident[EI_CLASS];
}

static QString faultOfFormat(const QString &file, const LibraryFile &library)
{
    QString fault = faultOfPluginFile(file);
    if (!fault.isEmpty())
        return fault;
    if (!library.isLibrary())
        return QStringLiteral("expected a shared library, found another kind of file; build the "
                              "plugin as a library of type MODULE");
    const QString machine = machineOf(library.header());
    if (!isSameMachine(library.header(), ownHeader()))
        return QStringLiteral("built for %1, this head unit is %2; build it with this unit's "
                              "compiler")
            .arg(machine, machineOf(ownHeader()));
    printPassed(QStringLiteral("shared library for %1").arg(machine));
    return {};
}

static QString faultOfInterfaceId(const QJsonObject &metaData)
{
    const QString iid = metaData.value(QStringLiteral("IID")).toString();
    if (iid != WindowStack::wantedIid())
        return QStringLiteral("expected the interface id %1, found %2; state it in "
                              "Q_PLUGIN_METADATA")
            .arg(WindowStack::wantedIid(), iid.isEmpty() ? QStringLiteral("no Qt plugin") : iid);
    printPassed(QStringLiteral("interface id %1").arg(iid));
    return {};
}

static QString faultOfQtVersion(const QJsonObject &metaData)
{
    const int version = metaData.value(QStringLiteral("version")).toInt();
    const int major = version >> 16;
    const int minor = version >> 8 & 0xff;
    const QVersionNumber own = QLibraryInfo::version();
    if (major != own.majorVersion() || minor > own.minorVersion())
        return QStringLiteral("built with Qt %1.%2, this head unit has %3; build it with that one")
            .arg(major)
            .arg(minor)
            .arg(QString::fromLatin1(qVersion()));
    const bool isDebug = metaData.value(QStringLiteral("debug")).toBool();
    printPassed(QStringLiteral("built with Qt %1.%2, %3 build; this head unit has %4")
                    .arg(major)
                    .arg(minor)
                    .arg(isDebug ? QStringLiteral("debug") : QStringLiteral("release"))
                    .arg(QString::fromLatin1(qVersion())));
    return {};
}

/** What can be found without running any of it. */
static QString faultOfFile(const QString &file, const LibraryFile &library)
{
    QString fault = faultOfFormat(file, library);
    if (!fault.isEmpty())
        return fault;
    QPluginLoader loader;
    const QJsonObject metaData = openPluginFile(&loader, file);
    fault = faultOfInterfaceId(metaData);
    return fault.isEmpty() ? faultOfQtVersion(metaData) : fault;
}

/** The child reports what it does next and what it finds wrong, a line each. */
class Report
{
public:
    explicit Report(QIODevice *device) : m_device(device) {}

    void begin(const QString &what)
    {
        std::fflush(stdout);
        write(doing, what);
    }
    /** The word without which there is no verdict. */
    void finish(const QString &fault) { write(verdict, fault); }

    static constexpr char doing = '>';
    static constexpr char verdict = '!';

private:
    void write(char mark, const QString &text)
    {
        m_device->write(mark + text.simplified().toUtf8() + '\n');
    }

    QIODevice *m_device;
};

/** The last line with this mark; null where there is none. */
static QString lastReported(const ChildProcess &child, char mark)
{
    QString text;
    for (const QByteArray &line : child.results().split('\n')) {
        if (line.startsWith(mark))
            text = QString::fromUtf8(line.mid(1));
    }
    return text;
}

static QString inSource(const QString &symbol)
{
    int status = 0;
    char *text = abi::__cxa_demangle(symbol.toLatin1().constData(), nullptr, nullptr, &status);
    QString name = status == 0 ? QString::fromLatin1(text) : symbol;
    std::free(text);
    return name;
}

static QString faultOfSymbols(const LibraryFile &library)
{
    const QStringList needed = library.neededLibraries();
    for (const QString &name : needed) {
        if (!::dlopen(name.toLocal8Bit().constData(), RTLD_LAZY | RTLD_GLOBAL))
            return QStringLiteral("needs %1, which this head unit does not have; link without it")
                .arg(name);
    }
    const QStringList undefined = library.undefinedSymbols();
    QStringList missing;
    for (const QString &symbol : undefined) {
        if (!::dlsym(RTLD_DEFAULT, symbol.toLatin1().constData()))
            missing.append(inSource(symbol));
    }
    if (!missing.isEmpty())
        return QStringLiteral("needs what neither the SDK nor its libraries offer: %1; link with "
                              "-Wl,--no-undefined to see where from")
            .arg(missing.join(QStringLiteral(", ")));
    printPassed(QStringLiteral("%1 libraries and %2 symbols found")
                    .arg(needed.size())
                    .arg(undefined.size()));
    return {};
}

static QString faultOfWindow(AppPlugin *plugin, int id)
{
    WindowInterface *window = plugin->requestWindowInterface(id);
    if (!window)
        return QStringLiteral("offers window %1 and returns none for it; return one from "
                              "requestWindowInterface()")
            .arg(id);
    window->onCreate();
    QWidget *widget = window->mainWidget();
    if (!widget)
        return QStringLiteral("window %1 has no widget after onCreate(); make one there and return "
                              "it from mainWidget()")
            .arg(id);
    printPassed(QStringLiteral("window %1 '%2': %3, %4 x %5, attribute 0x%6")
                    .arg(QString::number(id), window->name(),
                         QString::fromLatin1(widget->metaObject()->className()),
                         QString::number(widget->width()), QString::number(widget->height()),
                         QString::number(window->attribute(), 16)));
    window->onDestroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return {};
}

static QString faultOfSource(AppPlugin *plugin, int id)
{
    const SourceInterface *source = plugin->requestSourceInterface(id);
    if (!source)
        return QStringLiteral("offers audio source %1 and returns none for it; return one from "
                              "requestSourceInterface()")
            .arg(id);
    printPassed(QStringLiteral("audio source %1 '%2'").arg(id).arg(source->name()));
    return {};
}

static QString faultOfRoot(QObject *root)
{
    const QString className = QString::fromLatin1(root->metaObject()->className());
    const QString wanted = QString::fromLatin1(qobject_interface_iid<AppPlugin *>());
    if (!qobject_cast<AppPlugin *>(root))
        return QStringLiteral("expected a root object with the interface %1, found %2 without; "
                              "derive it from AppPlugin and name that in Q_INTERFACES")
            .arg(wanted, className);
    printPassed(QStringLiteral("root object %1 with %2").arg(className, wanted));
    return {};
}

static QString faultOfContent(AppPlugin *plugin, Report *report)
{
    report->begin(QStringLiteral("starting in create()"));
    plugin->create();
    report->begin(QStringLiteral("listing its ids"));
    const QList<int> windows = plugin->windowInterfaceID();
    const QList<int> sources = plugin->sourceInterfaceID();
    if (windows.isEmpty() && sources.isEmpty())
        return QStringLiteral("offers no window and no audio source; list their ids in "
                              "windowInterfaceID() and sourceInterfaceID()");
    QString fault;
    for (auto id = windows.begin(); fault.isEmpty() && id != windows.end(); ++id) {
        report->begin(QStringLiteral("building window %1").arg(*id));
        fault = faultOfWindow(plugin, *id);
    }
    for (auto id = sources.begin(); fault.isEmpty() && id != sources.end(); ++id) {
        report->begin(QStringLiteral("making audio source %1").arg(*id));
        fault = faultOfSource(plugin, *id);
    }
    return fault;
}

static QString faultOfPlugin(const QString &file, Report *report)
{
    report->begin(QStringLiteral("making the root object"));
    QPluginLoader loader;
    openPluginFile(&loader, file);
    QObject *root = loader.instance();
    if (!root)
        return QStringLiteral("cannot be loaded: %1").arg(loader.errorString());
    QString fault = faultOfRoot(root);
    if (fault.isEmpty())
        fault = faultOfContent(qobject_cast<AppPlugin *>(root), report);
    if (!fault.isEmpty())
        return fault;
    report->begin(QStringLiteral("being unloaded"));
    loader.unload();
    return {};
}

[[noreturn]] static void workInChild(const QString &file, const LibraryFile &library,
                                     QIODevice *results)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static char program[] = "norda-bench";
    static char *arguments[] = {program, nullptr};
    static int count = 1;
    Report report(results);
    QString fault;
    {
        report.begin(QStringLiteral("starting an application"));
        QApplication application(count, arguments);
        report.begin(QStringLiteral("loading its libraries"));
        fault = faultOfSymbols(library);
        if (fault.isEmpty())
            fault = faultOfPlugin(file, &report);
    }
    report.finish(fault);
    std::fflush(nullptr);
    ::_exit(0); // what the plugin has left to do at exit is not checked
}

static QString faultAtWork(const QString &file, const LibraryFile &library)
{
    const ChildProcess child = ChildProcess::run(
        [&](QIODevice *results) { workInChild(file, library, results); }, longestCheckMs);
    QString verdict = lastReported(child, Report::verdict);
    if (child.hasSucceeded() && !verdict.isNull())
        return verdict;
    const QString doing = lastReported(child, Report::doing);
    switch (child.end()) {
    case ChildProcess::NotStarted:
        return QStringLiteral("cannot be tried: no process for it");
    case ChildProcess::TimedOut:
        return QStringLiteral("took longer than %1 s while %2; wait for nothing there")
            .arg(longestCheckMs / 1000)
            .arg(doing);
    case ChildProcess::Interrupted:
        return QStringLiteral("was not examined to the end: the check was interrupted");
    case ChildProcess::Crashed:
        return QStringLiteral("crashed while %1 (%2); run it there under a debugger")
            .arg(doing, child.endInWords());
    case ChildProcess::Exited:
        break;
    }
    return QStringLiteral("ended the program while %1 (%2); leave that to the head unit")
        .arg(doing, child.endInWords());
}

bool checkPlugin(const QString &file, QString *error)
{
    const LibraryFile library(file);
    QString fault = faultOfFile(file, library);
    if (fault.isEmpty())
        fault = faultAtWork(file, library);
    if (fault.isEmpty()) {
        std::printf("%s: a head unit would accept it\n", qPrintable(file));
        return true;
    }
    *error = QStringLiteral("%1: %2").arg(file, fault);
    return false;
}
