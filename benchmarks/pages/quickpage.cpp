#include "gaugesstate.h"
#include "pagerun.h"

#include <QFont>
#include <QGuiApplication>
#include <QQuickView>
#include <QResource>
#include <QtQml>

/** The same page in Qt Quick, compiled ahead of time. */
class QuickPage : public GaugesPage
{
public:
    QuickPage()
    {
        qmlRegisterAnonymousType<GaugeState>("Gauges", 1);
        qmlRegisterSingletonInstance("Gauges", 1, 0, "Module", &m_state);
        m_view.setSource(QStringLiteral("qrc:/pages/GaugesPage.qml"));
    }

    void show() override { m_view.show(); }
    QWindow *window() const override { return const_cast<QQuickView *>(&m_view); }
    QObject *painter() const override { return window(); }
    void burst(int turn) override;
    void setNeedle(int position) override
    {
        m_state.setEngineSpeed(QString::number(100 * position), position);
    }

private:
    GaugesState m_state;
    QQuickView m_view;
};

/** As many changes as the signals of the module cause on the plugin's page. */
void QuickPage::burst(int turn)
{
    const QString number = QString::number(1000 + turn % 2000);
    const QString withUnit = number + QStringLiteral(" F");
    const int position = turn % 100;
    const QString title = QStringLiteral("Title ") + number;
    m_state.setTitles({title, title, title, title, title});
    m_state.setEngineSpeed(number, number.toInt() / 100);
    for (GaugeState *corner :
         {m_state.topLeft(), m_state.topRight(), m_state.bottomLeft(), m_state.bottomRight()}) {
        corner->show(number, position);
        corner->show(withUnit, position);
    }
    m_state.setPeakShown(true);
    m_state.setPeak(number);
    m_state.setStatus(title);
    m_state.setShifts(turn & 1);
    m_state.setProperties({0, 13, turn % 250, turn % 250, turn % 250, turn % 100});
}

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setFont(QFont(QStringLiteral("Arial")));
    if (!QResource::registerResource(QStringLiteral(NORDA_ICON_FILE)))
        return 2;
    QuickPage page;
    return runPage(&page, QCoreApplication::arguments());
}
