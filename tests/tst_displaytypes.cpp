#include "displaysteps.h"
#include "messagecapture.h"
#include "norda/vtqadaptor.h"
#include "pluginfixture.h"
#include "testmain.h"

using norda::VtqAdaptor;

/** How a screen follows the module's display types, one after the other. */
class tst_DisplayTypes : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase() { m_host.reset(); }

    void displayTypes_data();
    void displayTypes();
    void unknownTypes_data();
    void unknownTypes();

private:
    QScopedPointer<PluginFixture> m_host;
};

void tst_DisplayTypes::initTestCase()
{
    m_host.reset(new PluginFixture);
    m_host->window(80)->onCreate();
}

void tst_DisplayTypes::displayTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("popup");
    QTest::addColumn<bool>("list");
    for (int type = 0; type < 256; ++type) {
        const bool list = type == 1 || type == 16 || type == 17 || type == 18;
        QTest::addRow("type %d", type) << type << (type == 2) << list;
    }
}

void tst_DisplayTypes::displayTypes()
{
    QFETCH(int, type);
    QFETCH(bool, popup);
    QFETCH(bool, list);
    const bool known = type == 0 || popup || list;
    MessageCapture capture;
    emit VtqAdaptor::instance()->guiDisplayTypeNotify(static_cast<unsigned char>(type));
    const QList<MessageCapture::Message> messages = capture.take();
    QStringList texts;
    int warnings = 0;
    for (const MessageCapture::Message &message : messages) {
        texts.append(message.text);
        if (message.type == QtWarningMsg) {
            ++warnings;
            QVERIFY(message.text.endsWith(QStringLiteral(" %1").arg(type)));
        }
    }
    QCOMPARE(displaySteps(texts),
             (QStringList{QStringLiteral("createPopup %1").arg(popup ? "true" : "false"),
                          QStringLiteral("createListview %1").arg(list ? "true" : "false")}));
    QCOMPARE(warnings, known ? 0 : 1);
}

void tst_DisplayTypes::unknownTypes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("gauges") << 80 << QByteArray("onGuiDisplayTypeChanged");
    QTest::newRow("vehicle") << 81 << QByteArray("onVehGuiDisplayType");
    QTest::newRow("climate") << 82 << QByteArray("onGuiDisplayTypeChanged");
    QTest::newRow("second zone") << 82 << QByteArray("onSecondGuiDisplayTypeChanged");
    QTest::newRow("parking") << 83 << QByteArray("onGuiDisplayTypeChanged");
}

void tst_DisplayTypes::unknownTypes()
{
    QFETCH(int, id);
    QFETCH(QByteArray, slot);
    QWidget *screen = m_host->open(id);
    for (const int type : {3, 15, 19, 255}) {
        MessageCapture capture;
        invoke(screen, slot, Q_ARG(uchar, uchar(type)));
        int warnings = 0;
        for (const MessageCapture::Message &message : capture.take()) {
            if (message.type != QtWarningMsg)
                continue;
            ++warnings;
            QVERIFY(message.text.endsWith(QStringLiteral(" unknown display type %1").arg(type)));
        }
        QCOMPARE(warnings, 1);
    }
}

NORDA_TEST_MAIN(tst_DisplayTypes)
#include "tst_displaytypes.moc"
