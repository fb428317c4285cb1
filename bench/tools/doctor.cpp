#include "tools/doctor.h"

#include "appplugin.h"
#include "sourceinterface.h"
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

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using ElfHeader = ElfW(Ehdr);
using ElfSection = ElfW(Shdr);
using ElfSymbol = ElfW(Sym);
using ElfDynamic = ElfW(Dyn);

static constexpr unsigned longestCheckSeconds = 60;
static constexpr qint64 largestLibrary = 256'000'000;

// What the two processes share: the words for what is being done, and what was found wrong.
struct Shared
{
    char doing[256];
    char wrong[4096];
};

static void say(const QString &what)
{
    std::printf("ok  %s\n", qPrintable(what));
}

// ---- The file as it lies there

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
static const ElfHeader &ownHeader()
{
    static ElfHeader header = {};
    QFile own(QStringLiteral("/proc/self/exe"));
    if (header.e_machine == 0 && own.open(QIODevice::ReadOnly))
        own.read(reinterpret_cast<char *>(&header), sizeof header);
    return header;
}

static QString machineOf(const ElfHeader &header)
{
    return machineName(header.e_machine, header.e_ident[EI_CLASS] == ELFCLASS64 ? 64 : 32);
}

static bool isSameMachine(const ElfHeader &a, const ElfHeader &b)
{
    return a.e_machine == b.e_machine && a.e_ident[EI_CLASS] == b.e_ident[EI_CLASS];
}

/** A plugin file's header, sections and dynamic symbols; every offset is checked. */
class LibraryFile
{
public:
    explicit LibraryFile(const QString &path)
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            m_bytes = file.read(largestLibrary);
    }

    bool isLibrary() const
    {
        const auto *header = at<ElfHeader>(0);
        return header && std::memcmp(header->e_ident, ELFMAG, SELFMAG) == 0 &&
               header->e_type == ET_DYN;
    }
    const ElfHeader &header() const { return *at<ElfHeader>(0); }

    QStringList undefinedSymbols() const
    {
        QStringList names;
        forEachEntry<ElfSymbol>(SHT_DYNSYM, [&names](const ElfSymbol &symbol, auto text) {
            const bool isWeak = ELF64_ST_BIND(symbol.st_info) == STB_WEAK;
            if (symbol.st_shndx == SHN_UNDEF && !isWeak && symbol.st_name != 0)
                names.append(text(symbol.st_name));
        });
        return names;
    }
    QStringList neededLibraries() const
    {
        QStringList names;
        forEachEntry<ElfDynamic>(SHT_DYNAMIC, [&names](const ElfDynamic &entry, auto text) {
            if (entry.d_tag == DT_NEEDED)
                names.append(text(entry.d_un.d_val));
        });
        return names;
    }

private:
    template <typename Value>
    const Value *at(quint64 offset) const
    {
        const quint64 size = quint64(m_bytes.size());
        if (offset > size || size - offset < sizeof(Value) || offset % alignof(Value) != 0)
            return nullptr;
        return reinterpret_cast<const Value *>(m_bytes.constData() + offset);
    }
    const ElfSection *section(unsigned index) const
    {
        return index < header().e_shnum
                   ? at<ElfSection>(header().e_shoff + quint64(index) * sizeof(ElfSection))
                   : nullptr;
    }
    QString textAt(quint64 offset) const
    {
        if (offset >= quint64(m_bytes.size()))
            return {};
        const int start = int(offset);
        const int length = m_bytes.indexOf('\0', start) - start;
        return QString::fromLatin1(m_bytes.mid(start, qMax(0, length)));
    }
    template <typename Entry, typename Visit>
    void forEachEntry(unsigned type, Visit visit) const
    {
        for (unsigned i = 0; const ElfSection *table = section(i); ++i) {
            const ElfSection *strings = section(table->sh_link);
            if (table->sh_type != type || !strings)
                continue;
            const quint64 start = strings->sh_offset;
            const auto text = [this, start](quint64 offset) { return textAt(start + offset); };
            for (quint64 k = 0; k < table->sh_size / sizeof(Entry); ++k) {
                const auto *entry = at<Entry>(table->sh_offset + k * sizeof(Entry));
                if (!entry)
                    return;
                visit(*entry, text);
            }
        }
    }

    QByteArray m_bytes;
};

/** What can be told without running any of it. */
static QString faultOfFile(const QString &file, const LibraryFile &library)
{
    if (QFileInfo(file).isDir())
        return QStringLiteral("expected a plugin, found a directory");
    if (!QFileInfo(file).isFile())
        return QStringLiteral("expected a plugin, found no such file");
    if (!library.isLibrary())
        return QStringLiteral("expected a shared library, found another kind of file; build the "
                              "plugin as a library of type MODULE");
    const QString machine = machineOf(library.header());
    if (!isSameMachine(library.header(), ownHeader()))
        return QStringLiteral("built for %1, this head unit is %2; build it with this unit's "
                              "compiler")
            .arg(machine, machineOf(ownHeader()));
    say(QStringLiteral("shared library for %1").arg(machine));

    const QJsonObject metaData = QPluginLoader(QFileInfo(file).absoluteFilePath()).metaData();
    const QString iid = metaData.value(QStringLiteral("IID")).toString();
    if (iid != WindowStack::wantedIid())
        return QStringLiteral("expected the interface id %1, found %2; state it in "
                              "Q_PLUGIN_METADATA")
            .arg(WindowStack::wantedIid(), iid.isEmpty() ? QStringLiteral("no Qt plugin") : iid);
    say(QStringLiteral("interface id %1").arg(iid));

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
    say(QStringLiteral("built with Qt %1.%2, %3 build; this head unit has %4")
            .arg(major)
            .arg(minor)
            .arg(isDebug ? QStringLiteral("debug") : QStringLiteral("release"))
            .arg(QString::fromLatin1(qVersion())));
    return {};
}

// ---- The plugin at work, in the other process

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
            return QStringLiteral("needs %1, which this head unit has not; link without it")
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
    say(QStringLiteral("%1 libraries and %2 symbols found")
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
    say(QStringLiteral("window %1 '%2': %3, %4 x %5, attribute 0x%6")
            .arg(id)
            .arg(window->name(), QString::fromLatin1(widget->metaObject()->className()))
            .arg(widget->width())
            .arg(widget->height())
            .arg(window->attribute(), 0, 16));
    window->onDestroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return {};
}

static QString faultOfRoot(const QString &file, Shared *shared)
{
    const auto doing = [shared](const QString &what) {
        std::fflush(stdout);
        qstrncpy(shared->doing, what.toUtf8().constData(), sizeof shared->doing);
    };
    doing(QStringLiteral("making the root object"));
    QPluginLoader loader(QFileInfo(file).absoluteFilePath());
    QObject *root = loader.instance();
    if (!root)
        return QStringLiteral("cannot be loaded: %1").arg(loader.errorString());
    auto *plugin = qobject_cast<AppPlugin *>(root);
    if (!plugin)
        return QStringLiteral("expected a root object with the interface %1, found %2 without; "
                              "derive it from AppPlugin and name that in Q_INTERFACES")
            .arg(QString::fromLatin1(qobject_interface_iid<AppPlugin *>()),
                 QString::fromLatin1(root->metaObject()->className()));
    say(QStringLiteral("root object %1 with %2")
            .arg(QString::fromLatin1(root->metaObject()->className()),
                 QString::fromLatin1(qobject_interface_iid<AppPlugin *>())));
    doing(QStringLiteral("starting in create()"));
    plugin->create();
    doing(QStringLiteral("listing its ids"));
    const QList<int> windows = plugin->windowInterfaceID();
    const QList<int> sources = plugin->sourceInterfaceID();
    if (windows.isEmpty() && sources.isEmpty())
        return QStringLiteral("offers no window and no audio source; list their ids in "
                              "windowInterfaceID() and sourceInterfaceID()");
    for (const int id : windows) {
        doing(QStringLiteral("building window %1").arg(id));
        QString fault = faultOfWindow(plugin, id);
        if (!fault.isEmpty())
            return fault;
    }
    for (const int id : sources) {
        doing(QStringLiteral("making audio source %1").arg(id));
        const SourceInterface *source = plugin->requestSourceInterface(id);
        if (!source)
            return QStringLiteral("offers audio source %1 and returns none for it; return one from "
                                  "requestSourceInterface()")
                .arg(id);
        say(QStringLiteral("audio source %1 '%2'").arg(id).arg(source->name()));
    }
    doing(QStringLiteral("being unloaded"));
    loader.unload();
    return {};
}

[[noreturn]] static void workInChild(const QString &file, const LibraryFile &library,
                                     Shared *shared)
{
    ::alarm(longestCheckSeconds);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static char program[] = "norda-bench";
    static char *arguments[] = {program, nullptr};
    static int count = 1;
    QString fault;
    {
        QApplication application(count, arguments);
        fault = faultOfSymbols(library);
        if (fault.isEmpty())
            fault = faultOfRoot(file, shared);
    }
    qstrncpy(shared->wrong, fault.toUtf8().constData(), sizeof shared->wrong);
    std::fflush(nullptr);
    ::_exit(0);
}

static QString faultAtWork(const QString &file, const LibraryFile &library)
{
    void *memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    std::fflush(nullptr);
    const pid_t child = memory == MAP_FAILED ? -1 : ::fork();
    if (child < 0)
        return QStringLiteral("cannot be tried: no process for it");
    auto *shared = static_cast<Shared *>(memory);
    if (child == 0)
        workInChild(file, library, shared);
    int status = 0;
    ::waitpid(child, &status, 0);
    QString fault = QString::fromUtf8(shared->wrong);
    const QString doing = QString::fromUtf8(shared->doing);
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        fault = QStringLiteral("took longer than %1 s while %2; wait for nothing there")
                    .arg(longestCheckSeconds)
                    .arg(doing);
    else if (WIFSIGNALED(status) || WEXITSTATUS(status) != 0)
        fault = QStringLiteral("crashed while %1 (%2); run it there under a debugger")
                    .arg(doing, WIFSIGNALED(status)
                                    ? QString::fromLatin1(::strsignal(WTERMSIG(status)))
                                    : QStringLiteral("exit code %1").arg(WEXITSTATUS(status)));
    ::munmap(memory, sizeof(Shared));
    return fault;
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
