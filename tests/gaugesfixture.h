#pragma once

#include "callspy.h"
#include "norda/squillogauge.h"
#include "norda/vtqadaptor.h"
#include "pluginfixture.h"
#include "testmain.h"

#include <QLabel>

enum Gauge { Centre, TopLeft, TopRight, BottomLeft, BottomRight, GaugeCount };

static const char *const valueNames[] = {"Txt_center_value", "Txt_up_left_value",
                                         "Txt_up_right_value", "Txt_down_left_value",
                                         "Txt_down_right_value"};
static const char *const titleNames[] = {"Txt_center_title", "Txt_up_left_title",
                                         "Txt_up_right_title", "Txt_down_left_title",
                                         "Txt_down_right_title"};

/** The gauges screen of the loaded plugin. */
class GaugesFixture
{
protected:
    void openScreen()
    {
        m_host.reset(new PluginFixture);
        m_screen = m_host->open(80);
        m_gauges.clear();
        for (auto *gauge : m_screen->findChildren<norda::SQuilloGauge *>())
            m_gauges.insert(gauge->gaugeId(), gauge);
        QCOMPARE(m_gauges.keys(), (QList<int>{0, 1, 2, 3, 4}));
    }
    void closeScreen() { m_host.reset(); }

    norda::SQuilloGauge *gauge(int index) const { return m_gauges.value(index); }
    QLabel *label(const char *name) const { return find<QLabel>(m_screen, name); }
    QString text(const char *name) const { return label(name)->text(); }
    static norda::VtqAdaptor *adaptor() { return norda::VtqAdaptor::instance(); }
    static QString command(const char *text)
    {
        return QStringLiteral("norda::VtqAdaptor::%1").arg(QLatin1String(text));
    }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;

private:
    QMap<int, norda::SQuilloGauge *> m_gauges;
};
