#include "appplugin.h"
#include "cm/basewindow.h"
#include "norda/vtqadaptor.h"

#include <QLabel>

/** One window with one label, which shows what the module's clock says. */
class ClockWindow : public cm::BaseWindow
{
public:
    using cm::BaseWindow::BaseWindow;

    QString name() override { return QStringLiteral("clock"); }
    void onCreate() override
    {
        m_label = new QLabel(QStringLiteral("waiting"));
        QObject::connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::TimeInfo, m_label,
                         [this](const QStringList &digits) { m_label->setText(digits.join("")); });
    }
    void onDestroy() override { delete m_label; }
    QWidget *mainWidget() override { return m_label; }

private:
    QLabel *m_label = nullptr;
};

class ClockPlugin : public QObject, public AppPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.ClockPlugin")
    Q_INTERFACES(AppPlugin)
public:
    void create() override {}
    QList<int> windowInterfaceID() override { return {90}; }
    QList<int> sourceInterfaceID() override { return {}; }
    WindowInterface *requestWindowInterface(int id) override
    {
        return id == 90 ? &m_window : nullptr;
    }
    SourceInterface *requestSourceInterface(int) override { return nullptr; }

private:
    ClockWindow m_window{nullptr};
};

#include "clockplugin.moc"
