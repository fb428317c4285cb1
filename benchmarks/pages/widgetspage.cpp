#include "gaugesburst.h"
#include "pagerun.h"

#include "appplugin.h"
#include "windowinterface.h"

#include <QApplication>
#include <QFont>
#include <QLoggingCategory>
#include <QPluginLoader>
#include <QWidget>

/** The plugin's page, as a head unit loads it. */
class WidgetsPage : public GaugesPage
{
public:
    WidgetsPage() : m_loader(QStringLiteral(NORDA_PLUGIN_FILE))
    {
        auto *plugin = qobject_cast<AppPlugin *>(m_loader.instance());
        plugin->create();
        m_gauges = plugin->requestWindowInterface(80);
        m_gauges->onCreate();
        m_page = m_gauges->mainWidget();
    }
    ~WidgetsPage() override { m_gauges->onDestroy(); }

    void show() override
    {
        m_gauges->onShow(QByteArray());
        m_gauges->onEnter();
        m_page->show();
    }
    QWindow *window() const override { return m_page->windowHandle(); }
    QObject *painter() const override { return m_page; }
    void burst(int turn) override { emitGaugesBurst(turn); }
    void setNeedle(int position) override
    {
        emit norda::VtqAdaptor::instance()->centerGaugeValueNotify(
            QString::number(100 * position), QStringLiteral("RPM"),
            static_cast<unsigned char>(position));
    }

private:
    QPluginLoader m_loader;
    WindowInterface *m_gauges;
    QWidget *m_page;
};

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial")));
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    WidgetsPage page;
    return runPage(&page, QCoreApplication::arguments());
}
