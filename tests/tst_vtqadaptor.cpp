#include "callspy.h"
#include "norda/vtqadaptor.h"
#include "testmain.h"
#include "testpaths.h"

#include <QMetaMethod>

using norda::VtqAdaptor;

/** Everything that crosses the adaptor, in both directions. */
class tst_VtqAdaptor : public QObject
{
    Q_OBJECT
private slots:
    void declaresTheseSignalsAndNoOthers();
    void everyCommandHasARow();
    void commandsReachTheModule_data();
    void commandsReachTheModule();
    void keyMapReachesTheModuleWhole();
    void signalsCanBeEmittedByName();
};

// clang-format off
static const QStringList expectedSignals = {
    "gauPopUpNotify(QString,QStringList,QStringList,QByteArray)",
    "gaugeTitlesNotify(QStringList)",
    "centerGaugeValueNotify(QString,QString,uchar)",
    "gaugeTLValueNotify(QString,uchar)",
    "gaugeTLValueDualNotify(QString,QString,uchar)",
    "gaugeTRValueNotify(QString,uchar)",
    "gaugeTRValueDualNotify(QString,QString,uchar)",
    "gaugeBLValueNotify(QString,uchar)",
    "gaugeBLValueDualNotify(QString,QString,uchar)",
    "gaugeBRValueNotify(QString,uchar)",
    "gaugeBRValueDualNotify(QString,QString,uchar)",
    "peakIndicatorNotify(uchar)",
    "peakIndicatorTextNotify(QString)",
    "gauTopBarTextNotify(QString)",
    "gaugeGraphicalSettingNotify(QByteArray,QByteArray)",
    "shifterArrowIndicatorNotify(uchar)",
    "centerGaugePeakColorNotify(uchar)",
    "gauCustomControlLabelsNotify(QStringList,QByteArray)",
    "listInfoNotify(QString,QByteArray,QStringList,QVariantList,QByteArray)",
    "activePresetStatusNotify(uchar)",
    "centerGaugeRedLinePositionNotify(uchar)",
    "guiDisplayTypeNotify(uchar)",
    "Properties2TextInfo(QList<int>)",
    "vehPopUpNotify(QString,QStringList,QStringList,QByteArray)",
    "doorStatus(uchar)",
    "batteryVoltage(QString)",
    "compassHeading(QString)",
    "tirePressureStatus(uchar,uchar,QStringList)",
    "tireTemperatureStatus(uchar,uchar,QStringList)",
    "seatbeltStatus(uchar)",
    "checkEngineStatus(uchar)",
    "checkGearPositionStatus(uchar)",
    "vehicleInfoText(QString,QString)",
    "vehTopBarText(QString)",
    "vehCustomeCtrlLabels(QStringList,QByteArray)",
    "vehListInfo(QString,QByteArray,QStringList,QVariantList,QByteArray)",
    "vehGuiDisplayType(uchar)",
    "parkPopUpNotify(QString,QStringList,QStringList,QByteArray)",
    "parkingTopBarText(QString)",
    "parkingDistanceFront(QByteArray)",
    "parkingDistanceLeft(QByteArray)",
    "parkingDistanceRight(QByteArray)",
    "parkingDistanceRear(QByteArray)",
    "parkCustomControlLabels(QStringList,QByteArray)",
    "parkListInfo(QString,QByteArray,QStringList,QVariantList,QByteArray)",
    "parkGuiDisplayType(uchar)",
    "NordaClimateCtrlStatusNotify(QList<int>)",
    "climateType()",
    "secondclimateType()",
    "NordaConfigMenuTextInfo(QList<int>,QStringList,QStringList)",
    "NordaVerInfo(QStringList)",
    "TimeInfo(QStringList)",
};

struct Command
{
    const char *name;
    void (*send)(VtqAdaptor *adaptor);
    const char *arguments;
};

static const Command commands[] = {
    {"connectService", [](VtqAdaptor *a) { a->connectService(); }, ""},
    {"gaugesListBack", [](VtqAdaptor *a) { a->gaugesListBack(); }, ""},
    {"vehicleListBack", [](VtqAdaptor *a) { a->vehicleListBack(); }, ""},
    {"parkingListBack", [](VtqAdaptor *a) { a->parkingListBack(); }, ""},
    {"climateListBack", [](VtqAdaptor *a) { a->climateListBack(); }, ""},
    {"secoundclimateListBack", [](VtqAdaptor *a) { a->secoundclimateListBack(); }, ""},
    {"gaugesListPrevious", [](VtqAdaptor *a) { a->gaugesListPrevious(); }, ""},
    {"vehicleListPrevious", [](VtqAdaptor *a) { a->vehicleListPrevious(); }, ""},
    {"parkingListPrevious", [](VtqAdaptor *a) { a->parkingListPrevious(); }, ""},
    {"climateListPrevious", [](VtqAdaptor *a) { a->climateListPrevious(); }, ""},
    {"secoundclimateListPrevious", [](VtqAdaptor *a) { a->secoundclimateListPrevious(); }, ""},
    {"gaugesListNext", [](VtqAdaptor *a) { a->gaugesListNext(); }, ""},
    {"vehicleListNext", [](VtqAdaptor *a) { a->vehicleListNext(); }, ""},
    {"parkingListNext", [](VtqAdaptor *a) { a->parkingListNext(); }, ""},
    {"climateListNext", [](VtqAdaptor *a) { a->climateListNext(); }, ""},
    {"secoundclimateListNext", [](VtqAdaptor *a) { a->secoundclimateListNext(); }, ""},
    {"gaugesSettings", [](VtqAdaptor *a) { a->gaugesSettings(); }, ""},
    {"vehicleSettings", [](VtqAdaptor *a) { a->vehicleSettings(); }, ""},
    {"parkingSettings", [](VtqAdaptor *a) { a->parkingSettings(); }, ""},
    {"climateSettings", [](VtqAdaptor *a) { a->climateSettings(); }, ""},
    {"secoundclimateSettings", [](VtqAdaptor *a) { a->secoundclimateSettings(); }, ""},
    {"requestGaugesInfo", [](VtqAdaptor *a) { a->requestGaugesInfo(); }, ""},
    {"requestVehicleInfo", [](VtqAdaptor *a) { a->requestVehicleInfo(); }, ""},
    {"requestParkingInfo", [](VtqAdaptor *a) { a->requestParkingInfo(); }, ""},
    {"requestMainClimateInfo", [](VtqAdaptor *a) { a->requestMainClimateInfo(); }, ""},
    {"requestSecondClimateInfo", [](VtqAdaptor *a) { a->requestSecondClimateInfo(); }, ""},
    {"onClickCheckEngineBtn", [](VtqAdaptor *a) { a->onClickCheckEngineBtn(); }, ""},
    {"gaugesCustomControls", [](VtqAdaptor *a) { a->gaugesCustomControls(0x22, 255); }, "34, 255"},
    {"vehicleCustomControls", [](VtqAdaptor *a) { a->vehicleCustomControls(0x22, 255); }, "34, 255"},
    {"parkingCustomControls", [](VtqAdaptor *a) { a->parkingCustomControls(0x22, 255); }, "34, 255"},
    {"customCtrlsButton", [](VtqAdaptor *a) { a->customCtrlsButton(0x22, 255); }, "34, 255"},
    {"secoundcustomCtrlsButton", [](VtqAdaptor *a) { a->secoundcustomCtrlsButton(0x22, 255); }, "34, 255"},
    {"gaugeTLMenu", [](VtqAdaptor *a) { a->gaugeTLMenu(2); }, "2"},
    {"gaugeTRMenu", [](VtqAdaptor *a) { a->gaugeTRMenu(2); }, "2"},
    {"gaugeBLMenu", [](VtqAdaptor *a) { a->gaugeBLMenu(2); }, "2"},
    {"gaugeBRMenu", [](VtqAdaptor *a) { a->gaugeBRMenu(2); }, "2"},
    {"centerGaugeMenu", [](VtqAdaptor *a) { a->centerGaugeMenu(2); }, "2"},
    {"NordaData_Request", [](VtqAdaptor *a) { a->NordaData_Request(-13); }, "-13"},
    {"NordaSetSelectedLineNumber", [](VtqAdaptor *a) { a->NordaSetSelectedLineNumber(-13); }, "-13"},
    {"triggerClimateOnOffButton", [](VtqAdaptor *a) { a->triggerClimateOnOffButton(true); }, "true"},
    {"triggerAutoClimateOnOffButton", [](VtqAdaptor *a) { a->triggerAutoClimateOnOffButton(true); }, "true"},
    {"triggerACButton", [](VtqAdaptor *a) { a->triggerACButton(true); }, "true"},
    {"triggerMaxACButton", [](VtqAdaptor *a) { a->triggerMaxACButton(true); }, "true"},
    {"triggerDualButton", [](VtqAdaptor *a) { a->triggerDualButton(true); }, "true"},
    {"triggerFrontDefrostButton", [](VtqAdaptor *a) { a->triggerFrontDefrostButton(true); }, "true"},
    {"triggerRearDefrostButton", [](VtqAdaptor *a) { a->triggerRearDefrostButton(true); }, "true"},
    {"triggerRecircFreshButton", [](VtqAdaptor *a) { a->triggerRecircFreshButton(true); }, "true"},
    {"triggerVentPositionButton", [](VtqAdaptor *a) { a->triggerVentPositionButton(true); }, "true"},
    {"triggerHeatedSteeringWheelButton", [](VtqAdaptor *a) { a->triggerHeatedSteeringWheelButton(true); }, "true"},
    {"triggerLHeatedSeatButton", [](VtqAdaptor *a) { a->triggerLHeatedSeatButton(true); }, "true"},
    {"triggerRHeatedSeatButton", [](VtqAdaptor *a) { a->triggerRHeatedSeatButton(true); }, "true"},
    {"triggerLCooledSeatButton", [](VtqAdaptor *a) { a->triggerLCooledSeatButton(true); }, "true"},
    {"triggerRCooledSeatButton", [](VtqAdaptor *a) { a->triggerRCooledSeatButton(true); }, "true"},
    {"secoundtriggerClimateOnOffButton", [](VtqAdaptor *a) { a->secoundtriggerClimateOnOffButton(true); }, "true"},
    {"secoundtriggerAutoClimateOnOffButton", [](VtqAdaptor *a) { a->secoundtriggerAutoClimateOnOffButton(true); }, "true"},
    {"secoundtriggerACButton", [](VtqAdaptor *a) { a->secoundtriggerACButton(true); }, "true"},
    {"secoundtriggerMaxACButton", [](VtqAdaptor *a) { a->secoundtriggerMaxACButton(true); }, "true"},
    {"secoundtriggerDualButton", [](VtqAdaptor *a) { a->secoundtriggerDualButton(true); }, "true"},
    {"secoundtriggerFrontDefrostButton", [](VtqAdaptor *a) { a->secoundtriggerFrontDefrostButton(true); }, "true"},
    {"secoundtriggerRearDefrostButton", [](VtqAdaptor *a) { a->secoundtriggerRearDefrostButton(true); }, "true"},
    {"secoundtriggerRecircFreshButton", [](VtqAdaptor *a) { a->secoundtriggerRecircFreshButton(true); }, "true"},
    {"secoundtriggerVentPositionButton", [](VtqAdaptor *a) { a->secoundtriggerVentPositionButton(true); }, "true"},
    {"secoundtriggerHeatedSteeringWheelButton", [](VtqAdaptor *a) { a->secoundtriggerHeatedSteeringWheelButton(true); }, "true"},
    {"secoundtriggerLHeatedSeatButton", [](VtqAdaptor *a) { a->secoundtriggerLHeatedSeatButton(true); }, "true"},
    {"secoundtriggerRHeatedSeatButton", [](VtqAdaptor *a) { a->secoundtriggerRHeatedSeatButton(true); }, "true"},
    {"secoundtriggerLCooledSeatButton", [](VtqAdaptor *a) { a->secoundtriggerLCooledSeatButton(true); }, "true"},
    {"secoundtriggerRCooledSeatButton", [](VtqAdaptor *a) { a->secoundtriggerRCooledSeatButton(true); }, "true"},
    {"fanSpeedUpButton", [](VtqAdaptor *a) { a->fanSpeedUpButton(true, false); }, "true, false"},
    {"fanSpeedDownButton", [](VtqAdaptor *a) { a->fanSpeedDownButton(true, false); }, "true, false"},
    {"manTempIncButton", [](VtqAdaptor *a) { a->manTempIncButton(true, false); }, "true, false"},
    {"manTempDecButton", [](VtqAdaptor *a) { a->manTempDecButton(true, false); }, "true, false"},
    {"autoMainZoneTempIncButton", [](VtqAdaptor *a) { a->autoMainZoneTempIncButton(true, false); }, "true, false"},
    {"autoMainZoneTempDecButton", [](VtqAdaptor *a) { a->autoMainZoneTempDecButton(true, false); }, "true, false"},
    {"autoSecZoneTempIncButton", [](VtqAdaptor *a) { a->autoSecZoneTempIncButton(true, false); }, "true, false"},
    {"autoSecZoneTempDecButton", [](VtqAdaptor *a) { a->autoSecZoneTempDecButton(true, false); }, "true, false"},
    {"rearZoneButton", [](VtqAdaptor *a) { a->rearZoneButton(true, false); }, "true, false"},
    {"secoundfanSpeedUpButton", [](VtqAdaptor *a) { a->secoundfanSpeedUpButton(true, false); }, "true, false"},
    {"secoundfanSpeedDownButton", [](VtqAdaptor *a) { a->secoundfanSpeedDownButton(true, false); }, "true, false"},
    {"secoundmanTempIncButton", [](VtqAdaptor *a) { a->secoundmanTempIncButton(true, false); }, "true, false"},
    {"secoundmanTempDecButton", [](VtqAdaptor *a) { a->secoundmanTempDecButton(true, false); }, "true, false"},
    {"secoundautoMainZoneTempIncButton", [](VtqAdaptor *a) { a->secoundautoMainZoneTempIncButton(true, false); }, "true, false"},
    {"secoundautoMainZoneTempDecButton", [](VtqAdaptor *a) { a->secoundautoMainZoneTempDecButton(true, false); }, "true, false"},
    {"secoundautoSecZoneTempIncButton", [](VtqAdaptor *a) { a->secoundautoSecZoneTempIncButton(true, false); }, "true, false"},
    {"secoundautoSecZoneTempDecButton", [](VtqAdaptor *a) { a->secoundautoSecZoneTempDecButton(true, false); }, "true, false"},
    {"secoundrearZoneButton", [](VtqAdaptor *a) { a->secoundrearZoneButton(true, false); }, "true, false"},
    {"manTempValue", [](VtqAdaptor *a) { a->manTempValue(-7, true); }, "-7, true"},
    {"fanDirectValue", [](VtqAdaptor *a) { a->fanDirectValue(-7, true); }, "-7, true"},
    {"secoundmanTempValue", [](VtqAdaptor *a) { a->secoundmanTempValue(-7, true); }, "-7, true"},
    {"secoundfanDirectValue", [](VtqAdaptor *a) { a->secoundfanDirectValue(-7, true); }, "-7, true"},
};
// clang-format on

void tst_VtqAdaptor::declaresTheseSignalsAndNoOthers()
{
    const QMetaObject *meta = VtqAdaptor::instance()->metaObject();
    QStringList declared;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == QMetaMethod::Signal)
            declared.append(QString::fromLatin1(method.methodSignature()));
        else
            QCOMPARE(method.methodType(), QMetaMethod::Slot); // a command
    }
    QStringList expected = expectedSignals;
    expected.sort();
    declared.sort();
    QCOMPARE(declared, expected);
}

/** The names of all commands that the adaptor's header declares. */
static QStringList declaredCommands()
{
    QFile header(testpaths::source(QStringLiteral("host/include/norda/vtqadaptor.h")));
    if (!header.open(QIODevice::ReadOnly))
        qFatal("%s: not readable", qPrintable(header.fileName()));
    const QString commandPart = QString::fromUtf8(header.readAll()).section("signals:", 0, 0);
    static const QRegularExpression command("^    void (\\w+)\\(",
                                            QRegularExpression::MultilineOption);
    QStringList names;
    for (auto found = command.globalMatch(commandPart); found.hasNext();)
        names.append(found.next().captured(1));
    return names;
}

void tst_VtqAdaptor::everyCommandHasARow()
{
    QStringList rows = {"NordatriggerRearDefrostButton"}; // below, with its map
    for (const Command &command : commands)
        rows.append(QString::fromLatin1(command.name));
    QStringList declared = declaredCommands();
    rows.sort();
    declared.sort();
    QCOMPARE(rows, declared);
}

void tst_VtqAdaptor::commandsReachTheModule_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < int(std::size(commands)); ++row)
        QTest::newRow(commands[row].name) << row;
}

void tst_VtqAdaptor::commandsReachTheModule()
{
    QFETCH(int, row);
    const Command &command = commands[row];
    CallSpy calls;
    command.send(VtqAdaptor::instance());
    QCOMPARE(calls.take(),
             QStringList{QStringLiteral("norda::VtqAdaptor::%1(%2)")
                             .arg(QLatin1String(command.name), QLatin1String(command.arguments))});
}

void tst_VtqAdaptor::keyMapReachesTheModuleWhole()
{
    const QMap<int, int> bytes = {{4, 128}, {5, 0}, {10, 255}};
    QVariantList seen;
    QString operation;
    QObject context;
    QObject::connect(CallLog::instance(), &CallLog::called, &context,
                     [&](const QString &name, const QVariantList &arguments) {
                         operation = name;
                         seen = arguments;
                     });
    VtqAdaptor::instance()->NordatriggerRearDefrostButton(bytes);
    QCOMPARE(operation, QStringLiteral("norda::VtqAdaptor::NordatriggerRearDefrostButton"));
    QCOMPARE(seen.size(), 1);
    QCOMPARE((seen[0].value<QMap<int, int>>()), bytes);
}

void tst_VtqAdaptor::signalsCanBeEmittedByName()
{
    VtqAdaptor *adaptor = VtqAdaptor::instance();
    QSignalSpy doors(adaptor, &VtqAdaptor::doorStatus);
    QVERIFY(QMetaObject::invokeMethod(adaptor, "doorStatus", Q_ARG(uchar, 0x3F)));
    QCOMPARE(doors.takeFirst(), QVariantList{QVariant::fromValue(uchar(0x3F))});

    QSignalSpy properties(adaptor, &VtqAdaptor::Properties2TextInfo);
    const QList<int> sent = {1, 2, 3};
    QVERIFY(QMetaObject::invokeMethod(adaptor, "Properties2TextInfo", Q_ARG(QList<int>, sent)));
    QCOMPARE(properties.takeFirst()[0].value<QList<int>>(), sent);
}

NORDA_TEST_MAIN(tst_VtqAdaptor)
#include "tst_vtqadaptor.moc"
