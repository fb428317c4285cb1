#pragma once

#include <QApplication>
#include <QtTest>

/*
 * Tests of one kind share a program: its first argument names the test to run, by the name of its
 * file. Each runs in a process of its own, offscreen, with a host root of its own, and strict: a
 * warning that a test neither announced with QTest::ignoreMessage() nor caught with a
 * MessageCapture fails it, since whatever warns in a test would warn in a car.
 */
using TestMain = int (*)(int argc, char *argv[]);

/** @param file  of the test's source, which names it */
bool registerTest(const char *file, TestMain run);

/** @param make  constructs the test once the application exists */
int runTest(int argc, char *argv[], QObject *(*make)());

template <typename TestClass>
int nordaTestMain(int argc, char *argv[])
{
    return runTest(argc, argv, []() -> QObject * { return new TestClass; });
}

#define NORDA_TEST_MAIN(TestClass)                                                                 \
    static const bool isRegistered = registerTest(__FILE__, nordaTestMain<TestClass>);
