#pragma once

#include "appplugin.h"
#include "sourceinterface.h"
#include "testpaths.h"
#include "windowinterface.h"

#include <QCoreApplication>
#include <QPluginLoader>
#include <QWidget>
#include <QtTest>

/** The plugin as a head unit has it: loaded from its file, its windows opened by id. */
class PluginFixture
{
public:
    PluginFixture() : m_loader(testpaths::pluginFile())
    {
        m_root = m_loader.instance();
        if (!m_root)
            qFatal("%s", qPrintable(m_loader.errorString()));
        m_plugin = qobject_cast<AppPlugin *>(m_root);
    }

    ~PluginFixture()
    {
        for (int id : m_plugin->windowInterfaceID())
            close(id);
        m_loader.unload();
    }

    QPluginLoader &loader() { return m_loader; }
    QObject *root() const { return m_root; }
    AppPlugin *plugin() const { return m_plugin; }
    WindowInterface *window(int id) const { return m_plugin->requestWindowInterface(id); }

    /** Opens a window as the head unit does and returns its screen, exposed. */
    QWidget *open(int id)
    {
        WindowInterface *opened = window(id);
        if (!opened->mainWidget())
            opened->onCreate();
        QWidget *screen = opened->mainWidget();
        opened->onShow(QByteArray());
        opened->onEnter();
        if (!QTest::qWaitForWindowExposed(screen))
            qFatal("the window of id %d did not come up", id);
        return screen;
    }

    /** Takes a window away and has its screen deleted. */
    void close(int id)
    {
        WindowInterface *closed = window(id);
        closed->onExit();
        closed->onHide(QByteArray());
        closed->onDestroy();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

private:
    QPluginLoader m_loader;
    QObject *m_root = nullptr;
    AppPlugin *m_plugin = nullptr;
};

/** A child of a screen by its object name; the test fails where there is none. */
template <typename Widget>
Widget *find(QWidget *screen, const char *name)
{
    auto *found = screen->findChild<Widget *>(QString::fromLatin1(name));
    if (!found)
        qFatal("no %s of that type on the screen", name);
    return found;
}

/** Invokes a slot as the host does, by its name; the test fails where there is none. */
template <typename... Arguments>
void invoke(QObject *object, const char *slot, Arguments... arguments)
{
    if (!QMetaObject::invokeMethod(object, slot, arguments...))
        qFatal("%s has no slot %s", object->metaObject()->className(), slot);
}
