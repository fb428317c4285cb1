#include "drive.h"
#include "faults.h"
#include "norda/vtqadaptor.h"
#include "testmain.h"

using namespace module;

/** A module that misbehaves on demand, and always in the same way. */
class tst_Faults : public QObject
{
    Q_OBJECT
private slots:
    void namesAndValues_data();
    void namesAndValues();
    void unspoiledWithoutFaults();
    void silence();
    void repeats_data();
    void repeats();
    void reorder();
    void beyondRange_data();
    void beyondRange();
    void truncate_data();
    void truncate();
    void lateStart();
    void restart();
    void sameSeedSameFaults();
    void driveSpoilsAndJumpForgets();
};

static Emission battery(qint64 ms, int number)
{
    return {ms, "batteryVoltage", {QString::number(number)}};
}

/** What a run of numbered emissions, one every 100 ms, becomes. */
static QStringList passed(Faults *faults, int count)
{
    QStringList numbers;
    for (int i = 0; i < count; ++i) {
        const QVector<Emission> out = faults->pass(battery(i * 100, i));
        for (const Emission &emission : out)
            numbers.append(emission.arguments[0].toString());
    }
    return numbers;
}

static QStringList numbersUpTo(int count)
{
    QStringList numbers;
    for (int i = 0; i < count; ++i)
        numbers.append(QString::number(i));
    return numbers;
}

void tst_Faults::namesAndValues_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("message"); // empty where it is taken
    for (int kind = 0; kind < Faults::KindCount; ++kind)
        QTest::newRow(Faults::nameOf(Faults::Kind(kind)))
            << QString::fromLatin1(Faults::nameOf(Faults::Kind(kind))) << QString();
    QTest::newRow("with a value") << "silence:1"
                                  << "";
    QTest::newRow("off") << "silence:0"
                         << "";
    QTest::newRow("unknown") << "noise:1"
                             << "expected one of late-start, silence, flood, duplicate, reorder, "
                                "range, truncate, restart, got 'noise'";
    QTest::newRow("nothing") << ""
                             << "expected one of late-start, silence, flood, duplicate, reorder, "
                                "range, truncate, restart, got ''";
    for (const char *bad : {"1.1", "-1", "nan", "much", ""})
        QTest::newRow(bad[0] ? bad : "no value")
            << QStringLiteral("silence:") + bad
            << QStringLiteral("expected silence with a number from 0 to 1, got '%1'")
                   .arg(QLatin1String(bad));
}

void tst_Faults::namesAndValues()
{
    QFETCH(QString, fault);
    QFETCH(QString, message);
    Faults faults;
    QString error;
    QCOMPARE(faults.add(fault, &error), message.isEmpty());
    QCOMPARE(error, message);
    QCOMPARE(faults.isIdle(), !message.isEmpty() || fault.endsWith(QLatin1String(":0")));
}

void tst_Faults::unspoiledWithoutFaults()
{
    Faults faults;
    QCOMPARE(passed(&faults, 500), numbersUpTo(500));
    QVERIFY(faults.statistics().isEmpty());
}

void tst_Faults::silence()
{
    Faults faults(3);
    faults.set(Faults::Silence, 0.25);
    const int left = passed(&faults, 4000).size();
    QVERIFY2(left > 2900 && left < 3100, qPrintable(QString::number(left)));
    QCOMPARE(faults.statistics().value("silence").toInt(), 4000 - left);
    faults.set(Faults::Silence, 1);
    QCOMPARE(passed(&faults, 100), QStringList());
}

void tst_Faults::repeats_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("times");
    QTest::newRow("duplicate") << int(Faults::Duplicate) << 2;
    QTest::newRow("flood") << int(Faults::Flood) << 60;
}

void tst_Faults::repeats()
{
    QFETCH(int, kind);
    QFETCH(int, times);
    Faults faults;
    faults.set(Faults::Kind(kind), 1);
    QStringList expected;
    for (const QString &number : numbersUpTo(5)) {
        for (int i = 0; i < times; ++i)
            expected.append(number);
    }
    QCOMPARE(passed(&faults, 5), expected);
}

void tst_Faults::reorder()
{
    Faults faults;
    faults.set(Faults::Reorder, 1);
    QCOMPARE(passed(&faults, 6), (QStringList{"1", "0", "3", "2", "5", "4"}));
}

void tst_Faults::beyondRange_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("spoiled");
    QTest::newRow("byte") << QVariant::fromValue(uchar(3)) << QVariant::fromValue(uchar(255));
    QTest::newRow("integer") << QVariant(3) << QVariant(INT_MAX);
    QTest::newRow("text") << QVariant("12") << QVariant("99999999999999");
    QTest::newRow("bytes") << QVariant(QByteArray("\1\2", 2)) << QVariant(QByteArray("\xff\xff"));
    QTest::newRow("integers") << QVariant::fromValue(QList<int>{1, 2})
                              << QVariant::fromValue(QList<int>{INT_MIN, INT_MIN});
}

void tst_Faults::beyondRange()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, spoiled);
    Faults faults;
    faults.set(Faults::OutOfRange, 1);
    const QVector<Emission> out = faults.pass({0, "any", {value}});
    QCOMPARE(out.size(), 1);
    QCOMPARE(out[0].arguments[0].userType(), value.userType());
    if (value.userType() == qMetaTypeId<QList<int>>())
        QCOMPARE(out[0].arguments[0].value<QList<int>>(), spoiled.value<QList<int>>());
    else
        QCOMPARE(out[0].arguments[0], spoiled);
}

void tst_Faults::truncate_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant("abcdef");
    QTest::newRow("bytes") << QVariant(QByteArray("abcdef"));
    QTest::newRow("texts") << QVariant(QStringList{"a", "b", "c"});
    QTest::newRow("integers") << QVariant::fromValue(QList<int>{1, 2, 3, 4});
    QTest::newRow("values") << QVariant(QVariantList{1, 2, 3});
}

void tst_Faults::truncate()
{
    QFETCH(QVariant, value);
    const auto elements = [](const QVariant &list) {
        if (list.userType() == qMetaTypeId<QList<int>>()) {
            QStringList texts;
            for (const int number : list.value<QList<int>>())
                texts.append(QString::number(number));
            return texts;
        }
        if (list.userType() == QMetaType::QString || list.userType() == QMetaType::QByteArray)
            return list.toString().split(QString(), Qt::SkipEmptyParts);
        return list.toStringList();
    };
    const QStringList whole = elements(value);
    Faults faults;
    faults.set(Faults::Truncate, 1);
    QSet<int> lengths;
    for (int i = 0; i < 200; ++i) {
        // The number beside it cannot be cut and stays.
        const QVector<Emission> out = faults.pass({0, "any", {7, value}});
        QCOMPARE(out.size(), 1);
        QCOMPARE(out[0].arguments[0], QVariant(7));
        QCOMPARE(out[0].arguments[1].userType(), value.userType());
        const QStringList left = elements(out[0].arguments[1]);
        QCOMPARE(left, whole.mid(0, left.size()));
        lengths.insert(left.size());
    }
    QCOMPARE(lengths.size(), whole.size()); // every shorter one, down to an empty one
    QVERIFY(!lengths.contains(whole.size()));
}

void tst_Faults::lateStart()
{
    Faults faults;
    faults.set(Faults::LateStart, 2);
    QVERIFY(faults.pass(battery(0, 1)).isEmpty());
    QVERIFY(faults.pass({10, "doorStatus", {1}}).isEmpty());
    QVERIFY(faults.pass(battery(1999, 2)).isEmpty());
    // Then it tells all that it knows, the last of each, and goes on.
    const QVector<Emission> out = faults.pass(battery(2000, 3));
    QCOMPARE(out.size(), 3);
    QCOMPARE(out[0].signal, QByteArray("doorStatus"));
    QCOMPARE(out[1].arguments[0], QVariant("2"));
    QCOMPARE(out[2].arguments[0], QVariant("3"));
    QCOMPARE(out[0].atMs, qint64(2000));
    QCOMPARE(faults.pass(battery(2100, 4)).size(), 1);
}

void tst_Faults::restart()
{
    Faults faults;
    faults.set(Faults::Restart, 10);
    QCOMPARE(faults.pass(battery(9900, 1)).size(), 1);
    QVERIFY(faults.pass(battery(10000, 2)).isEmpty());
    QVERIFY(faults.pass(battery(12900, 3)).isEmpty());
    QCOMPARE(faults.pass(battery(13000, 4)).size(), 2);
    QVERIFY(faults.pass(battery(20000, 5)).isEmpty());
}

void tst_Faults::sameSeedSameFaults()
{
    const auto run = [](quint32 seed) {
        Faults faults(seed);
        QString error;
        for (const char *fault : {"silence:0.2", "flood:0.05", "duplicate:0.2", "reorder:0.2",
                                  "range:0.1", "truncate:0.2"})
            faults.add(QLatin1String(fault), &error);
        return passed(&faults, 500);
    };
    QCOMPARE(run(7), run(7));
    QVERIFY(run(7) != run(8));
}

/** A source of numbered battery voltages, one every 100 ms. */
class NumberedSource : public VehicleSource
{
public:
    QString title() const override { return QStringLiteral("numbers"); }
    qint64 durationMs() const override { return 1000; }
    qint64 nextDueMs() const override { return m_next <= 10 ? m_next * 100 : -1; }
    Emission take() override
    {
        const int number = m_next++;
        return battery(number * 100, number);
    }
    void seek(qint64 ms) override { m_next = int(ms / 100); }

private:
    int m_next = 0;
};

void tst_Faults::driveSpoilsAndJumpForgets()
{
    Drive drive(std::make_unique<NumberedSource>());
    drive.faults().set(Faults::Reorder, 1);
    QStringList seen;
    connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::batteryVoltage, this,
            [&seen](const QString &text) { seen.append(text); });
    drive.seek(0); // number 0 is held back
    QCOMPARE(seen, QStringList());
    drive.seek(500); // and not due any more
    drive.setSpeed(Drive::Unlimited);
    QSignalSpy finished(&drive, &Drive::finished);
    drive.play();
    QVERIFY(finished.wait());
    QCOMPARE(seen, (QStringList{"6", "5", "8", "7", "10", "9"}));
}

NORDA_TEST_MAIN(tst_Faults)
#include "tst_faults.moc"
