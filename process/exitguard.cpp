#include "exitguard.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

static bool isArmed = false;

static void refuseToEnd()
{
    if (!isArmed)
        return;
    std::fflush(stdout);
    std::fputs("The plugin ended the program with exit(); leave that to the head unit\n", stderr);
    ::_exit(2);
}

ExitGuard::ExitGuard()
{
    static const bool isRegistered =
        std::atexit(refuseToEnd) == 0 && std::at_quick_exit(refuseToEnd) == 0;
    isArmed = isRegistered;
}

ExitGuard::~ExitGuard()
{
    isArmed = false;
}
