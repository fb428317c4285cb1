#include "tools/platform.h"

#include "tools/childprocess.h"

#include <QGuiApplication>
#include <QIODevice>
#include <QStringList>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

static constexpr char variable[] = "QT_QPA_PLATFORM";
static constexpr int longestStartMs = 10'000;

static void pass(const QString &platform)
{
    if (platform.isEmpty())
        qunsetenv(variable);
    else
        qputenv(variable, platform.toLocal8Bit());
}

/** Qt prints several lines and aborts when a platform fails; here that ends a child in silence. */
static void startInChild(QIODevice *results)
{
    static char program[] = "norda-bench";
    static char *arguments[] = {program, nullptr};
    static int count = 1;
    ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &) {
        if (type == QtFatalMsg)
            ::_exit(1);
    });
    const QGuiApplication application(count, arguments);
    results->write("started");
    ::_exit(0);
}

static bool canStart(const QString &platform)
{
    pass(platform);
    const ChildProcess child = ChildProcess::run(startInChild, longestStartMs);
    return child.hasSucceeded() && !child.results().isEmpty();
}

static bool canListen(int port)
{
    const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int reuse = 1;
    ::setsockopt(server, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(quint16(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool works =
        ::bind(server, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
        ::listen(server, 1) == 0;
    ::close(server);
    return works;
}

/** The port that viewers connect to; Qt would cut a number that is too large. */
static bool readPort(const QString &platform, int *port, QString *error)
{
    const QString key = QStringLiteral("port=");
    for (const QString &part : platform.split(QLatin1Char(':')).mid(1)) {
        if (!part.contains(key))
            continue;
        bool isNumber = part.startsWith(key);
        if (isNumber)
            *port = part.mid(key.size()).toInt(&isNumber);
        if (isNumber && *port >= 1 && *port <= 65535)
            continue;
        *error =
            QStringLiteral("--platform: expected port= with a number from 1 to 65535, got '%1'")
                .arg(part);
        return false;
    }
    return true;
}

static bool checkPort(const QString &platform, QString *error)
{
    int port = 5900;
    if (!platform.startsWith(QLatin1String("vnc")))
        return true;
    if (!readPort(platform, &port, error))
        return false;
    if (!canListen(port))
        *error = QStringLiteral("--platform: expected a port that can be listened on, %1 is in use "
                                "or not allowed")
                     .arg(port);
    return error->isEmpty();
}

/** "VNC:port=5901" is "vnc:port=5901": Qt ignores the case of the name. */
static QString normalized(const QString &platform)
{
    const QString name = platform.section(QLatin1Char(':'), 0, 0);
    return name.toLower() + platform.mid(name.size());
}

static QString noneWorks(const QString &wanted)
{
    if (wanted.isEmpty())
        return QStringLiteral("No display can be used here (DISPLAY is '%1'); try --headless")
            .arg(qEnvironmentVariable("DISPLAY"));
    return QStringLiteral("--platform: expected a Qt platform that works here, got '%1'")
        .arg(wanted);
}

bool platform::isExpected(const QString &name)
{
    return !name.isEmpty() || !qEnvironmentVariableIsEmpty(variable) ||
           !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void platform::useOffscreen()
{
    pass(QStringLiteral("offscreen"));
}

bool platform::use(const QString &name, QString *error)
{
    const QString wanted = name.isEmpty() ? qEnvironmentVariable(variable) : name;
    for (const QString &entry : wanted.split(QLatin1Char(';'))) {
        const QString platform = normalized(entry.trimmed());
        if (!checkPort(platform, error))
            return false;
        if (canStart(platform))
            return true;
    }
    *error = noneWorks(wanted);
    return false;
}
