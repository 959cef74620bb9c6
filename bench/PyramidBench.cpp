// The pyramid of a trial that has just arrived, against one pass over the same samples with std::minmax_element: right
// after another one (warm), and with the samples out of the processor's caches (cold).

#include "Comparisons.h"
#include "SignalTrial.h"
#include "display/TrialPyramid.h"

#include <algorithm>

namespace tavex2::bench {

namespace {

/// Fills the caches with something else, larger than they are.
void emptyCaches() {
    static std::vector<char> other(std::size_t{1} << 27);
    for (std::size_t i = 0; i < other.size(); i += 64)
        benchmark::DoNotOptimize(++other[i]);
}

double onePassSeconds(const TrialData& trial) {
    return secondsOf([&trial] {
        for (int channel = 0; channel < trial->channels(); ++channel)
            trial->visitChannel(channel, [](auto samples) {
                const auto extremes = std::minmax_element(samples.begin(), samples.end());
                benchmark::DoNotOptimize(*extremes.first + *extremes.second);
            });
    });
}

/// With what it takes to free the memory of the pyramid again.
double pyramidSeconds(const TrialData& trial) {
    return secondsOf([&trial] {
        const TrialPyramid pyramid(trial);
        benchmark::DoNotOptimize(pyramid.whole().highest);
    });
}

int run(int argc, char** argv) {
    Comparisons comparisons;
    const auto compare = [&](const std::string& what, const TrialData& trial) {
        const Target target{.leastSpeedup = {}, .mostPeerTimes = 2, .mostMs = {}};
        comparisons.add(
            what + ", warm", target, [trial] { return onePassSeconds(trial); },
            [trial] { return pyramidSeconds(trial); });
        comparisons.add(
            what + ", cold", target,
            [trial] {
                emptyCaches();
                return onePassSeconds(trial);
            },
            [trial] {
                emptyCaches();
                return pyramidSeconds(trial);
            },
            3);
    };
    compare("pyramid of 16 x 10 k", madeUpTrial(ElementType::Float64, 16, 10'000));
    compare("pyramid of 16 x 1 M", madeUpTrial(ElementType::Float64, 16, 1'000'000));
    compare("pyramid of 1 x 100 M", madeUpTrial(ElementType::Float32, 1, 100'000'000));
    return comparisons.run(argc, argv);
}

} // namespace

} // namespace tavex2::bench

int main(int argc, char** argv) {
    return tavex2::bench::reporting(argv[0], [&] { return tavex2::bench::run(argc, argv); });
}
