#pragma once

#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "options.h"
#include "session/rig.h"
#include "statuscolumn.h"
#include "testmain.h"
#include "testpaths.h"
#include "window/benchwindow.h"

#include <QAbstractItemModel>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QRegularExpression>
#include <QSettings>
#include <QTableView>

/** The whole bench in its window, with the real plugin, for tests that use it as somebody does. */
class BenchFixture
{
public:
    /** A bench in its window, in place of the one before. */
    void makeBench(const QString &source = QStringLiteral("none"))
    {
        removeBench();
        QFile::remove(QSettings("norda", "bench").fileName());
        makeRig(source);
        showWindow();
    }
    void makeRig(const QString &source = QStringLiteral("none"))
    {
        m_options.setup.source = source;
        m_options.setup.journalLimit = Journal::usualLimit;
        m_rig.reset(new Rig(m_options.setup));
        QString error;
        QVERIFY2(m_rig->open(testpaths::pluginFile(), &error), qPrintable(error));
        screen()->statusColumn()->setTime(QTime(21, 40)); // pictures are compared with each other
    }
    void showWindow()
    {
        m_window.reset(new BenchWindow(m_options, m_rig.data()));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
        m_window->start();
    }

    void removeBench()
    {
        m_window.reset();
        m_rig.reset();
    }

    Screen *screen() const { return m_rig->unit()->screen(); }
    WindowStack *windows() const { return m_rig->unit()->windows(); }
    AudioStage *audio() const { return m_rig->unit()->audio(); }
    Session *session() const { return m_rig->session(); }

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
    /** Drops a file on the window. */
    void drop(const QString &file) const
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_window.data(), &enter);
        QDropEvent drop({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_window.data(), &drop);
    }
    /** The visible texts of a page that hold a digit; the scale of the centre gauge is no value. */
    QStringList numbersOn(int id)
    {
        windows()->openWindow(id);
        QTest::qWait(testpaths::emulator().isEmpty()
                         ? 50
                         : 500); // what the page asked for has been answered
        QStringList texts;
        for (const QLabel *label : windows()->currentPage()->findChildren<QLabel *>()) {
            if (label->isVisible() && label->text().contains(QRegularExpression("\\d")) &&
                !label->objectName().startsWith("Txt_scale_"))
                texts.append(label->text());
        }
        texts.sort();
        return texts;
    }
    void open(const char *dock) const
    {
        find<QDockWidget>(dock)->show();
        find<QDockWidget>(dock)->raise();
        QCoreApplication::processEvents();
    }
    void click(const char *name) const
    {
        QTest::mouseClick(screen()->widgetNamed(QLatin1String(name)), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QString text(const char *label) const
    {
        return screen()->widgetNamed(QLatin1String(label))->property("text").toString();
    }

    Options m_options;
    QScopedPointer<Rig> m_rig;
    QScopedPointer<BenchWindow> m_window;
};
