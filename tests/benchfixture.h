#pragma once

#include "audiostage.h"
#include "benchwindow.h"
#include "headunit.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "options.h"
#include "screen.h"
#include "session.h"
#include "testmain.h"
#include "testpaths.h"

#include <QAbstractItemModel>
#include <QDockWidget>
#include <QSettings>
#include <QTableView>

/** The whole bench in its window, with the real plugin, for tests that use it as somebody does. */
class BenchFixture
{
public:
    void makeBench()
    {
        makeUnit();
        makeWindow();
    }
    void makeUnit()
    {
        QFile::remove(QSettings("norda", "bench").fileName());
        m_screen.reset(new Screen);
        m_unit.reset(new HeadUnit(m_screen.data()));
        QString error;
        QVERIFY2(m_unit->load(testpaths::pluginFile(), &error), qPrintable(error));
        m_stage.reset(new AudioStage(m_unit.data()));
    }

    void removeBench()
    {
        m_window.reset();
        m_stage.reset();
        m_unit.reset();
        m_screen.reset();
    }

    template <typename T>
    T *find(const char *name) const
    {
        auto *found = m_window->findChild<T *>(QLatin1String(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    QAbstractItemModel *model(const char *table) const { return find<QTableView>(table)->model(); }
    int rowOf(const char *table, const QString &text, int column) const
    {
        const QModelIndexList found = model(table)->match(
            model(table)->index(0, column), Qt::DisplayRole, text, 1, Qt::MatchExactly);
        return found.isEmpty() ? -1 : found.constFirst().row();
    }
    QString cell(const char *table, int row, int column) const
    {
        return model(table)->index(row, column).data().toString();
    }
    void open(const char *dock) const
    {
        find<QDockWidget>(dock)->show();
        find<QDockWidget>(dock)->raise();
        QCoreApplication::processEvents();
    }
    void makeWindow(const QString &source = QStringLiteral("none"))
    {
        QString error;
        m_window.reset(); // it lets go of the screen
        m_window.reset(new BenchWindow(m_options, m_screen.data(), m_unit.data(), m_stage.data()));
        m_unit->openWindow(80);
        m_options.source = source;
        m_window->start(std::make_unique<Session>(module::openSource(source, &error)));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
    }
    void click(const char *name) const
    {
        QTest::mouseClick(m_screen->widgetNamed(QLatin1String(name)), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QString text(const char *label) const
    {
        return m_screen->widgetNamed(QLatin1String(label))->property("text").toString();
    }

    Options m_options;
    QScopedPointer<Screen> m_screen;
    QScopedPointer<HeadUnit> m_unit;
    QScopedPointer<AudioStage> m_stage;
    QScopedPointer<BenchWindow> m_window;
};
