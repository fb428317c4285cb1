#include "pagerun.h"

#include "appplugin.h"
#include "norda/vtqadaptor.h"
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
    void burst(int turn) override;
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

void WidgetsPage::burst(int turn)
{
    norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
    const QString number = QString::number(1000 + turn % 2000);
    const auto position = static_cast<unsigned char>(turn % 100);
    const QString unit = QStringLiteral("F");
    const QString title = QStringLiteral("Title ") + number;
    emit adaptor->gaugeTitlesNotify({title, title, title, title, title});
    emit adaptor->centerGaugeValueNotify(number, QStringLiteral("RPM"), position);
    emit adaptor->gaugeTLValueNotify(number, position);
    emit adaptor->gaugeTLValueDualNotify(number, unit, position);
    emit adaptor->gaugeTRValueNotify(number, position);
    emit adaptor->gaugeTRValueDualNotify(number, unit, position);
    emit adaptor->gaugeBLValueNotify(number, position);
    emit adaptor->gaugeBLValueDualNotify(number, unit, position);
    emit adaptor->gaugeBRValueNotify(number, position);
    emit adaptor->gaugeBRValueDualNotify(number, unit, position);
    emit adaptor->peakIndicatorNotify(1);
    emit adaptor->peakIndicatorTextNotify(number);
    emit adaptor->gauTopBarTextNotify(title);
    emit adaptor->shifterArrowIndicatorNotify(static_cast<unsigned char>(turn & 1));
    emit adaptor->activePresetStatusNotify(position);
    emit adaptor->centerGaugeRedLinePositionNotify(position);
    emit adaptor->guiDisplayTypeNotify(0);
    emit adaptor->Properties2TextInfo({0, 13, turn % 250, turn % 250, turn % 250, turn % 100});
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial")));
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    WidgetsPage page;
    return runPage(&page, QCoreApplication::arguments());
}
