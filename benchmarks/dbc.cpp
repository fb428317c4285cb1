#include "dbc/frameplan.h"

#include <QtEndian>

#include <benchmark/benchmark.h>

#include <cstring>

/*
 * One frame with eight signals, found by its identifier and decoded to physical values, against a
 * bare memcpy, shift and mask for each of as many signals.
 */

static constexpr char description[] = "BO_ 100 First: 8 U\n"
                                      " SG_ Other : 0|8@1+ (1,0) [0|0] \"\" D\n"
                                      "BO_ 291 Frame: 8 U\n"
                                      " SG_ A : 0|8@1+ (1,-40) [0|0] \"\" D\n"
                                      " SG_ B : 8|12@1- (0.25,0) [0|0] \"\" D\n"
                                      " SG_ C : 20|4@1+ (1,0) [0|0] \"\" D\n"
                                      " SG_ D : 31|16@0+ (0.1,0) [0|0] \"\" D\n"
                                      " SG_ E : 40|1@1+ (1,0) [0|0] \"\" D\n"
                                      " SG_ F : 41|7@1+ (2,0) [0|0] \"\" D\n"
                                      " SG_ G : 55|9@0- (0.5,0) [0|0] \"\" D\n"
                                      " SG_ H : 56|7@1+ (0.01,3) [0|0] \"\" D\n";
static constexpr int signalCount = 8;

static void decodedFrame(benchmark::State &state)
{
    QString error;
    const auto dbc = module::Dbc::parse(description, QStringLiteral("description"), &error);
    std::vector<module::FramePlan> plans;
    for (const module::DbcMessage &message : dbc->messages())
        plans.emplace_back(message);
    module::DecodedSignal decoded[signalCount];
    quint8 frame[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    quint32 id = 291;
    int count = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(frame);
        benchmark::DoNotOptimize(id);
        const module::FramePlan &plan = plans[size_t(dbc->indexOf(id))];
        count = plan.decode(frame, sizeof frame, decoded);
        benchmark::DoNotOptimize(decoded);
    }
    state.counters["signals"] = count;
}
BENCHMARK(decodedFrame)->Name("dbc/frame");

static void bareFrame(benchmark::State &state)
{
    quint8 frame[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    int shifts[signalCount] = {0, 8, 20, 24, 40, 41, 48, 56};
    quint64 masks[signalCount] = {0xFF, 0xFFF, 0xF, 0xFFFF, 1, 0x7F, 0x1FF, 0x7F};
    quint64 values[signalCount];
    benchmark::DoNotOptimize(shifts);
    benchmark::DoNotOptimize(masks);
    for (auto _ : state) {
        benchmark::DoNotOptimize(frame);
        for (int i = 0; i < signalCount; ++i) {
            quint64 word;
            std::memcpy(&word, frame, sizeof word);
            values[i] = word >> shifts[i] & masks[i];
        }
        benchmark::DoNotOptimize(values);
    }
    state.counters["signals"] = signalCount;
}
BENCHMARK(bareFrame)->Name("dbc/bare");
