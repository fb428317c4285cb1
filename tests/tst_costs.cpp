#include "callgrindfile.h"
#include "costtable.h"
#include "testmain.h"

/** The table of costs: its text, what exceeds it, and what callgrind's files say. */
class tst_Costs : public QObject
{
    Q_OBJECT
private slots:
    void tableIsReadAsItWasWritten();
    void malformedTableIsRefused_data();
    void malformedTableIsRefused();
    void countsAreCompared_data();
    void countsAreCompared();
    void callgrindFileIsRead();
};

static CostTable table(const QList<Cost> &costs, const QByteArray &package = "libc6 2.36-9")
{
    CostTable table;
    table.packages = {package};
    table.costs = costs;
    return table;
}

void tst_Costs::tableIsReadAsItWasWritten()
{
    const CostTable written = table({{"Gauges: a signal", 123456, 7}, {"Drive", 9876543210, 0}});
    QString error;
    const CostTable read = CostTable::read(written.text(), &error);
    QCOMPARE(error, QString());
    QCOMPARE(read.packages, written.packages);
    QCOMPARE(read.costs.size(), 2);
    QCOMPARE(read.costs[1].name, QByteArray("Drive"));
    QCOMPARE(read.costs[1].instructions, 9876543210);
    QCOMPARE(read.costs[0].allocations, 7);
    QCOMPARE(read.text(), written.text());
}

void tst_Costs::malformedTableIsRefused_data()
{
    QTest::addColumn<QByteArray>("row");

    QTest::newRow("no allocations") << QByteArray("  100  a signal");
    QTest::newRow("no name") << QByteArray("  100  5  ");
    QTest::newRow("negative") << QByteArray("  -1  5  a signal");
    QTest::newRow("words") << QByteArray("many few a signal");
}

void tst_Costs::malformedTableIsRefused()
{
    QFETCH(QByteArray, row);
    QString error;
    const CostTable read = CostTable::read("# head\n" + row + "\n", &error);
    QVERIFY2(error.startsWith("line 2: expected instructions, allocations and a name"),
             qPrintable(error));
    QVERIFY(read.costs.isEmpty());
}

void tst_Costs::countsAreCompared_data()
{
    QTest::addColumn<qint64>("instructions");
    QTest::addColumn<qint64>("allocations");
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<QStringList>("faults");
    QTest::addColumn<int>("lower");

    const QByteArray same = "libc6 2.36-9";
    const QByteArray other = "libc6 2.36-10";
    const auto row = [](const char *name, qint64 instructions, qint64 allocations,
                        const QByteArray &package, const QStringList &faults, int lower) {
        QTest::newRow(name) << instructions << allocations << package << faults << lower;
    };
    row("as accepted", 1000, 100, same, {}, 0);
    row("within the margin", 1030, 103, same, {}, 0);
    row("more instructions", 1031, 100, same, {"work: 1031 instructions, was 1000 (+3.1 %)"}, 0);
    row("more allocations", 1000, 104, same, {"work: 104 allocations, was 100 (+4.0 %)"}, 0);
    row("a little less", 980, 98, same, {}, 0);
    row("lower", 900, 100, same, {}, 1);
    row("other packages", 1100, 110, other, {}, 0);
    row("other packages, far more", 1101, 110, other,
        {"work: 1101 instructions, was 1000 (+10.1 %)"}, 0);
}

void tst_Costs::countsAreCompared()
{
    QFETCH(qint64, instructions);
    QFETCH(qint64, allocations);
    QFETCH(QByteArray, package);

    const CostTable was = table({{"work", 1000, 100}});
    const CostChanges changes =
        compareCosts(was, table({{"work", instructions, allocations}}, package));
    QTEST(changes.faults, "faults");
    QTEST(changes.lower, "lower");

    const CostTable none = table({{"work", 1000, 0}});
    QCOMPARE(compareCosts(none, table({{"work", 1000, 1}})).faults,
             QStringList("work: 1 allocations, was 0"));
    QCOMPARE(compareCosts(none, table({{"play", 1000, 0}})).faults,
             QStringList({"play: not in the table", "work: in the table, not measured"}));
}

void tst_Costs::callgrindFileIsRead()
{
    const QList<Cost> costs = costsOf("# callgrind format\n"
                                      "part: 1\n\n"
                                      "desc: Trigger: Client Request: Gauges: a signal|12\n\n"
                                      "events: Ir\nsummary: 4711\n\nfn=(1) main\n0 4711\n"
                                      "part: 2\n\n"
                                      "desc: Trigger: Client Request: Drive|0\n\n"
                                      "events: Ir\nsummary: 9876543210\n"
                                      "part: 3\n\n"
                                      "desc: Trigger: Program termination\n\n"
                                      "events: Ir\nsummary: 5\n");
    QCOMPARE(costs.size(), 2);
    QCOMPARE(costs[0].name, QByteArray("Gauges: a signal"));
    QCOMPARE(costs[0].instructions, 4711);
    QCOMPARE(costs[0].allocations, 12);
    QCOMPARE(costs[1].instructions, 9876543210);
}

NORDA_TEST_MAIN(tst_Costs)
#include "tst_costs.moc"
