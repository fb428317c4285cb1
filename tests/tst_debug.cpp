#include "debug.h"
#include "messagecapture.h"
#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <QRegularExpression>
#include <QtTest>

/** Log lines in their exact format. */
class tst_Debug : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { QLoggingCategory::setFilterRules(QString()); }

    void lineHasItsItemsInOrder();
    void lineCanCarryANumberOfItsOwn();
    void scopeTimerWritesInTimeAndOut();
    void nothingIsEvaluatedWhenOff();
    void scopeTimerIsSilentWhenOff();
    void printTraceListsFrames();
};

static QString threadNumber()
{
    return QString::number(::syscall(SYS_gettid));
}

void tst_Debug::lineHasItsItemsInOrder()
{
    MessageCapture capture;
    const int line = __LINE__ + 1;
    NORDA_TRACE << "type" << 7 << true;
    const MessageCapture::Message message = capture.take().constFirst();
    QCOMPARE(message.text, QStringLiteral("[DBG] %1 void tst_Debug::lineHasItsItemsInOrder() %2 "
                                          "-- type 7 true")
                               .arg(threadNumber())
                               .arg(line));
    QCOMPARE(message.line, line);
    QCOMPARE(message.function, QByteArray("void tst_Debug::lineHasItsItemsInOrder()"));
    QVERIFY(message.file.endsWith("tst_debug.cpp"));
}

void tst_Debug::lineCanCarryANumberOfItsOwn()
{
    MessageCapture capture;
    NORDA_TRACE_AT(24);
    const MessageCapture::Message message = capture.take().constFirst();
    QVERIFY(message.text.endsWith(QStringLiteral("() 24 --")));
    QCOMPARE(message.line, 24);
}

void tst_Debug::scopeTimerWritesInTimeAndOut()
{
    MessageCapture capture;
    QElapsedTimer clock;
    clock.start();
    {
        norda::AutoPrint timer("void some::function(int)", 61);
        QTest::qSleep(5);
    }
    const qint64 longest = clock.elapsed() + 1; // each counts begun milliseconds in its own way
    const QStringList lines = capture.takeTexts();
    const QString prefix =
        QStringLiteral("[DBG] %1 \"void some::function(int)\" \"61\" ").arg(threadNumber());
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[0], prefix + QStringLiteral("[--IN--]"));
    QVERIFY(lines[1].startsWith(prefix + QStringLiteral("[--ExecTime--] ")));
    const int elapsed = lines[1].mid(lines[1].lastIndexOf(QLatin1Char(' '))).toInt();
    QVERIFY2(elapsed >= 5 && elapsed <= longest, qPrintable(lines[1]));
    QCOMPARE(lines[2], prefix + QStringLiteral("[--OUT--]"));
}

void tst_Debug::nothingIsEvaluatedWhenOff()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    int evaluated = 0;
    NORDA_TRACE << ++evaluated;
    QCOMPARE(evaluated, 0);
}

void tst_Debug::scopeTimerIsSilentWhenOff()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    MessageCapture capture;
    {
        norda::AutoPrint timer(Q_FUNC_INFO, __LINE__);
    }
    QCOMPARE(capture.takeTexts(), QStringList());
}

void tst_Debug::printTraceListsFrames()
{
    // It writes to standard output, so it runs in a process of its own: this test once more.
    if (qEnvironmentVariableIsSet("NORDA_PRINT_TRACE")) {
        norda::print_trace();
        return;
    }
    qputenv("NORDA_PRINT_TRACE", "1");
    const QString output =
        runProgram(testpaths::emulator().split(QLatin1Char(' '), Qt::SkipEmptyParts) +
                   QStringList{QCoreApplication::applicationFilePath(), "tst_debug",
                               "printTraceListsFrames"})
            .out;
    qunsetenv("NORDA_PRINT_TRACE");
    const QRegularExpression format(QStringLiteral("\n \\*{9} print_trace \\*{9}\n"
                                                   "(.+\n){2,}"
                                                   " \\*{9} print_trace end \\*{9}\n\n"));
    QVERIFY2(format.match(output).hasMatch(), qPrintable(output));
}

NORDA_TEST_MAIN(tst_Debug)
#include "tst_debug.moc"
