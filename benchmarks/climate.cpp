#include "counters.h"
#include "norda/vtqadaptor.h"
#include "norda/widget/vantiq_climate_widget.h"

#include <QLabel>
#include <QPushButton>

#include <benchmark/benchmark.h>

/*
 * A climate status list that changes in every element, decoded and painted, against as many bare
 * labels and buttons of the same sizes and images that change.
 */

static const QList<int> lists[2] = {
    {0, 0, 36, 4, 0, 0, 70, 71, 0, 0, 1, 0, 0, 0, 1, 1, 0, 36, 70, 0, 4, 0, 0},
    {1, 3, 216, 1, 1, 3, 80, 81, 1, 2, 3, 1, 1, 0, 2, 2, 1, 180, 80, 1, 2, 0, 1},
};

static void pageStatus(benchmark::State &state, bool changing)
{
    norda::Vantiq_Climate_Widget page;
    page.show();
    settle(100);
    norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
    for (const QList<int> &list : lists) {
        emit adaptor->NordaClimateCtrlStatusNotify(list);
        paintNow(&page);
    }
    settle(100);
    const int before = pngDecodes();
    EventCounter counter;
    int turn = 1;
    for (auto _ : state) {
        turn += changing;
        emit adaptor->NordaClimateCtrlStatusNotify(lists[turn % 2]);
        paintNow(&page);
    }
    state.counters["png_decodes"] = pngDecodes() - before;
    state.counters["paints"] = double(counter.paints) / double(state.iterations());
}
BENCHMARK_CAPTURE(pageStatus, changed, true)
    ->Name("climate/changed")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(pageStatus, repeated, false)
    ->Name("climate/repeated")
    ->Unit(benchmark::kMicrosecond);

/** What the page changes: nine checked keys, one icon, two texts, one meter and two seat images. */
static void bareStatus(benchmark::State &state)
{
    static constexpr struct
    {
        const char *name;
        int width, height;
    } keys[] = {{"power", 104, 116},      {"AC", 176, 76},
                {"max_AC", 176, 76},      {"wind_direction", 104, 116},
                {"demisting", 104, 116},  {"steering_wheel_heat", 104, 116},
                {"aoto", 176, 76},        {"dual", 176, 76},
                {"circulation", 104, 116}};
    const auto path = [](const QString &name) {
        return QStringLiteral(":/icon/airicon/%1.png").arg(name);
    };
    QWidget window;
    window.resize(1280, 720);
    QPalette colors = window.palette();
    colors.setColor(QPalette::Window, QColor(0x0D, 0x13, 0x1A));
    window.setPalette(colors);
    window.setAutoFillBackground(true);
    QList<QPushButton *> buttons;
    for (const auto &key : keys) {
        auto *button = new QPushButton(&window);
        button->setGeometry(20 + (buttons.size() % 5) * 200, 20 + (buttons.size() / 5) * 140,
                            key.width, key.height);
        QIcon icon;
        icon.addFile(path(QLatin1String(key.name) + QStringLiteral("_n")), {}, QIcon::Normal,
                     QIcon::Off);
        icon.addFile(path(QLatin1String(key.name) + QStringLiteral("_p")), {}, QIcon::Normal,
                     QIcon::On);
        button->setIcon(icon);
        button->setIconSize(QSize(key.width, key.height));
        button->setCheckable(true);
        buttons.append(button);
    }
    auto *vent = new QPushButton(&window);
    vent->setGeometry(20, 320, 200, 164);
    vent->setIconSize(QSize(200, 164));
    const QIcon vents[2] = {QIcon(path(QStringLiteral("seat_head_n"))),
                            QIcon(path(QStringLiteral("seat_foot_windshied_n")))};
    QList<QLabel *> texts;
    for (int i = 0; i < 2; ++i) {
        auto *text = new QLabel(&window);
        text->setGeometry(240 + i * 270, 320, 250, 116);
        text->setAlignment(Qt::AlignCenter);
        QFont font(QStringLiteral("Arial"), 40);
        font.setBold(true);
        text->setFont(font);
        texts.append(text);
    }
    const QPixmap images[3][2] = {
        {QPixmap(path(QStringLiteral("position_1"))), QPixmap(path(QStringLiteral("position_6")))},
        {QPixmap(path(QStringLiteral("seat_heat_0"))),
         QPixmap(path(QStringLiteral("seat_heat_2")))},
        {QPixmap(path(QStringLiteral("seat_heat_1"))),
         QPixmap(path(QStringLiteral("seat_heat_3")))}};
    QList<QLabel *> pictures;
    for (int i = 0; i < 3; ++i) {
        pictures.append(new QLabel(&window));
        pictures[i]->setGeometry(20 + i * 420, 520, images[i][0].width(), images[i][0].height());
    }
    window.show();
    settle(100);
    int turn = 0;
    for (auto _ : state) {
        const int which = ++turn % 2;
        for (QPushButton *button : buttons)
            button->setChecked(which);
        vent->setIcon(vents[which]);
        for (QLabel *text : texts)
            text->setText(which ? QStringLiteral("80.00 F") : QStringLiteral("70.00 F"));
        for (int i = 0; i < 3; ++i)
            pictures[i]->setPixmap(images[i][which]);
        paintNow(&window);
    }
}
BENCHMARK(bareStatus)->Name("climate/bare")->Unit(benchmark::kMicrosecond);
