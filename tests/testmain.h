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

/*
 * How long a test waits for what is certain to come: on a processor that others share the usual
 * five seconds are too few. Nothing that passes waits for longer than it has to.
 */
inline constexpr int patienceMs = 60000;
#undef QTRY_VERIFY
#undef QTRY_VERIFY2
#undef QTRY_COMPARE
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patienceMs)
#define QTRY_VERIFY2(condition, message) QTRY_VERIFY2_WITH_TIMEOUT(condition, message, patienceMs)
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, patienceMs)

#define NORDA_TEST_MAIN(TestClass)                                                                 \
    static const bool isRegistered = registerTest(__FILE__, nordaTestMain<TestClass>);
