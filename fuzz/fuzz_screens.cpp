// A byte stream as a head unit's life: any signal with any payload, touches at any point, pages
// that are shown, hidden, entered, destroyed and built anew, slots that hosts invoke by name.

#include "adaptorlink.h"
#include "fuzzinput.h"
#include "plugin.h"
#include "windowinterface.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <ctime>

static constexpr int firstWindow = 80;
static constexpr int windowCount = 6;

static norda::Plugin *plugin;
static QList<module::ModuleSignal> allSignals;
static unsigned long long deliveries;

// The pauses of the menu page would be all that there is.
extern "C" __attribute__((visibility("default"))) int nanosleep(const timespec *, timespec *)
{
    return 0;
}

static WindowInterface *window(int number)
{
    return plugin->requestWindowInterface(firstWindow + number % windowCount);
}

static void open(int number)
{
    if (!window(number)->mainWidget())
        window(number)->onCreate();
    window(number)->onShow(QByteArray());
}

static void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QTemporaryDir root;
    qputenv("NORDA_HOST_ROOT", root.path().toLocal8Bit());
    new QApplication(*argc, *argv);
    qInstallMessageHandler(quiet);
    plugin = new norda::Plugin;
    plugin->create();
    allSignals = module::moduleSignals();
    for (int number = 0; number < windowCount; ++number)
        window(number)->onCreate();
    QMetaObject::invokeMethod(window(3)->mainWidget(), "connectVtqAdaptor");
    std::atexit([] { std::fprintf(stderr, "signal deliveries: %llu\n", deliveries); });
    return 0;
}

static QVariant valueOf(int type, FuzzInput *input)
{
    const auto text = [input] { return QString::fromUtf8(input->bytes()); };
    const auto count = [input] { return input->byte() % 40; };
    if (type == QMetaType::UChar)
        return QVariant::fromValue(uchar(input->byte()));
    if (type == QMetaType::Int)
        return input->number();
    if (type == QMetaType::Bool)
        return bool(input->byte() & 1);
    if (type == QMetaType::QString)
        return text();
    if (type == QMetaType::QByteArray)
        return input->bytes();
    if (type == QMetaType::QStringList) {
        QStringList list;
        for (int i = count(); i > 0; --i)
            list.append(text());
        return list;
    }
    if (type == qMetaTypeId<QList<int>>()) {
        QList<int> list;
        for (int i = count(); i > 0; --i)
            list.append(input->number());
        return QVariant::fromValue(list);
    }
    QVariantList list;
    for (int i = count(); i > 0; --i)
        list.append(input->number());
    return list;
}

static void deliver(FuzzInput *input)
{
    static module::AdaptorLink link;
    const module::ModuleSignal &signal = allSignals[input->byte() % allSignals.size()];
    module::Emission emission{0, signal.method.name(), {}};
    for (int i = 0; i < signal.method.parameterCount(); ++i)
        emission.arguments.append(valueOf(signal.method.parameterType(i), input));
    link.deliver(emission);
    ++deliveries;
}

static void touch(FuzzInput *input)
{
    QWidget *page = window(input->byte())->mainWidget();
    if (!page)
        return;
    const QPoint place(input->byte() * 1280 / 256, input->byte() * 720 / 256);
    QWidget *touched = page->childAt(place);
    if (!touched)
        touched = page;
    const auto send = [&](QEvent::Type type, QPoint at) {
        const bool isHeld = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, touched->mapFrom(page, at), page->mapToGlobal(at), Qt::LeftButton,
                          isHeld ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(touched, &event);
    };
    send(QEvent::MouseButtonPress, place);
    for (int moves = input->byte() % 4; moves > 0; --moves)
        send(QEvent::MouseMove, place + QPoint(input->byte() - 128, 0));
    send(QEvent::MouseButtonRelease, place);
}

static void live(FuzzInput *input)
{
    static const char *const slots_[] = {
        "connectVtqAdaptor",   "disconnectVtqAdaptor", "resume",
        "UpdataVtqSourceDspl", "onSettingsClicked",    "onSplitClicked"};
    const int number = input->byte();
    WindowInterface *chosen = window(number);
    switch (input->byte() % 8) {
    case 0:
        open(number);
        break;
    case 1:
        chosen->onHide(QByteArray());
        break;
    case 2:
        chosen->onEnter();
        break;
    case 3:
        chosen->onExit();
        break;
    case 4:
        if (input->byte() > 8)
            break; // building a page is slow: all its images are decoded
        chosen->onDestroy();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        break;
    case 5:
        if (QWidget *page = chosen->mainWidget()) {
            const char *slot = slots_[input->byte() % int(std::size(slots_))];
            if (page->metaObject()->indexOfMethod(QByteArray(slot) + "()") >= 0)
                QMetaObject::invokeMethod(page, slot);
        }
        break;
    default:
        QCoreApplication::processEvents();
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    while (!input.atEnd()) {
        const uint8_t step = input.byte();
        if (step < 220)
            deliver(&input);
        else if (step < 240)
            touch(&input);
        else
            live(&input);
    }
    // The next one begins with all pages built and none of them shown: hidden pages are fast.
    for (int number = 0; number < windowCount; ++number) {
        if (!window(number)->mainWidget())
            window(number)->onCreate();
        window(number)->onHide(QByteArray());
    }
    QCoreApplication::removePostedEvents(qApp);
    return 0;
}
