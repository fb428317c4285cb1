#include "counters.h"
#include "norda/vtqadaptor.h"
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

static void emitBurst(int turn)
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

static void pageBurst(benchmark::State &state)
{
    norda::Vantiq_Gaugue_Widget page;
    page.show();
    settle(100);
    emitBurst(0);
    emitBurst(1);
    settle(400);
    const int before = pngDecodes();
    int turn = 0;
    for (auto _ : state) {
        emitBurst(turn++);
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
