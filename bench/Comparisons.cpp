#include "Comparisons.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <exception>
#include <map>

namespace tavex2::bench {

namespace {

constexpr const char* peerSuffix = ", peer";
constexpr const char* ownSuffix = ", ours";
constexpr const char* floorSuffix = ", floor";

/// Shows results as they come and keeps the medians, ms by name.
class MedianReporter : public benchmark::ConsoleReporter {
  public:
    MedianReporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                medians[run.run_name.function_name] = run.GetAdjustedRealTime();
    }

    std::map<std::string, double> medians;
};

std::string number(const char* format, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

std::string milliseconds(double ms) {
    return number(ms < 1 ? "%.3f ms" : ms < 100 ? "%.2f ms" : "%.0f ms", ms);
}

std::string ratioText(const Target& target, double peerMs, double ownMs) {
    if (target.mostPeerTimes) return number("%.2f x its time", ownMs / peerMs);
    const double speedup = peerMs / ownMs;
    return number(speedup < 10 ? "%.1f x faster" : "%.0f x faster", speedup);
}

std::string targetText(const Target& target) {
    std::string text;
    const auto append = [&text](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (target.leastSpeedup) append(number("at least %g x faster", *target.leastSpeedup));
    if (target.mostPeerTimes) append(number("at most %g x its time", *target.mostPeerTimes));
    if (target.mostFloorTimes) append(number("at most %g x the floor", *target.mostFloorTimes));
    if (target.mostMs) append(number("under %g ms", *target.mostMs));
    return text;
}

bool met(const Target& target, double peerMs, double ownMs, std::optional<double> floorMs) {
    return (!target.mostFloorTimes || (floorMs && ownMs <= *target.mostFloorTimes * *floorMs)) &&
           (!target.leastSpeedup || peerMs >= *target.leastSpeedup * ownMs) &&
           (!target.mostPeerTimes || ownMs <= *target.mostPeerTimes * peerMs) &&
           (!target.mostMs || ownMs < *target.mostMs);
}

} // namespace

void Comparisons::add(const std::string& what, const Target& target, Work peer, Work own, std::optional<int> times,
                      Work floor) {
    m_pairs.push_back({what, target});
    const auto enter = [&](const char* suffix, Work work) {
        auto* entry = benchmark::RegisterBenchmark((what + suffix).c_str(), [work = std::move(work)](auto& state) {
            for ([[maybe_unused]] auto each : state)
                state.SetIterationTime(work());
        });
        entry->UseManualTime()->Unit(benchmark::kMillisecond);
        if (times) entry->Iterations(*times);
    };
    enter(peerSuffix, std::move(peer));
    enter(ownSuffix, std::move(own));
    if (floor) enter(floorSuffix, std::move(floor));
}

int Comparisons::run(int argc, char** argv) const {
    // Given first, so that the command line can say otherwise.
    std::vector<std::string> defaults{"--benchmark_repetitions=7", "--benchmark_min_time=0.1",
                                      "--benchmark_report_aggregates_only=true",
                                      "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments{argv[0]};
    for (std::string& each : defaults)
        arguments.push_back(each.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;

    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    bool good = !reporter.medians.empty();
    std::printf("\n| what | peer | ours | ratio | of the floor | target | |\n|---|---|---|---|---|---|---|\n");
    for (const auto& [what, target] : m_pairs) {
        const auto peer = reporter.medians.find(what + peerSuffix);
        const auto own = reporter.medians.find(what + ownSuffix);
        // A filter on the command line leaves pairs out.
        if (peer == reporter.medians.end() && own == reporter.medians.end()) continue;
        if (peer == reporter.medians.end() || own == reporter.medians.end()) {
            std::printf("| %s | incomplete | | | | | |\n", what.c_str());
            good = false;
            continue;
        }
        const auto measured = reporter.medians.find(what + floorSuffix);
        const std::optional<double> floorMs =
            measured == reporter.medians.end() ? std::nullopt : std::optional(measured->second);
        const std::string wanted = targetText(target);
        const bool reached = met(target, peer->second, own->second, floorMs);
        std::printf("| %s | %s | %s | %s | %s | %s | %s |\n", what.c_str(), milliseconds(peer->second).c_str(),
                    milliseconds(own->second).c_str(), ratioText(target, peer->second, own->second).c_str(),
                    floorMs ? number("%.2f x", own->second / *floorMs).c_str() : "", wanted.c_str(),
                    wanted.empty() ? ""
                    : reached      ? "met"
                                   : "MISSED");
        good = good && reached;
    }
    return good ? 0 : 1;
}

int reporting(const char* program, const std::function<int()>& run) {
    try {
        return run();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", program, failure.what());
        return 1;
    }
}

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double processorSecondsOf(const std::function<void()>& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace tavex2::bench
