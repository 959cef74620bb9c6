// Redraws of 16 traces of a million points each, against the library's stock graph: the whole trial, ever smaller parts
// of it, and the frames of a user who zooms in and then pans. QT_SCALE_FACTOR=2 draws as on a fine screen.
// Usage: redraw_bench [RECORDING] [--benchmark_...]

#include "Comparisons.h"
#include "GraphPair.h"
#include "SignalTrial.h"

#include <QApplication>

#include <algorithm>

namespace tavex2::bench {

namespace {

constexpr int channels = 16;
constexpr std::int64_t samples = 1'000'000;
/// A screen shows 60 frames a second.
constexpr double frameMs = 16;
constexpr double leastSpeedup = 8;
/// The same frame without traces writes each pixel once; so may one with traces.
constexpr double mostFloorTimes = 2;

/// Twenty turns of the wheel into the trial, then twenty drags to the right by a tenth of what is seen.
std::vector<View> zoomAndPan(const View& full) {
    constexpr int steps = 20;
    std::vector<View> views;
    views.reserve(2 * steps);
    View view = full;
    for (int step = 0; step < steps; ++step)
        views.push_back(view = view.timeZoomed(0.8));
    const double drag = (view.seconds.maximum - view.seconds.minimum) / 10;
    for (int step = 0; step < steps; ++step) {
        view.seconds.minimum += drag;
        view.seconds.maximum += drag;
        views.push_back(view);
    }
    return views;
}

int run(int argc, char** argv) {
    const bool recorded = argc > 1 && argv[1][0] != '-';
    GraphPair graphs(recorded ? recordedTrial(argv[1], channels, samples)
                              : madeUpTrial(ElementType::Float64, channels, samples));
    if (recorded) std::rotate(argv + 1, argv + 2, argv + argc--);
    const std::string name = "16 x 1 M" + std::string(recorded ? " recorded" : "") +
                             (graphs.scale() == 1 ? "" : ", scale " + std::to_string(std::lround(graphs.scale())));

    Comparisons comparisons;
    const auto compare = [&](const std::string& what, const Target& target, const View& view) {
        comparisons.add(
            name + ", " + what, target, [&graphs, view] { return GraphPair::showSeconds(graphs.peer(), view); },
            [&graphs, view] { return GraphPair::showSeconds(graphs.own(), view); }, {},
            [&graphs, view] { return GraphPair::showSeconds(graphs.empty(), view); });
    };
    compare("full view",
            {.leastSpeedup = leastSpeedup, .mostPeerTimes = {}, .mostMs = frameMs, .mostFloorTimes = mostFloorTimes},
            graphs.full());
    const Target frame{.leastSpeedup = 1, .mostPeerTimes = {}, .mostMs = frameMs, .mostFloorTimes = mostFloorTimes};
    for (const int part : {2, 10, 100, 1000, 10'000, 100'000})
        compare("1/" + std::to_string(part) + " of the time", frame, graphs.full().timeZoomed(1.0 / part));
    for (const int part : {4, 20})
        compare("1/" + std::to_string(part) + " of the voltage", frame, graphs.full().voltageZoomed(1.0 / part));

    const std::vector<View> views = zoomAndPan(graphs.full());
    const auto worstFrame = [&views](CWGraph& graph) {
        double worst = 0;
        for (const View& view : views)
            worst = std::max(worst, GraphPair::showSeconds(graph, view));
        return worst;
    };
    comparisons.add(
        name + ", worst frame of zoom and pan", frame, [&] { return worstFrame(graphs.peer()); },
        [&] { return worstFrame(graphs.own()); }, 1, [&] { return worstFrame(graphs.empty()); });

    // What of the difference is the smoothing of lines, which a full view does not need.
    comparisons.add(
        name + ", full view, peer not smoothed", {},
        [&graphs] {
            graphs.peer().setNotAntialiasedElements(QCP::aePlottables);
            const double seconds = GraphPair::showSeconds(graphs.peer(), graphs.full());
            graphs.peer().setNotAntialiasedElements(QCP::aeNone);
            return seconds;
        },
        [&graphs] { return GraphPair::showSeconds(graphs.own(), graphs.full()); });
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
