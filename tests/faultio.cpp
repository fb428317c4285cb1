/*
 * A library to preload: it lets the file calls of a program fail as a disk does.
 *
 *   NORDA_FAULTIO=CALL:N:FAULT     what fails
 *   NORDA_FAULTIO_FOLDER=/path     only files below it are concerned
 *
 * CALL is open (for writing), write, fsync, fdatasync, rename or close, and N the call that fails,
 * from 1. As "bytes", N is the room on the disk: what is written beyond it fails. FAULT is ENOSPC
 * or EROFS, which last, EIO, which happens once, "short" (a write that takes half) or "slow". What
 * it did is reported on standard error.
 */
#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>

template <typename Function>
static Function *original(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

struct Kind
{
    const char *name;
    int error; // 0 for a call that is changed and does not fail
    bool lasts;
};

static constexpr Kind kinds[] = {
    {"ENOSPC", ENOSPC, true}, {"EROFS", EROFS, true}, {"EIO", EIO, false},
    {"short", 0, false},      {"slow", 0, false},
};

struct Fault
{
    std::string call;
    long n = 0;
    const Kind *kind = nullptr;
};

static Fault readFault()
{
    const char *text = getenv("NORDA_FAULTIO");
    char call[16] = "";
    char name[16] = "";
    Fault fault;
    if (!text || sscanf(text, "%15[a-z]:%ld:%15s", call, &fault.n, name) != 3)
        return fault;
    fault.call = call;
    for (const Kind &kind : kinds) {
        if (strcmp(kind.name, name) == 0)
            fault.kind = &kind;
    }
    return fault;
}

static const Fault &fault()
{
    static const Fault fault = readFault();
    return fault;
}

static bool isBelowFolder(const char *path)
{
    const char *folder = getenv("NORDA_FAULTIO_FOLDER");
    return folder && strncmp(path, folder, strlen(folder)) == 0;
}

static bool isBelowFolder(int file)
{
    char path[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t size = readlink(link.c_str(), path, sizeof path - 1);
    path[std::max<ssize_t>(size, 0)] = '\0';
    return isBelowFolder(path);
}

static void report()
{
    static bool isReported = false;
    static const char text[] = "faultio: injected\n";
    if (!isReported)
        original<ssize_t(int, const void *, size_t)>("write")(STDERR_FILENO, text, sizeof text - 1);
    isReported = true;
}

/** Counts a call. @return the fault where this one has it */
static const Kind *due(const char *call)
{
    static long count = 0;
    if (!fault().kind || fault().call != call)
        return nullptr;
    ++count;
    if (count != fault().n && !(count > fault().n && fault().kind->lasts))
        return nullptr;
    report();
    return fault().kind;
}

/** How much of a write has room. */
static size_t room(size_t size)
{
    static size_t used = 0;
    if (!fault().kind || fault().call != "bytes")
        return size;
    const size_t left = size_t(fault().n) - std::min(used, size_t(fault().n));
    if (size > left)
        report();
    size = std::min(size, left);
    used += size;
    return size;
}

template <typename Result>
static Result fail(const Kind *kind)
{
    errno = kind->error;
    return Result(-1);
}

extern "C" ssize_t write(int file, const void *data, size_t size)
{
    static auto *const next = original<ssize_t(int, const void *, size_t)>("write");
    if (!isBelowFolder(file))
        return next(file, data, size);
    const Kind *kind = due("write");
    if (kind && kind->error)
        return fail<ssize_t>(kind);
    if (kind && strcmp(kind->name, "slow") == 0)
        usleep(300 * 1000);
    else if (kind)
        size = (size + 1) / 2;
    const size_t fitting = room(size);
    return fitting == 0 && size > 0 ? fail<ssize_t>(fault().kind) : next(file, data, fitting);
}

extern "C" int fsync(int file)
{
    const Kind *kind = isBelowFolder(file) ? due("fsync") : nullptr;
    return kind ? fail<int>(kind) : original<int(int)>("fsync")(file);
}

extern "C" int fdatasync(int file)
{
    const Kind *kind = isBelowFolder(file) ? due("fdatasync") : nullptr;
    return kind ? fail<int>(kind) : original<int(int)>("fdatasync")(file);
}

extern "C" int rename(const char *from, const char *to)
{
    const Kind *kind = isBelowFolder(to) ? due("rename") : nullptr;
    return kind ? fail<int>(kind) : original<int(const char *, const char *)>("rename")(from, to);
}

extern "C" int close(int file)
{
    const Kind *kind = isBelowFolder(file) ? due("close") : nullptr;
    const int result = original<int(int)>("close")(file);
    return kind ? fail<int>(kind) : result;
}

static int openWith(const char *name, const char *path, int flags, mode_t mode)
{
    const bool isConcerned = (flags & O_ACCMODE) != O_RDONLY && isBelowFolder(path);
    const Kind *kind = isConcerned ? due("open") : nullptr;
    return kind ? fail<int>(kind) : original<int(const char *, int, ...)>(name)(path, flags, mode);
}

static mode_t modeOf(int flags, va_list arguments)
{
    return flags & O_CREAT ? va_arg(arguments, mode_t) : 0;
}

extern "C" int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openWith("open", path, flags, mode);
}

extern "C" int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openWith("open64", path, flags, mode);
}
