#pragma once

#include "callspy.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "pluginfixture.h"
#include "simulator/climate.h"
#include "testmain.h"
#include "translator.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>

/** The climate screen of the loaded plugin, in a car that has all that can be had. */
class ClimateFixture
{
protected:
    void openScreen()
    {
        Translator::instance()->setLanguage(QStringLiteral("en"));
        const module::Climate car;
        for (int group : {0, 1})
            norda::VtqService::instance()->setRearClimateControlFeatures(group,
                                                                         car.rearFeatures(group));
        m_host.reset(new PluginFixture);
        m_screen = m_host->open(82);
    }
    void closeScreen() { m_host.reset(); }

    QPushButton *key(const char *name) const { return find<QPushButton>(m_screen, name); }
    QLabel *label(const char *name) const { return find<QLabel>(m_screen, name); }
    int page() const { return find<QStackedWidget>(m_screen, "stackedWidget")->currentIndex(); }
    bool shows(const char *name, const QString &image) const
    {
        return isImage(label(name)->pixmap(Qt::ReturnByValue), image);
    }
    bool showsIcon(const char *name, const QString &image) const
    {
        return isImage(key(name)->icon().pixmap(200, 164), image);
    }
    void toManual() { QTest::mouseClick(key("key_rear"), Qt::LeftButton); }
    static void report(const QList<int> &status)
    {
        emit norda::VtqAdaptor::instance()->NordaClimateCtrlStatusNotify(status);
    }
    static QList<int> listWith(const QMap<int, int> &elements)
    {
        QList<int> list = QVector<int>(23, 0).toList();
        for (auto it = elements.cbegin(); it != elements.cend(); ++it)
            list[it.key()] = it.value();
        return list;
    }
    template <typename... Arguments>
    void invoke(const char *slot, Arguments... arguments)
    {
        ::invoke(m_screen, slot, arguments...);
    }

    QScopedPointer<PluginFixture> m_host;
    QWidget *m_screen = nullptr;

private:
    static bool isImage(const QPixmap &shown, const QString &name)
    {
        const QImage expected =
            QPixmap(QStringLiteral(":/icon/airicon/") + name + ".png").toImage();
        return !expected.isNull() && shown.toImage() == expected;
    }
};
