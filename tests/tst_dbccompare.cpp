#include "dbc/framebuilder.h"
#include "dbc/frameplan.h"
#include "dbcfiles.h"
#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <cmath>
#include <random>

using namespace module;

/**
 * Frames decoded here and by canmatrix, where it is installed. Both must find the same signals in
 * each frame, with the same raw values, and physical values that differ by less than 1e-12 of the
 * largest number that they are computed from (canmatrix computes in decimals).
 */
class tst_DbcCompare : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void everyKind();
    void realCar();

private:
    struct Frame
    {
        int message = 0;
        QByteArray data;
    };

    void extremes(const Dbc &dbc);
    void fill(const Dbc &dbc, int count);
    QByteArray randomData(int size);
    void append(const Dbc &dbc, int message, int signal, qint64 raw);
    void compare(const Dbc &dbc, const QString &path, int least);
    bool compareFrame(const DbcMessage &message, const FramePlan &plan, const Frame &frame,
                      const QByteArray &line);

    QString m_python;
    QTemporaryDir m_folder;
    std::mt19937_64 m_random{17};
    QVector<Frame> m_frames;
    QHash<QString, int> m_compared; // by message and signal
    int m_values = 0;
    std::vector<DecodedSignal> m_decoded;
};

void tst_DbcCompare::initTestCase()
{
    // The package belongs to the system's interpreter, which need not be the first on the path.
    for (const char *python : {"python3", "/usr/bin/python3"}) {
        if (runProgram({python, "-c", "import canmatrix"}).exitCode == 0) {
            m_python = QLatin1String(python);
            return;
        }
    }
    QSKIP("python3 finds no canmatrix (package python3-canmatrix)");
}

void tst_DbcCompare::init()
{
    m_frames.clear();
    m_compared.clear();
    m_values = 0;
}

QByteArray tst_DbcCompare::randomData(int size)
{
    QByteArray data(size, '\0');
    for (char &byte : data)
        byte = char(m_random());
    return data;
}

/** A frame of random bits, but for one signal and what selects it. */
void tst_DbcCompare::append(const Dbc &dbc, int message, int signal, qint64 raw)
{
    const DbcMessage &described = dbc.messages().at(message);
    FrameBuilder builder(described, randomData(described.length));
    if (!builder.setRaw(signal, raw))
        qFatal("%s cannot be set", qPrintable(described.fields.at(signal).name));
    m_frames.append({message, builder.data()});
}

static QVector<qint64> extremeValues(const DbcSignal &signal)
{
    const quint64 mask = ~quint64(0) >> (64 - signal.length);
    if (signal.type == DbcSignal::Type::Signed)
        return {0, qint64(mask >> 1), -qint64(mask >> 1) - 1, -1};
    return {0, qint64(mask), qint64(mask >> 1), qint64(mask ^ mask >> 1)};
}

void tst_DbcCompare::extremes(const Dbc &dbc)
{
    for (int message = 0; message < dbc.messages().size(); ++message) {
        const DbcMessage &described = dbc.messages().at(message);
        m_frames.append({message, QByteArray(described.length, '\0')});
        m_frames.append({message, QByteArray(described.length, '\xFF')});
        for (int signal = 0; signal < described.fields.size(); ++signal) {
            for (const qint64 raw : extremeValues(described.fields.at(signal)))
                append(dbc, message, signal, raw);
        }
    }
}

/** Frames that each set a random signal of one message after the other. */
void tst_DbcCompare::fill(const Dbc &dbc, int count)
{
    for (int i = 0; m_frames.size() < count; ++i) {
        const int message = i % dbc.messages().size();
        const QVector<DbcSignal> &fields = dbc.messages().at(message).fields;
        const int signal = int(m_random() % quint64(fields.size()));
        const DbcSignal &field = fields.at(signal);
        const quint64 bits = m_random() & ~quint64(0) >> (64 - field.length);
        const quint64 sign =
            field.type == DbcSignal::Type::Signed ? quint64(1) << (field.length - 1) : 0;
        append(dbc, message, signal, qint64((bits ^ sign) - sign));
    }
}

static bool agree(double ours, double theirs, double scale)
{
    if (std::isnan(ours) || std::isnan(theirs) || std::isinf(ours) || std::isinf(theirs))
        return (std::isnan(ours) && std::isnan(theirs)) || ours == theirs;
    return std::abs(ours - theirs) <= 1e-12 * scale;
}

static bool agree(const DbcSignal &field, const DecodedSignal &ours, const QByteArray &raw,
                  double value)
{
    const double scale =
        std::max({std::abs(value), std::abs(value - field.offset), std::abs(field.offset)});
    if (!agree(ours.value(), value, scale))
        return false;
    switch (field.type) {
    case DbcSignal::Type::Unsigned:
        return raw == QByteArray::number(quint64(ours.raw()));
    case DbcSignal::Type::Signed:
        return raw == QByteArray::number(ours.raw());
    default:
        return true; // canmatrix gives the number for the bits, which the value has shown
    }
}

bool tst_DbcCompare::compareFrame(const DbcMessage &message, const FramePlan &plan,
                                  const Frame &frame, const QByteArray &line)
{
    m_decoded.resize(size_t(plan.capacity()));
    const int count = plan.decode(reinterpret_cast<const quint8 *>(frame.data.constData()),
                                  frame.data.size(), m_decoded.data());
    const QList<QByteArray> words = line.simplified().split(' ');
    QHash<QByteArray, int> theirs;
    for (int i = 0; i + 2 < words.size(); i += 3)
        theirs.insert(words.at(i), i);
    for (int i = 0; i < count; ++i) {
        const DecodedSignal &decoded = m_decoded[size_t(i)];
        const DbcSignal &field = message.fields.at(decoded.signal());
        const auto found = theirs.find(field.name.toLatin1());
        if (found == theirs.end() ||
            !agree(field, decoded, words.at(*found + 1), words.at(*found + 2).toDouble()))
            return false;
        theirs.erase(found);
        ++m_compared[message.name + '.' + field.name];
        ++m_values;
    }
    return theirs.isEmpty();
}

/** @param least  frames that each signal must have been compared in */
void tst_DbcCompare::compare(const Dbc &dbc, const QString &path, int least)
{
    QFile list(m_folder.filePath("frames.txt"));
    QVERIFY(list.open(QIODevice::WriteOnly));
    std::vector<FramePlan> plans;
    for (const DbcMessage &message : dbc.messages())
        plans.emplace_back(message);
    for (const Frame &frame : qAsConst(m_frames))
        list.write(QByteArray::number(dbc.messages().at(frame.message).id) + ' ' +
                   frame.data.toHex() + '\n');
    list.close();

    QElapsedTimer timer;
    timer.start();
    const ProgramResult result = runProgram(
        {m_python, testpaths::source("tests/decodeframes.py"), path, list.fileName()}, 500);
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    QByteArray text = result.out.toLatin1();
    QBuffer lines(&text);
    QVERIFY(lines.open(QIODevice::ReadOnly));
    for (const Frame &frame : qAsConst(m_frames)) {
        const DbcMessage &message = dbc.messages().at(frame.message);
        const QByteArray line = lines.readLine();
        QVERIFY2(compareFrame(message, plans[size_t(frame.message)], frame, line),
                 message.name.toLatin1() + ": " + frame.data.toHex() + ": " + line);
    }
    QVERIFY(lines.atEnd());
    qInfo("%d frames, %d signals, %d values alike, %d ms", m_frames.size(), m_compared.size(),
          m_values, int(timer.elapsed()));
    QCOMPARE(m_compared.size(), dbc.signalCount());
    for (auto it = m_compared.cbegin(); it != m_compared.cend(); ++it)
        QVERIFY2(it.value() >= least, qPrintable(it.key()));
}

static const char everyKindOfSignal[] = R"(VERSION ""
BO_ 2566844926 Mixed: 8 A
 SG_ Byte : 0|8@1+ (1,-40) [0|0] "" A
 SG_ Tilted : 11|9@1- (0.1,0.05) [0|0] "" A
 SG_ Turned : 31|12@0- (-0.25,7) [0|0] "" A
 SG_ Straddling : 34|13@0+ (1e-3,0) [0|0] "" A
 SG_ Last : 57|7@1+ (3,0) [0|0] "" A
BO_ 20 Words: 16 A
 SG_ Word : 0|64@1+ (1,0) [0|0] "" A
 SG_ Turned : 71|64@0- (0.001,-5) [0|0] "" A
BO_ 21 Floating: 24 A
 SG_ Single : 0|32@1- (0.5,3) [0|0] "" A
 SG_ Turned : 39|32@0- (1,0) [0|0] "" A
 SG_ Double : 64|64@1- (1,0) [0|0] "" A
 SG_ TurnedDouble : 135|64@0- (1,0) [0|0] "" A
BO_ 22 Long: 64 A
 SG_ NineBytes : 3|64@1- (1,0) [0|0] "" A
 SG_ TurnedNineBytes : 93|64@0+ (1,0) [0|0] "" A
 SG_ Middle : 250|31@1+ (0.01,100) [0|0] "" A
 SG_ TurnedMiddle : 300|40@0- (0.5,0) [0|0] "" A
 SG_ End : 500|12@1- (1,0) [0|0] "" A
BO_ 23 Selected: 8 A
 SG_ Page M : 7|4@0+ (1,0) [0|0] "" A
 SG_ Always : 56|8@1+ (1,0) [0|0] "" A
 SG_ One m1 : 8|16@1- (1,0) [0|0] "" A
 SG_ Two m2 : 8|16@1+ (0.5,0) [0|0] "" A
 SG_ TwoToo m2 : 39|16@0+ (1,0) [0|0] "" A
BO_ 24 Nested: 8 A
 SG_ Page M : 0|2@1+ (1,0) [0|0] "" A
 SG_ Inner m1M : 8|2@1+ (1,0) [0|0] "" A
 SG_ Low m0 : 16|16@1+ (1,0) [0|0] "" A
 SG_ High m2 : 16|16@1- (1,0) [0|0] "" A
SIG_VALTYPE_ 21 Single : 1;
SIG_VALTYPE_ 21 Turned : 1;
SIG_VALTYPE_ 21 Double : 2;
SIG_VALTYPE_ 21 TurnedDouble : 2;
SG_MUL_VAL_ 24 Inner Page 1-1;
SG_MUL_VAL_ 24 Low Inner 0-1;
SG_MUL_VAL_ 24 High Inner 2-3;
)";

void tst_DbcCompare::everyKind()
{
    const QString path = m_folder.filePath("kinds.dbc");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(everyKindOfSignal);
    file.close();
    QString error;
    const auto dbc = Dbc::read(path, &error);
    QVERIFY2(dbc, qPrintable(error));
    QCOMPARE(dbc->remarks(), QStringList());
    extremes(*dbc);
    fill(*dbc, 6000);
    compare(*dbc, path, 200);
}

void tst_DbcCompare::realCar()
{
    const QString path = dbcFile("Model3CAN.dbc");
    if (!QFile::exists(path))
        QSKIP("this DBC file is not on this machine");
    QString error;
    const auto dbc = Dbc::read(path, &error);
    QVERIFY2(dbc, qPrintable(error));
    extremes(*dbc);
    fill(*dbc, testpaths::emulator().isEmpty() ? 100000 : 20000);
    compare(*dbc, path, 4);
}

NORDA_TEST_MAIN(tst_DbcCompare)
#include "tst_dbccompare.moc"
