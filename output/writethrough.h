#pragma once

#include "descriptor.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace output {

/**
 * Writes a file that grows through to the disk, from a thread of its own: who writes it never waits
 * for the disk, and a power cut takes at most the last second. It sleeps while nothing is written.
 */
class WriteThrough
{
public:
    explicit WriteThrough(int file);
    ~WriteThrough();

    /** The file has been written. */
    void noteChange();
    /** Why the disk did not take it, as errno; 0 where all is well. */
    int error() const { return m_error; }
    /** Waits until all of it is on the disk. @return error() */
    int finish();

private:
    void run();

    Descriptor m_file;
    std::mutex m_mutex; // for the two flags
    std::condition_variable m_wakeUp;
    bool m_isChanged = false;
    bool m_isEnding = false;
    std::atomic<int> m_error{0};
    std::thread m_thread;
};

} // namespace output
