// Reading off minimum, maximum and integral while a cursor is dragged over a long trial, against a plain loop over the
// samples between the cursors.

#include "Comparisons.h"
#include "SignalTrial.h"
#include "analysis/ChannelMeasures.h"

#include <algorithm>

namespace tavex2::bench {

namespace {

/// Places of the moving cursor, over the whole trial.
constexpr std::int64_t moves = 50;

Readings plainLoop(const TrialData& trial, std::int64_t last, double rateHz) {
    return trial->visitChannel(0, [&](auto samples) {
        const auto at = [&samples](std::int64_t i) {
            return static_cast<double>(samples[static_cast<std::size_t>(i)]);
        };
        Readings readings{.Minimum = at(1), .Maximum = at(1), .Integral = 0};
        double sum = 0;
        for (std::int64_t i = 1; i <= last; ++i) {
            readings.Minimum = std::min(readings.Minimum, at(i));
            readings.Maximum = std::max(readings.Maximum, at(i));
            sum += at(i - 1) + 4 * at(i) + at(i + 1);
        }
        readings.Integral = sum / rateHz / 6;
        return readings;
    });
}

/// Seconds of the slowest of all moves.
template <class Measure>
double worstMove(std::int64_t samples, Measure measure) {
    double worst = 0;
    for (std::int64_t move = 1; move <= moves; ++move) {
        // Between blocks and buckets, so that nothing comes out of a table alone.
        const std::int64_t last = samples / moves * move - 513;
        worst = std::max(worst, secondsOf([&] { benchmark::DoNotOptimize(measure(last)); }));
    }
    return worst;
}

int run(int argc, char** argv) {
    constexpr double rateHz = 100'000;
    const TrialData trial = madeUpTrial(ElementType::Float32, 1, 100'000'000);
    const ChannelMeasures measures(std::make_shared<const TrialPyramid>(trial), 0, rateHz);
    const std::int64_t samples = trial->samples();
    Comparisons comparisons;
    comparisons.add(
        "cursor drag, 1 x 100 M, slowest move", {.leastSpeedup = {}, .mostPeerTimes = {}, .mostMs = 1},
        [&] { return worstMove(samples, [&](std::int64_t last) { return plainLoop(trial, last, rateHz); }); },
        [&] { return worstMove(samples, [&](std::int64_t last) { return measures.between(1, last); }); }, 1);
    return comparisons.run(argc, argv);
}

} // namespace

} // namespace tavex2::bench

int main(int argc, char** argv) {
    return tavex2::bench::reporting(argv[0], [&] { return tavex2::bench::run(argc, argv); });
}
