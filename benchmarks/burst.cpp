#include "counters.h"
#include "gaugesburst.h"
#include "norda/widget/vantiq_gague_widget.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>

#include <benchmark/benchmark.h>

/*
 * One of every signal of the gauges page with new values, delivered and painted, against as many
 * bare labels that are given a new text each.
 */

static constexpr int signalsInBurst = 18;

static void pageBurst(benchmark::State &state)
{
    norda::Vantiq_Gaugue_Widget page;
    page.show();
    settle(100);
    emitGaugesBurst(0);
    emitGaugesBurst(1);
    settle(400);
    const int before = pngDecodes();
    int turn = 0;
    for (auto _ : state) {
        emitGaugesBurst(turn++);
        paintNow(&page);
    }
    state.counters["signals"] = signalsInBurst;
    state.counters["png_decodes"] = pngDecodes() - before;
}
BENCHMARK(pageBurst)->Name("burst/page")->Unit(benchmark::kMicrosecond);

/** Labels of the page's own sizes, since a larger text costs more to draw. */
static void bareBurst(benchmark::State &state)
{
    QWidget window;
    window.resize(1280, 720);
    QPalette colors = window.palette();
    colors.setColor(QPalette::Window, QColor(0x0D, 0x13, 0x1A));
    colors.setColor(QPalette::WindowText, Qt::white);
    window.setPalette(colors);
    window.setAutoFillBackground(true);
    QList<QLabel *> labels;
    for (int i = 0; i < signalsInBurst; ++i) {
        auto *label = new QLabel(&window);
        label->setGeometry(20 + (i % 4) * 310, 20 + (i / 4) * 130, 302, 48);
        label->setAlignment(Qt::AlignCenter);
        QFont font(QStringLiteral("Arial"));
        font.setPixelSize(30);
        label->setFont(font);
        labels.append(label);
    }
    window.show();
    settle(100);
    int turn = 0;
    for (auto _ : state) {
        const QString text = QStringLiteral("Title %1").arg(1000 + turn++ % 2000);
        for (QLabel *label : labels)
            label->setText(text);
        paintNow(&window);
    }
}
BENCHMARK(bareBurst)->Name("burst/labels")->Unit(benchmark::kMicrosecond);
