#include "benchfixture.h"
#include "panels/inspectorpanel.h"
#include "panels/propertymodel.h"
#include "panels/widgetframe.h"
#include "panels/widgettreemodel.h"
#include "tools/propertytext.h"
#include "tools/receivers.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QTreeView>

/** The Inspector: the tree of the screen's widgets, and the properties of one of them. */
class tst_Inspector : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void init()
    {
        makeBench();
        windows()->openWindow(83);
        open("inspector");
        refresh();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    }
    void cleanup() { removeBench(); }

    void pointerPicks();
    void clickKeepsAndDoesNotTouch();
    void picksOnAScaledScreen();
    void treeFramesWhatIsSelected();
    void hiddenWidgetsAreMarked();
    void treeFollowsTheScreen();
    void filterFindsByNameAndClass();
    void pickingEndsTheFilter();
    void describesWidgets_data();
    void describesWidgets();
    void receiversAreCounted();
    void editsAreWritten_data();
    void editsAreWritten();
    void editsAreRefused_data();
    void editsAreRefused();
    void onlyFittingPropertiesAreEdited();
    void textIsEditedInTheTable();
    void enumIsChosenInTheTable();
    void editorIsLeftAlone();
    void deletedWidgetLeavesNothing();
    void removedWidgetLeavesNothing();
    void selectionOutlivesItsNeighbours();
    void nothingHappensWhileHidden();
    void idlePageWakesNothing();

private:
    QTreeView *tree() const { return find<QTreeView>("widgets"); }
    QTableView *table() const { return find<QTableView>("properties"); }
    InspectorPanel *panel() const { return m_window->findChild<InspectorPanel *>(); }
    WidgetFrame *frame() const { return screen()->findChild<WidgetFrame *>(); }
    QWidget *named(const char *name) const { return screen()->widgetNamed(name); }
    QString message() const { return find<QLabel>("inspector-message")->text(); }

    QModelIndex treeRow(const QString &text, int column = WidgetTreeModel::Name) const
    {
        const QAbstractItemModel *model = tree()->model();
        return model
            ->match(model->index(0, column), Qt::DisplayRole, text, 1,
                    Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
    QString selectedInTree() const
    {
        return tree()->currentIndex().siblingAtColumn(0).data().toString();
    }
    void select(const char *name) const
    {
        const QModelIndex row = treeRow(name);
        QVERIFY2(row.isValid(), name);
        tree()->scrollTo(row);
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, tree()->visualRect(row).center());
    }
    void startPicking() const { QTest::mouseClick(find<QToolButton>("pick"), Qt::LeftButton); }
    /** A property of the selected widget: the last row of the name, below the headings. */
    QModelIndex property(const QString &name) const
    {
        const QAbstractItemModel *model = table()->model();
        const QModelIndexList found =
            model->match(model->index(0, 0), Qt::DisplayRole, name, -1, Qt::MatchExactly);
        return found.isEmpty() ? QModelIndex()
                               : found.constLast().siblingAtColumn(PropertyModel::Value);
    }
    QString value(const QString &name) const { return property(name).data().toString(); }
    /** The panel would refresh within a quarter of a second. */
    void refresh() const
    {
        panel()->hide();
        panel()->show();
    }
    QRect place(const QWidget *widget) const
    {
        return QRect(widget->mapTo(screen(), QPoint()), widget->size());
    }
};

void tst_Inspector::pointerPicks()
{
    startPicking();
    const QPoint middle = place(named("bkg_car")).center();
    QWidget *top = screen()->childAt(middle);
    QMouseEvent move(QEvent::MouseMove, top->mapFrom(screen(), middle), Qt::NoButton, Qt::NoButton,
                     {});
    QCoreApplication::sendEvent(top, &move);
    QCOMPARE(selectedInTree(), QStringLiteral("bkg_car"));
    QCOMPARE(value("Name"), QStringLiteral("bkg_car"));
    QVERIFY2(value("Images").startsWith(":/icon/"), qPrintable(value("Images")));
    QVERIFY(value("Parents").startsWith("car_radar_widget < "));
    QCOMPARE(frame()->geometry(), place(named("bkg_car")));
    QVERIFY(find<QToolButton>("pick")->isChecked());
}

void tst_Inspector::clickKeepsAndDoesNotTouch()
{
    startPicking();
    const Journal *journal = session()->journal();
    const int calls = journal->count(Journal::Call);
    click("key_camera");
    QVERIFY(!find<QToolButton>("pick")->isChecked());
    QVERIFY(!screen()->isCameraShown());
    QCOMPARE(journal->count(Journal::Call), calls);
    QCOMPARE(value("Class"), QStringLiteral("norda::IconKey"));
    click("key_camera"); // the frame takes no touches
    QVERIFY(screen()->isCameraShown());
}

/** As the bench shows a screen that is larger or smaller than it is. */
void tst_Inspector::picksOnAScaledScreen()
{
    removeBench();
    makeRig();
    QGraphicsScene scene;
    QGraphicsView view(&scene);
    QGraphicsProxyWidget *proxy = scene.addWidget(screen());
    InspectorPanel inspector(screen());
    view.scale(0.5, 0.5);
    view.resize(700, 420);
    view.show();
    inspector.show();
    m_rig->begin(Replay::Beginning);
    windows()->openWindow(83);
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    inspector.findChild<QToolButton *>("pick")->click();
    const QPoint middle = place(named("key_camera")).center();
    const QPoint there = view.mapFromScene(proxy->mapToScene(middle));
    const auto *name = inspector.findChild<QTableView *>("properties")->model();
    QTest::mouseMove(view.viewport(), there);
    QTRY_COMPARE(name->index(1, 1).data().toString(), QStringLiteral("key_camera"));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, there);
    QVERIFY(!inspector.findChild<QToolButton *>("pick")->isChecked());
    QVERIFY(!screen()->isCameraShown());
    QCOMPARE(frame()->geometry(), place(named("key_camera")));
    proxy->setWidget(nullptr); // the screen belongs to the unit
}

void tst_Inspector::treeFramesWhatIsSelected()
{
    select("key_camera");
    QCOMPARE(value("Name"), QStringLiteral("key_camera"));
    QVERIFY(frame()->isVisible());
    QCOMPARE(frame()->geometry(), place(named("key_camera")));
    panel()->hide();
    QVERIFY(!frame()->isVisible());
    panel()->show();
    QVERIFY(frame()->isVisible());
    QVERIFY(!treeRow("WidgetFrame", WidgetTreeModel::Class).isValid());
    windows()->openWindow(81); // what cannot be seen has no frame
    QTRY_VERIFY(!frame()->isVisible());
}

void tst_Inspector::hiddenWidgetsAreMarked()
{
    const auto isHidden = [this](const char *name) {
        return treeRow(name).data(WidgetTreeModel::HiddenRole).toBool();
    };
    QVERIFY(!isHidden("key_camera"));
    QVERIFY(isHidden("key_split"));
    named("key_camera")->hide();
    QTRY_VERIFY(isHidden("key_camera"));
    windows()->openWindow(81);
    QTRY_VERIFY(isHidden("norda_parking"));
    QVERIFY(isHidden("bkg_car")); // with its page
    QVERIFY(!isHidden("norda_vehicles"));
}

void tst_Inspector::treeFollowsTheScreen()
{
    QVERIFY(!treeRow("norda_vehicles").isValid());
    windows()->openWindow(81);
    QTRY_VERIFY(treeRow("norda_vehicles").isValid());
    auto *label = new QLabel(named("norda_vehicles"));
    label->setObjectName("added");
    label->show();
    QTRY_VERIFY(treeRow("added").isValid());
    QCOMPARE(treeRow("added").siblingAtColumn(WidgetTreeModel::Class).data().toString(),
             QStringLiteral("QLabel"));
    label->setObjectName("renamed");
    label->update();
    QTRY_VERIFY(treeRow("renamed").isValid());
    delete label;
    QTRY_VERIFY(!treeRow("renamed").isValid());
}

void tst_Inspector::filterFindsByNameAndClass()
{
    auto *filter = find<QLineEdit>("widget-filter");
    QTest::keyClicks(filter, " CAMERA ");
    QVERIFY(treeRow("key_camera").isValid());
    QVERIFY(!treeRow("bkg_car").isValid());
    filter->clear();
    QTest::keyClicks(filter, "statuscolumn");
    QVERIFY(treeRow("StatusColumn", WidgetTreeModel::Class).isValid());
    QVERIFY(!treeRow("key_camera").isValid());
}

void tst_Inspector::pickingEndsTheFilter()
{
    select("bkg_car");
    auto *filter = find<QLineEdit>("widget-filter");
    QTest::keyClicks(filter, "statuscolumn");
    QCOMPARE(value("Name"), QStringLiteral("bkg_car")); // the selection stays
    startPicking();
    click("key_camera");
    QCOMPARE(filter->text(), QString());
    QCOMPARE(selectedInTree(), QStringLiteral("key_camera"));
}

void tst_Inspector::describesWidgets_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *property, const char *text) {
        QTest::addRow("%s of %s", property, name) << name << property << text;
    };
    row("key_camera", "Class", "norda::IconKey");
    row("key_camera", "Images", ":/icon/radaricon/camera_n.png");
    row("key_camera", "enabled", "true");
    row("key_camera", "focusPolicy", "NoFocus");
    row("key_camera", "checkable", "true");
    row("key_split", "visible", "false");
    row("blindStopLabel", "textFormat", "PlainText");
    row("bkg_car", "frameShape", "NoFrame");
    row("bkg_car", "pixmap", ":/icon/radaricon/bkg_radar_car.png");
    row("bkg_car", "cursor", "ArrowCursor");
}

void tst_Inspector::describesWidgets()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QString, text);
    select(qPrintable(name));
    QCOMPARE(value(property), text);
}

void tst_Inspector::receiversAreCounted()
{
    select("key_camera");
    QCOMPARE(value("clicked(bool)"), QStringLiteral("1"));
    QVERIFY(!property("destroyed(QObject*)").isValid());
    auto *key = qobject_cast<QAbstractButton *>(named("key_camera"));
    const auto more = connect(key, &QAbstractButton::clicked, this, [] {});
    connect(key, &QObject::destroyed, this, [] {});
    connect(key, &QObject::objectNameChanged, this, [] {});
    refresh();
    QCOMPARE(value("clicked(bool)"), QStringLiteral("2"));
    QVERIFY(!property("destroyed(QObject*)").isValid());
    QVERIFY(!property("objectNameChanged(QString)").isValid());
    disconnect(more);
    QLabel silent;
    QVERIFY(receiversOf(&silent).isEmpty());
}

void tst_Inspector::editsAreWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("edited");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *title, const char *name, const char *property,
                        const QVariant &edited, const char *text) {
        QTest::newRow(title) << name << property << edited << text;
    };
    row("truth", "key_camera", "enabled", false, "false");
    row("number", "bkg_car", "margin", 12, "12");
    row("text", "blindStopLabel", "text", "Look left", "Look left");
    row("enum", "bkg_car", "frameShape", "Box", "Box");
    row("flag", "blindStopLabel", "alignment", "AlignRight", "AlignRight");
    row("flags", "blindStopLabel", "alignment", "AlignLeft | AlignTop", "AlignLeft | AlignTop");
    row("flags without blanks", "blindStopLabel", "alignment", "AlignLeft|AlignVCenter",
        "AlignLeft | AlignVCenter");
    row("hidden", "key_camera", "visible", false, "false");
}

void tst_Inspector::editsAreWritten()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QVariant, edited);
    QFETCH(QString, text);
    select(qPrintable(name));
    QVERIFY(table()->model()->setData(this->property(property), edited, Qt::EditRole));
    QCOMPARE(value(property), text);
    QCOMPARE(message(), QString());
    const QWidget *widget = named(qPrintable(name));
    const QMetaObject *meta = widget->metaObject();
    const QMetaProperty written = meta->property(meta->indexOfProperty(qPrintable(property)));
    QCOMPARE(propertyText(written, written.read(widget)), text);
}

void tst_Inspector::editsAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("edited");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown key") << "bkg_car"
                                 << "frameShape" << QVariant("Circle")
                                 << "frameShape: expected Shape, got 'Circle'";
    QTest::newRow("unknown flag") << "blindStopLabel"
                                  << "alignment" << QVariant("AlignMiddle")
                                  << "alignment: expected AlignmentFlag, got 'AlignMiddle'";
    QTest::newRow("no number") << "bkg_car"
                               << "margin" << QVariant("wide")
                               << "margin: expected int, got 'wide'";
    QTest::newRow("not taken") << "key_settings"
                               << "checked" << QVariant(true)
                               << "checked: set to true, the widget keeps false";
}

void tst_Inspector::editsAreRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QVariant, edited);
    QFETCH(QString, message);
    select(qPrintable(name));
    const QString before = value(property);
    QVERIFY(!table()->model()->setData(this->property(property), edited, Qt::EditRole));
    QCOMPARE(value(property), before);
    QCOMPARE(this->message(), message);
    QVERIFY(find<QLabel>("inspector-message")->isVisible());
    select("norda_parking");
    QVERIFY(!find<QLabel>("inspector-message")->isVisible());
}

void tst_Inspector::onlyFittingPropertiesAreEdited()
{
    select("key_camera");
    const auto canBeEdited = [this](const char *name) {
        return bool(property(name).flags() & Qt::ItemIsEditable);
    };
    for (const char *name : {"text", "enabled", "focusPolicy", "autoRepeatDelay"})
        QVERIFY2(canBeEdited(name), name);
    for (const char *name : {"Name", "icon", "geometry", "font", "down", "clicked(bool)", "focus"})
        QVERIFY2(!canBeEdited(name) || qstrcmp(name, "down") == 0, name);
}

void tst_Inspector::textIsEditedInTheTable()
{
    select("blindStopLabel");
    const QModelIndex cell = property("text");
    table()->scrollTo(cell);
    const QPoint middle = table()->visualRect(cell).center();
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, middle);
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, middle);
    auto *editor = table()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, "Mind the gap");
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(text("blindStopLabel"), QStringLiteral("Mind the gap"));
    QCOMPARE(value("text"), QStringLiteral("Mind the gap"));
}

void tst_Inspector::enumIsChosenInTheTable()
{
    select("bkg_car");
    table()->setCurrentIndex(property("frameShape"));
    table()->edit(property("frameShape"));
    auto *choice = table()->viewport()->findChild<QComboBox *>();
    QVERIFY(choice);
    QCOMPARE(choice->currentText(), QStringLiteral("NoFrame"));
    QVERIFY(choice->findText("Panel") >= 0);
    choice->setCurrentText("Panel");
    emit choice->activated(choice->currentIndex());
    QCOMPARE(qobject_cast<QFrame *>(named("bkg_car"))->frameShape(), QFrame::Panel);
}

void tst_Inspector::editorIsLeftAlone()
{
    select("blindStopLabel");
    table()->scrollTo(property("text"));
    table()->setCurrentIndex(property("text"));
    table()->edit(property("text"));
    auto *editor = table()->viewport()->findChild<QLineEdit *>();
    editor->selectAll();
    QTest::keyClicks(editor, "half a");
    qobject_cast<QLabel *>(named("blindStopLabel"))->setText("from the module");
    QTest::qWait(400); // the panel would have refreshed
    QCOMPARE(editor->text(), QStringLiteral("half a"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QCOMPARE(text("blindStopLabel"), QStringLiteral("from the module"));
}

void tst_Inspector::deletedWidgetLeavesNothing()
{
    select("key_camera");
    QVERIFY(table()->model()->rowCount() > 0);
    const QModelIndex gone = property("text");
    const QPersistentModelIndex cell(gone);
    windows()->recreateWindow();
    QVERIFY(!table()->model()->setData(cell, "nobody", Qt::EditRole)); // before the panel notices
    QTRY_COMPARE(table()->model()->rowCount(), 0);
    QTRY_VERIFY(!frame()->isVisible());
    QVERIFY(!tree()->currentIndex().isValid());
    QCOMPARE(message(), QStringLiteral("The selected widget is no longer on the screen."));
    select("key_camera"); // the new one
    QCOMPARE(value("Name"), QStringLiteral("key_camera"));
}

void tst_Inspector::removedWidgetLeavesNothing()
{
    select("key_camera");
    const QScopedPointer<QWidget> key(named("key_camera"));
    key->setParent(nullptr);
    QTRY_COMPARE(message(), QStringLiteral("The selected widget is no longer on the screen."));
    QCOMPARE(table()->model()->rowCount(), 0);
}

void tst_Inspector::selectionOutlivesItsNeighbours()
{
    select("key_camera");
    named("norda_parking")->raise(); // so the tree orders its pages anew
    named("norda_parking")->update();
    QTest::qWait(400);
    QCOMPARE(selectedInTree(), QStringLiteral("key_camera"));
    QCOMPARE(value("Name"), QStringLiteral("key_camera"));
}

void tst_Inspector::nothingHappensWhileHidden()
{
    select("key_camera");
    open("signals"); // the tab in front of it
    QSignalSpy added(tree()->model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(table()->model(), &QAbstractItemModel::dataChanged);
    windows()->openWindow(81);
    named("key_camera")->setEnabled(false);
    QTest::qWait(400);
    QCOMPARE(added.size() + changed.size(), 0);
    QVERIFY(!frame()->isVisible());
    open("inspector");
    QTRY_VERIFY(added.size() > 0 && changed.size() > 0);
}

void tst_Inspector::idlePageWakesNothing()
{
    select("key_camera");
    session()->drive()->pause();
    const auto *timer = panel()->findChild<QTimer *>("inspector-refresh");
    const auto rests = [timer] {
        QTest::qWait(800);
        return !timer->isActive();
    };
    QTRY_VERIFY(rests()); // animations end
    named("key_camera")->update();
    QTRY_VERIFY(timer->isActive());
}

NORDA_TEST_MAIN(tst_Inspector)
#include "tst_inspector.moc"
