#include "benchfixture.h"
#include "panels/tableactions.h"
#include "panels/tableexport.h"
#include "recording.h"
#include "scenario/expectations.h"
#include "scenario/scenarioline.h"
#include "session/actions.h"

#include <QAction>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>

using norda::VtqAdaptor;

enum SignalColumn { Name, Last, Count, Age, Receivers };
enum CallColumn { Time, Operation, Meaning, Arguments };

/** The tables of the panels: their filters, keys, columns and context menus. */
class tst_PanelMenus : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init()
    {
        makeBench();
        session()->drive()->pause(); // times stand still
    }
    void cleanup() { removeBench(); }

    void filterTakesWordsInAnyOrder_data();
    void filterTakesWordsInAnyOrder();
    void callsAreFoundByTheirMeaning();
    void countsOfCallsAgree();
    void droppedCallsAreStated();
    void escapeClearsAFilterThenLeavesIt();
    void enterLeavesAFilterForTheTable();
    void tablesLeaveLettersToTheWindow();
    void columnsFollowTheWidth_data();
    void columnsFollowTheWidth();
    void widthsOfColumnsAreKept();

    void actionsNeedASelection_data();
    void actionsNeedASelection();
    void signalsAreCopied();
    void signalsAreSentAgain();
    void callsAreCopied();
    void momentOfACallIsShown();
    void tableIsExported();
    void exportReplacesNoFileInUse();
    void csvIsQuoted_data();
    void csvIsQuoted();

private:
    QLineEdit *filter(const char *table) const
    {
        return find<QLineEdit>(QByteArray(table) + "-filter");
    }
    void select(const char *table, const QVector<int> &rows) const
    {
        QItemSelectionModel *selection = find<QTableView>(table)->selectionModel();
        selection->clear();
        for (const int row : rows)
            selection->select(model(table)->index(row, 0),
                              QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    QString at(const QString &line) const { return timedLine(session()->nowMs(), line); }
    QAction *action(const char *table, const char *name) const
    {
        return find<QTableView>(table)->findChild<QAction *>(QLatin1String(name));
    }
    QString copied(const char *table, const char *name) const
    {
        QGuiApplication::clipboard()->setText("nothing");
        action(table, name)->trigger();
        return QGuiApplication::clipboard()->text();
    }
};

void tst_PanelMenus::filterTakesWordsInAnyOrder_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("shown");
    const QStringList tires = {"Properties2TextInfo", "tirePressureStatus",
                               "tireTemperatureStatus"};
    QTest::newRow("part of a name") << "tirepress" << QStringList{"tirePressureStatus"};
    QTest::newRow("blanks around") << "  tirepress " << QStringList{"tirePressureStatus"};
    QTest::newRow("two words") << "status tire" << QStringList(tires.mid(1));
    QTest::newRow("any case") << "STATUS Tire" << QStringList(tires.mid(1));
    QTest::newRow("words of the header") << "combined vehicle" << QStringList(tires.mid(0, 1));
    QTest::newRow("one word is missing") << "tire xx" << QStringList();
}

void tst_PanelMenus::filterTakesWordsInAnyOrder()
{
    QFETCH(QString, filter);
    open("signals");
    const int all = model("signals")->rowCount();
    for (const char *blanks : {" ", "\t  "}) {
        this->filter("signals")->setText(blanks);
        QCOMPARE(model("signals")->rowCount(), all);
    }
    this->filter("signals")->setText(filter);
    QStringList shown;
    for (int row = 0; row < model("signals")->rowCount(); ++row)
        shown.append(cell("signals", row, Name));
    QTEST(shown, "shown");
}

void tst_PanelMenus::callsAreFoundByTheirMeaning()
{
    open("calls");
    windows()->openWindow(81);
    QTRY_VERIFY(rowOf("calls", "requestVehicleInfo", Operation) >= 0);
    const int all = model("calls")->rowCount();
    filter("calls")->setText("  ");
    QCOMPARE(model("calls")->rowCount(), all);
    filter("calls")->setText("VEHICLE resend ");
    QCOMPARE(model("calls")->rowCount(), 2);
    for (const int row : {0, 1})
        QCOMPARE(cell("calls", row, Operation), QStringLiteral("requestVehicleInfo"));
}

void tst_PanelMenus::countsOfCallsAgree()
{
    const int before = session()->callCount(); // of the first page, while the panel is covered
    open("calls");
    QTRY_COMPARE(model("calls")->rowCount(), before);
    QCOMPARE(find<QTableView>("calls")->rowAt(0), 0); // all of them are in sight
    QCOMPARE(find<QLabel>("calls-count")->text(), QStringLiteral("%1 calls").arg(before));
    const auto *drive = find<QLabel>("count-calls");
    const auto *calls = find<QLabel>("calls-count");
    windows()->openWindow(81);
    const QString all = QString::number(session()->callCount());
    QTRY_COMPARE(drive->text(), all);
    QTRY_COMPARE(calls->text(), all + " calls");
    QCOMPARE(model("calls")->rowCount(), session()->callCount());
    filter("calls")->setText("requestVehicleInfo");
    QCOMPARE(calls->text(), "2 of " + all + " calls");
}

void tst_PanelMenus::droppedCallsAreStated()
{
    open("calls");
    session()->journal()->setLimit(20);
    for (int i = 0; i < 40; ++i)
        emit VtqAdaptor::instance()->doorStatus(4);
    windows()->openWindow(81);
    const int all = session()->callCount();
    const int kept = session()->journal()->ofKind(Journal::Call).size();
    QVERIFY(kept < all);
    QTRY_COMPARE(
        find<QLabel>("calls-count")->text(),
        QStringLiteral("%1 calls, the first %2 are no longer kept").arg(all).arg(all - kept));
    QCOMPARE(model("calls")->rowCount(), kept);
}

/** What the window gets of the keys that a panel leaves to it. */
class KeySpy : public QObject
{
public:
    explicit KeySpy(QWidget *window) { window->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        keys.append(static_cast<QKeyEvent *>(event)->key());
        return true;
    }
    QVector<int> keys;
};

void tst_PanelMenus::escapeClearsAFilterThenLeavesIt()
{
    open("signals");
    QLineEdit *field = filter("signals");
    field->setFocus();
    QVERIFY(field->hasFocus());
    windows()->openWindow(81);
    QTest::keyClicks(field, "tire");
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QString());
    QVERIFY(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(!field->hasFocus());
    QCOMPARE(windows()->currentWindow(), 81); // no page back
}

void tst_PanelMenus::enterLeavesAFilterForTheTable()
{
    open("signals");
    m_window->activateWindow();
    auto *table = find<QTableView>("signals");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
        table->setCurrentIndex({});
        filter("signals")->setFocus();
        QTest::keyClick(filter("signals"), key);
        QVERIFY(table->hasFocus());
        QCOMPARE(table->currentIndex().row(), 0);
    }
    QTest::keyClick(table, Qt::Key_Down);
    QCOMPARE(table->currentIndex().row(), 1);
}

void tst_PanelMenus::tablesLeaveLettersToTheWindow()
{
    open("signals");
    auto *table = find<QTableView>("signals");
    table->selectRow(0);
    KeySpy window(m_window.data());
    // None of these is a shortcut, which would take the key before.
    const QVector<int> keys = {Qt::Key_X, Qt::Key_0, Qt::Key_7, Qt::Key_Semicolon};
    for (const int key : keys) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(QChar(key & 0x7f)));
        QCoreApplication::sendEvent(table, &press);
        QCOMPARE(table->currentIndex().row(), 0);
        QVERIFY(table->selectionModel()->isRowSelected(0, {}));
    }
    QCOMPARE(window.keys, keys);
    table->keyboardSearch("t");
    QCOMPARE(table->currentIndex().row(), 0);
}

void tst_PanelMenus::columnsFollowTheWidth_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("stretched");
    QTest::newRow("signals") << "signals" << int(Last);
    QTest::newRow("calls") << "calls" << int(Meaning);
    QTest::newRow("warnings") << "warnings" << 3;
}

void tst_PanelMenus::columnsFollowTheWidth()
{
    QFETCH(QString, name);
    QFETCH(int, stretched);
    auto *table = find<QTableView>(name.toLatin1());
    table->setParent(nullptr);
    const QScopedPointer<QTableView> owner(table);
    int before = 0;
    int shown = 0;
    for (const int width : {320, 420, 500, 900}) {
        table->resize(width, 200);
        table->show();
        QCoreApplication::processEvents();
        QCOMPARE(table->horizontalHeader()->length(), table->viewport()->width());
        const int shownBefore = shown;
        shown = 0;
        for (int column = 0; column < table->model()->columnCount(); ++column) {
            shown += !table->isColumnHidden(column);
            QVERIFY(table->isColumnHidden(column) || table->columnWidth(column) >= 30);
        }
        QVERIFY(!table->isColumnHidden(0) && !table->isColumnHidden(stretched));
        // A column that has room again takes some from the others.
        QVERIFY(shown > shownBefore || table->columnWidth(stretched) > before);
        before = table->columnWidth(stretched);
    }
    QCOMPARE(shown, table->model()->columnCount());
}

void tst_PanelMenus::widthsOfColumnsAreKept()
{
    open("signals");
    auto *table = find<QTableView>("signals");
    const int usual = table->columnWidth(Name);
    table->horizontalHeader()->resizeSection(Name, usual - 23); // as a user drags it
    removeBench();
    makeRig();
    showWindow();
    open("signals");
    table = find<QTableView>("signals");
    QCOMPARE(table->columnWidth(Name), usual - 23);
    QCOMPARE(table->horizontalHeader()->length(), table->viewport()->width());
    table->horizontalHeader()->findChild<QAction *>("reset-columns")->trigger();
    QCOMPARE(table->columnWidth(Name), usual);
}

void tst_PanelMenus::actionsNeedASelection_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("actions");
    const QStringList copying = {"copy-text", "copy-json", "copy-scenario"};
    QTest::newRow("signals") << "signals" << copying + QStringList{"send-again", "export-csv"};
    QTest::newRow("calls") << "calls" << copying + QStringList{"go-to-moment", "export-csv"};
    QTest::newRow("warnings") << "warnings" << copying + QStringList{"go-to-moment", "export-csv"};
}

void tst_PanelMenus::actionsNeedASelection()
{
    QFETCH(QString, name);
    auto *table = find<QTableView>(name.toLatin1());
    QCOMPARE(table->contextMenuPolicy(), Qt::ActionsContextMenu);
    QStringList actions;
    for (const QAction *action : table->actions()) {
        actions.append(action->objectName());
        QCOMPARE(action->isEnabled(), action->objectName() == "export-csv");
    }
    QTEST(actions, "actions");
    if (table->model()->rowCount() == 0)
        return;
    table->selectRow(0);
    for (const QAction *action : table->actions())
        QVERIFY(action->isEnabled());
    table->clearSelection();
    QVERIFY(!table->actions().constFirst()->isEnabled());
}

void tst_PanelMenus::signalsAreCopied()
{
    open("signals");
    emit VtqAdaptor::instance()->vehicleInfoText("Rear tire", "low");
    emit VtqAdaptor::instance()->parkingDistanceRear(QByteArray("\x05\x04"));
    const int text = rowOf("signals", "vehicleInfoText", Name);
    const int never = rowOf("signals", "seatbeltStatus", Name);
    const int park = rowOf("signals", "parkingDistanceRear", Name);
    QTRY_COMPARE(cell("signals", park, Last), QString("\"0504\""));
    select("signals", {park, text, never});

    const QStringList lines = copied("signals", "copy-text").split('\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[0].section('\t', 0, 2), QString("seatbeltStatus\t\t"));
    QCOMPARE(lines[1].section('\t', 0, 2), QString("vehicleInfoText\t\"Rear tire\" \"low\"\t1"));
    QCOMPARE(lines[2].count('\t'), 4);

    QCOMPARE(copied("signals", "copy-json"),
             QString("{\"args\":[\"Rear tire\",\"low\"],\"signal\":\"vehicleInfoText\",\"t\":%1}\n"
                     "{\"args\":[\"0504\"],\"signal\":\"parkingDistanceRear\",\"t\":%1}")
                 .arg(session()->nowMs()));
    for (const QString &line : QGuiApplication::clipboard()->text().split('\n'))
        QVERIFY(module::isRecordingLine(line.toUtf8()));

    const QStringList scenario = copied("signals", "copy-scenario").split('\n');
    QCOMPARE(scenario, (QStringList{at("signal vehicleInfoText \"Rear tire\" low"),
                                    at("signal parkingDistanceRear \"0504\"")}));
    for (const QString &line : scenario) {
        QVariantList words;
        QString error;
        QVERIFY(splitScenarioLine(line, &words, &error));
        QVERIFY2(Actions::check(words[1].toString(), words.mid(2), &error), qPrintable(error));
    }
}

void tst_PanelMenus::signalsAreSentAgain()
{
    open("signals");
    emit VtqAdaptor::instance()->doorStatus(5);
    emit VtqAdaptor::instance()->batteryVoltage("14.2V");
    const int doors = rowOf("signals", "doorStatus", Name);
    QTRY_COMPARE(cell("signals", doors, Count), QString("1"));
    select("signals", {doors, rowOf("signals", "batteryVoltage", Name),
                       rowOf("signals", "seatbeltStatus", Name)});
    const QSignalSpy doorSpy(VtqAdaptor::instance(), &VtqAdaptor::doorStatus);
    const QSignalSpy voltSpy(VtqAdaptor::instance(), &VtqAdaptor::batteryVoltage);
    const QSignalSpy beltSpy(VtqAdaptor::instance(), &VtqAdaptor::seatbeltStatus);
    action("signals", "send-again")->trigger();
    QCOMPARE(doorSpy.size(), 1);
    QCOMPARE(doorSpy[0][0].toInt(), 5);
    QCOMPARE(voltSpy.value(0).value(0).toString(), QString("14.2V"));
    QCOMPARE(beltSpy.size(), 0);
    QCOMPARE(session()->journal()->totalOf(Journal::Action, "signal")->count, 2);
}

void tst_PanelMenus::callsAreCopied()
{
    open("calls");
    click("norda_key_climate");
    click("key_AC");
    QTRY_VERIFY(rowOf("calls", "NordatriggerRearDefrostButton", Operation) >= 0);
    const int key = rowOf("calls", "NordatriggerRearDefrostButton", Operation);
    select("calls", {key, rowOf("calls", "TouchEvent", Operation)});
    const QString map = R"({"10":0,"4":0,"5":16,"6":0,"7":0,"8":0,"9":0})";
    QStringList lines = copied("calls", "copy-text").split('\n');
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[1].section('\t', 1), "NordatriggerRearDefrostButton\tA/C\t" + map);
    lines = copied("calls", "copy-json").split('\n');
    QCOMPARE(lines[1],
             "{\"args\":[" + map +
                 "],\"call\":\"norda::VtqAdaptor::NordatriggerRearDefrostButton\",\"t\":" +
                 QString::number(session()->nowMs()) + '}');
    QVERIFY(module::isRecordingLine(lines[0].toUtf8()));
    lines = copied("calls", "copy-scenario").split('\n');
    QCOMPARE(lines[1], at("expect call NordatriggerRearDefrostButton " + map));
    QVERIFY(lines[0].startsWith(at("expect call TouchEvent ")));
    for (const QString &line : lines) {
        QVariantList words;
        QString error;
        QVERIFY(splitScenarioLine(line, &words, &error));
        QVERIFY2(Expectations::check(words.mid(2), &error), qPrintable(error));
    }

    select("calls", {key});
    auto *table = find<QTableView>("calls");
    table->setFocus();
    QGuiApplication::clipboard()->clear();
    QTest::keySequence(table, QKeySequence::Copy);
    QVERIFY(QGuiApplication::clipboard()->text().endsWith(map));
}

void tst_PanelMenus::momentOfACallIsShown()
{
    open("calls");
    windows()->openWindow(81);
    QTRY_VERIFY(model("calls")->rowCount() > 0);
    auto *table = find<QTableView>("calls");
    auto *panel = find<QDockWidget>("calls")->widget();
    QSignalSpy moments(panel, SIGNAL(momentRequested(qint64)));
    table->selectRow(0);
    action("calls", "go-to-moment")->trigger();
    QTest::keyClick(table, Qt::Key_Return);
    emit table->doubleClicked(model("calls")->index(0, 0));
    QCOMPARE(moments.size(), 3);
    QVERIFY(find<QDockWidget>("timeline")->isVisible());
}

void tst_PanelMenus::tableIsExported()
{
    open("calls");
    click("norda_key_climate");
    click("key_AC");
    QTRY_VERIFY(rowOf("calls", "NordatriggerRearDefrostButton", Operation) >= 0);
    filter("calls")->setText("a/c");
    const QTemporaryDir folder;
    const QString file = folder.filePath("calls.csv");
    QString error;
    QVERIFY2(find<QTableView>("calls")->findChild<TableActions *>()->exportTo(file, &error),
             qPrintable(error));
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QByteArrayList lines = written.readAll().split('\n');
    QCOMPARE(lines[0], QByteArray("Time,Operation,Meaning,Arguments\r"));
    QVERIFY(lines[1].endsWith(",NordatriggerRearDefrostButton,A/C,\"{\"\"10\"\":0,\"\"4\"\":0,"
                              "\"\"5\"\":16,\"\"6\"\":0,\"\"7\"\":0,\"\"8\"\":0,\"\"9\"\":0}\"\r"));
    QCOMPARE(lines.size(), model("calls")->rowCount() + 2);
}

void tst_PanelMenus::exportReplacesNoFileInUse()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("drive.jsonl");
    QFile drive(file);
    QVERIFY(drive.open(QIODevice::WriteOnly));
    const QByteArray content = module::recordingHeader("A drive") + "{\"end\":true,\"t\":1000}\n";
    drive.write(content);
    drive.close();
    QString error;
    QVERIFY2(m_rig->openDrive(file, &error), qPrintable(error));
    QVERIFY(!find<QTableView>("signals")->findChild<TableActions *>()->exportTo(file, &error));
    QVERIFY2(error.contains("drive.jsonl"), qPrintable(error));
    QVERIFY(drive.open(QIODevice::ReadOnly));
    QCOMPARE(drive.readAll(), content);
}

void tst_PanelMenus::csvIsQuoted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("csv");
    QTest::newRow("plain") << "a b" << QByteArray("a b");
    QTest::newRow("empty") << "" << QByteArray();
    QTest::newRow("comma") << "a,b" << QByteArray("\"a,b\"");
    QTest::newRow("quotes") << "a \"b\"" << QByteArray("\"a \"\"b\"\"\"");
    QTest::newRow("line break") << "a\nb" << QByteArray("\"a\nb\"");
    QTest::newRow("degree") << QString::fromUtf8("70 °F") << QByteArray("70 °F");
}

void tst_PanelMenus::csvIsQuoted()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, csv);
    QStandardItemModel model(1, 2);
    model.setHorizontalHeaderLabels({"A", "B,C"});
    model.setItem(0, 0, new QStandardItem(text));
    model.setItem(0, 1, new QStandardItem("1"));
    QCOMPARE(csvOf(model), "A,\"B,C\"\r\n" + csv + ",1\r\n");
}

NORDA_TEST_MAIN(tst_PanelMenus)
#include "tst_panelmenus.moc"
