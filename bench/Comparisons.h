#pragma once

#include <benchmark/benchmark.h>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tavex2::bench {

/// What a comparison is to reach; a limit without value is none.
struct Target {
    std::optional<double> leastSpeedup;  ///< the peer's time is at least so many times ours
    std::optional<double> mostPeerTimes; ///< our time is at most so many times the peer's
    std::optional<double> mostMs;        ///< our time is below this
    /// Our time is at most so many times that of the work nobody can leave out.
    std::optional<double> mostFloorTimes = {};
};

/// Pairs of benchmarks that do the same work, the peer's and ours, run together in one process and judged by their
/// ratio. Times are medians over repetitions that take turns, so that a busy machine disturbs both sides alike.
class Comparisons {
  public:
    /// Does the work once and returns the seconds that count.
    using Work = std::function<double()>;

    /// Adds a pair. A repetition does the work so many times, or for a while where no number is given. `floor` is what
    /// of the work nobody can leave out, measured too where it is given.
    void add(const std::string& what, const Target& target, Work peer, Work own, std::optional<int> times = {},
             Work floor = {});

    /// Runs the benchmarks that the arguments (those of Google Benchmark) ask for, prints every time and then a table
    /// of the pairs. The exit code: 0, or 1 when a target is missed, a pair incomplete or an argument unknown.
    int run(int argc, char** argv) const;

  private:
    struct Pair {
        std::string what;
        Target target;
    };
    std::vector<Pair> m_pairs;
};

/// Runs a benchmark program and gives its exit code; what it throws goes to the error stream and makes the code 1.
int reporting(const char* program, const std::function<int()>& run);

/// Seconds that `work` takes.
double secondsOf(const std::function<void()>& work);

/// Seconds of processor time that `work` takes on all threads; other programs hardly change them.
double processorSecondsOf(const std::function<void()>& work);

} // namespace tavex2::bench
