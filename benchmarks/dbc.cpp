#include "counters.h"
#include "dbc/frameplan.h"
#include "pairs.h"

#include <QtEndian>

#include <cstring>

/*
 * One frame with eight signals, found by its identifier and decoded, against a bare memcpy, shift
 * and mask for each row of a table of as many; and the same with physical values on both sides.
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
static constexpr int steps = 100000; // of a round

/** @param withValues  works out the physical values, too */
static double decodedFrame(bool withValues)
{
    QString error;
    const auto dbc = module::Dbc::parse(description, QStringLiteral("description"), &error);
    std::vector<module::FramePlan> plans;
    for (const module::DbcMessage &message : dbc->messages())
        plans.emplace_back(message);
    module::DecodedSignal decoded[signalCount];
    double values[signalCount];
    quint8 frame[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    quint32 id = 291;
    int count = 0;
    const double before = processorSeconds();
    for (int step = 0; step < steps; ++step) {
        benchmark::DoNotOptimize(frame);
        benchmark::DoNotOptimize(id);
        const module::FramePlan &plan = plans[size_t(dbc->indexOf(id))];
        count = plan.decode(frame, sizeof frame, decoded);
        benchmark::DoNotOptimize(decoded);
        for (int i = 0; withValues && i < count; ++i)
            values[i] = decoded[i].value();
        benchmark::DoNotOptimize(values);
    }
    if (count != signalCount)
        qFatal("%d of %d signals were decoded", count, signalCount);
    return (processorSeconds() - before) / steps;
}

static double bareFrame(bool withValues)
{
    struct Row
    {
        int byte;
        int shift;
        quint64 mask;
        double factor;
        double offset;
    };
    std::vector<Row> rows = {{0, 0, 0xFF, 1, -40},   {1, 0, 0xFFF, 0.25, 0}, {2, 4, 0xF, 1, 0},
                             {3, 0, 0xFFFF, 0.1, 0}, {5, 0, 1, 1, 0},        {5, 1, 0x7F, 2, 0},
                             {6, 0, 0x1FF, 0.5, 0},  {7, 0, 0x7F, 0.01, 3}};
    quint8 frame[16] = {1, 2, 3, 4, 5, 6, 7, 8};
    quint64 bits[signalCount];
    double values[signalCount];
    const double before = processorSeconds();
    for (int step = 0; step < steps; ++step) {
        benchmark::DoNotOptimize(frame);
        benchmark::DoNotOptimize(rows);
        const int count = int(rows.size());
        for (int i = 0; i < count; ++i) {
            const Row &row = rows[size_t(i)];
            quint64 word;
            std::memcpy(&word, frame + row.byte, sizeof word);
            bits[i] = word >> row.shift & row.mask;
        }
        benchmark::DoNotOptimize(bits);
        for (int i = 0; withValues && i < count; ++i)
            values[i] = double(qint64(bits[i])) * rows[size_t(i)].factor + rows[size_t(i)].offset;
        benchmark::DoNotOptimize(values);
    }
    return (processorSeconds() - before) / steps;
}

static void frames(benchmark::State &state, bool withValues)
{
    static constexpr int rounds = 101;
    measureInTurns(
        state, rounds, [withValues] { return decodedFrame(withValues); },
        [withValues] { return bareFrame(withValues); });
}
BENCHMARK_CAPTURE(frames, bits, false)->Name("dbc/frame")->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(frames, values, true)->Name("dbc/values")->UseManualTime()->Iterations(1);
