#include "counters.h"
#include "norda/vtqadaptor.h"
#include "norda/widget/vantiq_parking_widget.h"

#include <QLabel>

#include <benchmark/benchmark.h>

/* A parking message, delivered and painted, against eight bare labels that change their pixmaps. */

static void send(int zone, int level)
{
    QByteArray message;
    message.append(char(zone)).append(char(level));
    emit norda::VtqAdaptor::instance()->parkingDistanceRear(message);
}

struct Messages
{
    int zones[2];
    int levels[2];
};

static void pageMessage(benchmark::State &state, const Messages &messages)
{
    norda::Vantiq_Parking_Widget page;
    page.show();
    settle(100);
    const auto deliver = [&](int turn) {
        send(messages.zones[turn % 2], messages.levels[turn % 2]);
        paintNow(&page);
    };
    for (int turn = 0; turn < 2; ++turn)
        deliver(turn);
    settle(100);
    const int before = pngDecodes();
    EventCounter counter;
    int turn = 0;
    for (auto _ : state)
        deliver(++turn);
    state.counters["png_decodes"] = pngDecodes() - before;
    state.counters["paints"] = double(counter.paints) / double(state.iterations());
}
BENCHMARK_CAPTURE(pageMessage, level, Messages{{7, 7}, {2, 3}})
    ->Name("parking/one_zone")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(pageMessage, move, Messages{{6, 7}, {4, 4}})
    ->Name("parking/next_zone")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(pageMessage, repeated, Messages{{7, 7}, {3, 3}})
    ->Name("parking/repeated")
    ->Unit(benchmark::kMicrosecond);

static void bareZones(benchmark::State &state)
{
    static const char *const zones[] = {"F_U", "F_U_M", "F_D_M", "F_D",
                                        "R_U", "R_U_M", "R_D_M", "R_D"};
    QWidget window;
    window.resize(1280, 720);
    window.setAutoFillBackground(true);
    QList<QLabel *> labels;
    QList<QPixmap> images[2];
    for (const char *zone : zones) {
        for (const int which : {0, 1})
            images[which].append(QPixmap(QStringLiteral(":/icon/radaricon/%1_%2.png")
                                             .arg(QLatin1String(zone))
                                             .arg(2 + which)));
        auto *label = new QLabel(&window);
        label->move((labels.size() % 4) * 200, (labels.size() / 4) * 200);
        label->resize(images[0].constLast().size());
        labels.append(label);
    }
    window.show();
    settle(100);
    int turn = 0;
    for (auto _ : state) {
        ++turn;
        for (int zone = 0; zone < labels.size(); ++zone)
            labels[zone]->setPixmap(images[turn % 2][zone]);
        paintNow(&window);
    }
}
BENCHMARK(bareZones)->Name("parking/bare")->Unit(benchmark::kMicrosecond);

/** One second's worth of messages; what it costs is the share of that second. */
static void sixtyMessages(benchmark::State &state, bool visible)
{
    norda::Vantiq_Parking_Widget page;
    page.setVisible(visible);
    settle(100);
    const auto second = [&page, visible] {
        for (int i = 0; i < 60; ++i) {
            send(1 + i % 8, i % 5);
            if (visible)
                paintNow(&page);
        }
    };
    second();
    const int before = pngDecodes();
    for (auto _ : state)
        second();
    state.counters["png_decodes"] = pngDecodes() - before;
}
BENCHMARK_CAPTURE(sixtyMessages, visible, true)
    ->Name("parking/sixty_visible")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(sixtyMessages, hidden, false)
    ->Name("parking/sixty_hidden")
    ->Unit(benchmark::kMicrosecond);
