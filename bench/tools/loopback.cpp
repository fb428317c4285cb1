#include "tools/loopback.h"

#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

static int bindTo(int socket, const void *address, socklen_t length)
{
    return int(::syscall(SYS_bind, socket, address, length));
}

static int bindToLoopback4(int socket, const void *address)
{
    sockaddr_in local = {};
    std::memcpy(&local, address, sizeof local);
    local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return bindTo(socket, &local, sizeof local);
}

static int bindToLoopback6(int socket, const void *address)
{
    static constexpr unsigned char loopback[16] = {0, 0, 0,    0,    0,   0, 0, 0,
                                                   0, 0, 0xff, 0xff, 127, 0, 0, 1};
    sockaddr_in6 local = {};
    std::memcpy(&local, address, sizeof local);
    std::memcpy(&local.sin6_addr, loopback, sizeof loopback);
    return bindTo(socket, &local, sizeof local);
}

// The program's own functions are found before those of the libraries.
extern "C" __attribute__((visibility("default"))) int bind(int socket, const sockaddr *address,
                                                           socklen_t length) noexcept
{
    if (address && address->sa_family == AF_INET && length >= sizeof(sockaddr_in))
        return bindToLoopback4(socket, address);
    if (address && address->sa_family == AF_INET6 && length >= sizeof(sockaddr_in6))
        return bindToLoopback6(socket, address);
    return bindTo(socket, address, length);
}

/** A socket that was never bound would listen on all interfaces. */
extern "C" __attribute__((visibility("default"))) int listen(int socket, int backlog) noexcept
{
    sockaddr_storage own = {};
    socklen_t length = sizeof own;
    if (::getsockname(socket, reinterpret_cast<sockaddr *>(&own), &length) == 0) {
        const auto *four = reinterpret_cast<const sockaddr_in *>(&own);
        const auto *six = reinterpret_cast<const sockaddr_in6 *>(&own);
        if (own.ss_family == AF_INET && four->sin_port == 0)
            bindToLoopback4(socket, four);
        if (own.ss_family == AF_INET6 && six->sin6_port == 0)
            bindToLoopback6(socket, six);
    }
    return int(::syscall(SYS_listen, socket, backlog));
}
