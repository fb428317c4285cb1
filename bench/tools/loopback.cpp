#include "tools/loopback.h"

#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

static bool loopbackOnly = false;

void listenOnLoopbackOnly()
{
    loopbackOnly = true;
}

static int bindTo(int socket, const void *address, socklen_t length)
{
    return int(::syscall(SYS_bind, socket, address, length));
}

// The program's own functions are found before those of the libraries.
extern "C" __attribute__((visibility("default"))) int bind(int socket, const sockaddr *address,
                                                           socklen_t length) noexcept
{
    if (loopbackOnly && address->sa_family == AF_INET && length >= sizeof(sockaddr_in)) {
        sockaddr_in local = {};
        std::memcpy(&local, address, sizeof local);
        local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return bindTo(socket, &local, sizeof local);
    }
    if (loopbackOnly && address->sa_family == AF_INET6 && length >= sizeof(sockaddr_in6)) {
        static constexpr unsigned char loopback[16] = {0, 0, 0,    0,    0,   0, 0, 0,
                                                       0, 0, 0xff, 0xff, 127, 0, 0, 1};
        sockaddr_in6 local = {};
        std::memcpy(&local, address, sizeof local);
        std::memcpy(&local.sin6_addr, loopback, sizeof loopback);
        return bindTo(socket, &local, sizeof local);
    }
    return bindTo(socket, address, length);
}
