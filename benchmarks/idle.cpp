#include "counters.h"
#include "norda/vtqadaptor.h"
#include "norda/widget/vantiq_gague_widget.h"

#include <benchmark/benchmark.h>

/** Ten seconds of a gauges page after its last signal: what wakes, what paints. */
static void idlePage(benchmark::State &state)
{
    norda::Vantiq_Gaugue_Widget page;
    page.show();
    norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
    emit adaptor->centerGaugeValueNotify(QStringLiteral("3500"), QStringLiteral("RPM"), 35);
    emit adaptor->gauTopBarTextNotify(QStringLiteral("86 km/h"));
    settle(500);

    for (auto _ : state) {
        EventCounter counter;
        const int before = pngDecodes();
        settle(10000);
        state.counters["repaints"] = counter.paints;
        state.counters["wakeups"] = counter.timers; // the one that ends the wait is not the page's
        state.counters["png_decodes"] = pngDecodes() - before;
    }
}
BENCHMARK(idlePage)->Name("idle/ten_seconds")->Iterations(1)->Unit(benchmark::kSecond);
