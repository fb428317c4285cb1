#include "writethrough.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace output {

static constexpr auto pause = 300ms; // in which changes are collected

WriteThrough::WriteThrough(int file)
    : m_file(fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)), m_thread(&WriteThrough::run, this)
{
}

WriteThrough::~WriteThrough()
{
    if (m_thread.joinable())
        finish();
}

int WriteThrough::finish()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_wakeUp.notify_one();
    m_thread.join();
    return m_error;
}

void WriteThrough::noteChange()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isChanged = true;
    }
    m_wakeUp.notify_one();
}

void WriteThrough::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (true) {
        m_wakeUp.wait(lock, [this] { return m_isChanged || m_isEnding; });
        if (!m_isChanged)
            return;
        m_isChanged = false;
        lock.unlock();
        if (fdatasync(m_file.number()) != 0)
            m_error = errno;
        lock.lock();
        m_wakeUp.wait_for(lock, pause, [this] { return m_isEnding; });
    }
}

} // namespace output
