// Redraws of one trace of a hundred million points, single precision as a trial file holds them, against the library's
// stock graph. Needs about 2 GB of memory.

#include "Comparisons.h"
#include "GraphPair.h"
#include "SignalTrial.h"

#include <QApplication>

namespace tavex2::bench {

namespace {

constexpr std::int64_t samples = 100'000'000;

int run(int argc, char** argv) {
    GraphPair graphs(madeUpTrial(ElementType::Float32, 1, samples));
    const std::string name =
        "1 x 100 M" + (graphs.scale() == 1 ? "" : ", scale " + std::to_string(std::lround(graphs.scale())));

    Comparisons comparisons;
    const auto compare = [&](const std::string& what, double leastSpeedup, const View& view) {
        comparisons.add(
            name + ", " + what, {.leastSpeedup = leastSpeedup, .mostPeerTimes = {}, .mostMs = 8, .mostFloorTimes = 2},
            [&graphs, view] { return GraphPair::showSeconds(graphs.peer(), view); },
            [&graphs, view] { return GraphPair::showSeconds(graphs.own(), view); }, {},
            [&graphs, view] { return GraphPair::showSeconds(graphs.empty(), view); });
    };
    compare("full view", 100, graphs.full());
    for (const int part : {2, 10, 100, 1000, 10'000, 100'000, 10'000'000})
        compare("1/" + std::to_string(part) + " of the time", 1, graphs.full().timeZoomed(1.0 / part));
    return comparisons.run(argc, argv);
}

} // namespace

} // namespace tavex2::bench

int main(int argc, char** argv) {
    return tavex2::bench::reporting(argv[0], [&] {
        tavex2::bench::useNoDisplay();
        const QApplication application(argc, argv);
        return tavex2::bench::run(argc, argv);
    });
}
