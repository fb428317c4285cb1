#include "counters.h"
#include "norda/vtqadaptor.h"
#include "norda/widget/vantiq_settings_widget.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <ctime>

/*
 * A menu page of 15 lines that arrives, is laid out and painted, against a bare column that is
 * filled with 15 labels. The page's pauses are skipped.
 */

static constexpr int lines = 15;

static double seconds()
{
    timespec now;
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

static void menuPage(benchmark::State &state)
{
    norda::Vantiq_Settings_Widget page;
    page.show();
    settle(100);
    auto *back = page.findChild<QPushButton *>(QStringLiteral("key_back"));
    norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
    skipSleeps(true);
    int turn = 0;
    for (auto _ : state) {
        back->click();
        settle(1);
        ++turn;
        const double before = seconds();
        emit adaptor->NordaConfigMenuTextInfo({1, 0, 1}, {QStringLiteral("Page %1").arg(turn)}, {});
        for (int line = 0; line < lines; ++line)
            emit adaptor->NordaConfigMenuTextInfo(
                {2, 0, line + 2}, {QStringLiteral("Row %1: ").arg(turn)}, {QStringLiteral("On")});
        paintNow(&page);
        state.SetIterationTime(seconds() - before);
    }
    skipSleeps(false);
}
BENCHMARK(menuPage)
    ->Name("menu/page")
    ->UseManualTime()

    ->Unit(benchmark::kMicrosecond);

static void bareColumn(benchmark::State &state)
{
    QWidget window;
    window.resize(1280, 720);
    auto *area = new QScrollArea(&window);
    area->setGeometry(128, 97, 1152, 520);
    area->setWidgetResizable(true);
    auto *contents = new QWidget;
    auto *column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->setAlignment(Qt::AlignTop);
    area->setWidget(contents);
    QList<QLabel *> labels;
    for (int line = 0; line < lines; ++line) {
        labels.append(new QLabel(contents));
        labels[line]->setFixedHeight(93);
        labels[line]->setFont(QFont(QStringLiteral("Arial"), 24));
        labels[line]->hide();
    }
    window.show();
    settle(100);
    int turn = 0;
    for (auto _ : state) {
        for (QLabel *label : labels) {
            column->removeWidget(label);
            label->hide();
        }
        settle(6);
        ++turn;
        const double before = seconds();
        for (QLabel *label : labels) {
            label->setText(QStringLiteral("Row %1: On").arg(turn));
            label->show();
            column->addWidget(label);
        }
        column->activate();
        paintNow(&window);
        state.SetIterationTime(seconds() - before);
    }
}
BENCHMARK(bareColumn)
    ->Name("menu/bare")
    ->UseManualTime()

    ->Unit(benchmark::kMicrosecond);
