#include "drive.h"
#include "livebus.h"
#include "norda/vtqadaptor.h"
#include "testfolder.h"
#include "testmain.h"

#include <QJsonObject>

#include <algorithm>

using namespace module;

static const char dbc[] = R"(VERSION ""
BU_: ECU
BO_ 291 Engine: 8 ECU
 SG_ Rpm : 7|16@0+ (1,0) [0|16383] "rpm" ECU
)";

static const char map[] = R"({
"Vehicle.Powertrain.CombustionEngine.Speed": {"dbc2vss": {"signal": "Rpm", "interval_ms": 0}}
})";

/** Two seconds of a full bus of 500 kbit/s, all at once. */
class tst_FullBus : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { m_drive.reset(); }
    void losesNoFrame_data();
    void losesNoFrame();

private:
    static constexpr int frames = 8000;

    /** Opens a bus, which must work, and waits until it carries frames. */
    void open(VirtualBus *bus);
    int framesSeen() const
    {
        return m_drive->source()->statistics().value(QLatin1String("frames")).toInt();
    }
    int framesLogged(const QByteArray &id = {}) const;

    TestFolder m_folder;
    QString m_log = m_folder.filePath("seen.log");
    std::unique_ptr<Drive> m_drive;
};

void tst_FullBus::open(VirtualBus *bus)
{
    LiveSettings settings;
    settings.asking = Asking::Never;
    settings.log = m_log;
    QFile::remove(m_log);
    const CarFiles car = {m_folder.write("car.dbc", dbc), m_folder.write("car.json", map)};
    QString error;
    auto source =
        openSource(QStringLiteral("can:%1:%2").arg(bus->port().plugin, bus->port().interface),
                   &error, Trim::Full, car, settings);
    QVERIFY2(source, qPrintable(error));
    m_drive = std::make_unique<Drive>(std::move(source));
    m_drive->play();
    QTRY_VERIFY(framesSeen() > 0 || (bus->send(0x7F0, "00"), false));
}

int tst_FullBus::framesLogged(const QByteArray &id) const
{
    QFile file(m_log);
    return file.open(QIODevice::ReadOnly) ? file.readAll().count(id + '#') : 0;
}

void tst_FullBus::losesNoFrame_data()
{
    QTest::addColumn<bool>("isPaused");
    QTest::addColumn<int>("mostValues");
    QTest::newRow("while values are taken") << false << frames;
    QTest::newRow("while nobody takes them") << true << 2000;
}

/** What waits to be taken is limited, and is the latest. */
void tst_FullBus::losesNoFrame()
{
    QFETCH(bool, isPaused);
    QFETCH(int, mostValues);
    VirtualBus bus;
    open(&bus);
    QVector<int> values;
    connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::centerGaugeValueNotify,
            m_drive.get(), [&values](const QString &rpm) { values.append(rpm.toInt()); });
    if (isPaused)
        m_drive->pause();
    for (int i = 1; i <= frames; ++i)
        bus.send(0x123, QByteArray::number(i, 16).rightJustified(4, '0') + "000000000000");
    QTRY_COMPARE(framesLogged("123"), frames);
    QCOMPARE(framesSeen(), framesLogged());
    QVERIFY(!isPaused || values.isEmpty());
    m_drive->play();
    QTRY_VERIFY(!values.isEmpty() && values.constLast() == frames);
    QVERIFY2(values.size() <= mostValues, qPrintable(QString::number(values.size())));
    QVERIFY(std::is_sorted(values.cbegin(), values.cend()));
}

NORDA_TEST_MAIN(tst_FullBus)
#include "tst_fullbus.moc"
