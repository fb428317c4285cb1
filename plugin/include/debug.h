#pragma once

#include <QDebug>
#include <QLoggingCategory>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <execinfo.h>
#include <sys/syscall.h>
#include <unistd.h>

/*
 * Log lines of the plugin. Each reads: "[DBG]", the kernel thread id, the function's signature, the
 * source line, "--" and whatever is streamed after it. The thread id tells the GUI thread from the
 * host's own threads in a mixed log.
 *
 *     NORDA_TRACE;                          a mark
 *     NORDA_TRACE << "type" << int(type);   a message
 *
 * Its arguments are not evaluated while debug output is off.
 */
#define NORDA_TRACE NORDA_TRACE_AT(__LINE__)

/** A line that keeps its number in the logs wherever the code moves. */
#define NORDA_TRACE_AT(line) NORDA_LOG_LINE(debug, isDebugEnabled, line)
/** The same at the levels of a dropped payload and of a broken promise of the host. */
#define NORDA_WARNING NORDA_LOG_LINE(warning, isWarningEnabled, __LINE__)
#define NORDA_CRITICAL NORDA_LOG_LINE(critical, isCriticalEnabled, __LINE__)

#define NORDA_LOG_LINE(level, enabled, line)                                                       \
    for (bool nordaLogs = QLoggingCategory::defaultCategory()->enabled(); nordaLogs;               \
         nordaLogs = false)                                                                        \
    QMessageLogger(__FILE__, line, Q_FUNC_INFO).level()                                            \
        << "[DBG]" << norda::kernelThreadId() << Q_FUNC_INFO << (line) << "--"

namespace norda {

inline long kernelThreadId()
{
    return ::syscall(SYS_gettid);
}

/** As much of a text from the car as belongs into a warning: nobody vouches for its length. */
inline QString excerpt(const QString &carText)
{
    static constexpr int longest = 80;
    return carText.left(longest);
}

/** Traces how long a scope takes: one line on the way in, two on the way out. */
class AutoPrint
{
public:
    AutoPrint(const char *function, int line)
        : m_enabled(QLoggingCategory::defaultCategory()->isDebugEnabled())
    {
        if (!m_enabled)
            return;
        m_function = QString::fromLatin1(function);
        m_line = line;
        m_startMs = monotonicMs();
        print() << "[--IN--]";
    }

    ~AutoPrint()
    {
        if (!m_enabled)
            return;
        const qint32 elapsedMs = monotonicMs() - m_startMs;
        print() << "[--ExecTime--]" << elapsedMs;
        print() << "[--OUT--]";
    }

    Q_DISABLE_COPY(AutoPrint)

private:
    static qint32 monotonicMs()
    {
        timespec now;
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        return qint32(qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000);
    }

    QDebug print() const
    {
        return QMessageLogger().debug()
               << "[DBG]" << kernelThreadId() << m_function << QString::number(m_line);
    }

    bool m_enabled;
    QString m_function;
    int m_line = 0;
    qint32 m_startMs = 0;
};

/** Prints the call stack on standard output; to be called from a debugger or a line put in by hand.
 */
inline void print_trace()
{
    void *addresses[100];
    const int count = ::backtrace(addresses, 100);
    char **frames = ::backtrace_symbols(addresses, count);
    std::printf("\n ********* print_trace *********\n");
    if (!frames) {
        std::perror("backtrace_symbols");
        std::exit(1);
    }
    for (int i = 0; i < count; ++i)
        std::printf("%s\n", frames[i]);
    std::printf(" ********* print_trace end *********\n\n");
    std::free(frames);
}

} // namespace norda
