#pragma once

/**
 * While one exists, exit() ends the program with a message and exit code 2: only a plugin calls it
 * then, and what it leaves undone must not pass for a success.
 */
class ExitGuard
{
public:
    ExitGuard();
    ~ExitGuard();
    ExitGuard(const ExitGuard &) = delete;
    ExitGuard &operator=(const ExitGuard &) = delete;
};
