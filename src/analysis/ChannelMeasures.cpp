#include "analysis/ChannelMeasures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

namespace tavex2 {

namespace {

/// Several sums side by side, which a processor adds at the same time.
template <class T>
double plainSum(std::span<const T> samples) {
    std::array<double, 8> sums{};
    const std::size_t whole = samples.size() / sums.size() * sums.size();
    for (std::size_t i = 0; i < whole; i += sums.size())
        for (std::size_t lane = 0; lane < sums.size(); ++lane)
            sums[lane] += static_cast<double>(samples[i + lane]);
    double sum = 0;
    for (const double each : sums)
        sum += each;
    for (const T each : samples.subspan(whole))
        sum += static_cast<double>(each);
    return sum;
}

} // namespace

Result<TrialData> ExtractChannel(const TrialData& trial, int channel, bool rectify) {
    if (trial->rank() == 1 && !rectify) return trial;
    Result<TrialArray> row = TrialArray::allocate(trial->elementType(), 1, 1, trial->samples());
    if (!row) return row.error();
    trial->visitChannel(channel, [&]<class T>(std::span<const T> samples) {
        std::ranges::transform(samples, row.value().samplesOf<T>(0).begin(),
                               [rectify](T each) { return rectify ? std::abs(each) : each; });
    });
    return TrialData(std::make_shared<const TrialArray>(std::move(row).value()));
}

void ChannelMeasures::RunningSum::add(double value) {
    if (!std::isfinite(value)) {
        ++broken;
        return;
    }
    const double next = sum + value;
    // What the addition rounded away, exactly (Neumaier's variant of Kahan's summation, 1974).
    lost += std::abs(sum) >= std::abs(value) ? (sum - next) + value : (value - next) + sum;
    sum = next;
}

ChannelMeasures::ChannelMeasures(std::shared_ptr<const TrialPyramid> pyramid, int row, double rateHz)
    : m_pyramid(std::move(pyramid)), m_row(row), m_rateHz(rateHz) {
    m_pyramid->trial()->visitChannel(row, [this](auto samples) {
        RunningSum before;
        for (std::size_t first = 0; first < samples.size(); first += blockSamples) {
            m_before.push_back(before);
            before.add(plainSum(samples.subspan(first, std::min<std::size_t>(blockSamples, samples.size() - first))));
        }
        m_before.push_back(before);
    });
}

/// The sum of the samples first <= index < last.
double ChannelMeasures::sumOf(std::int64_t first, std::int64_t last) const {
    return m_pyramid->trial()->visitChannel(m_row, [&](auto samples) {
        const auto part = [&](std::int64_t from, std::int64_t to) {
            return plainSum(samples.subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
        };
        const std::int64_t firstBlock = (first + blockSamples - 1) / blockSamples;
        const std::int64_t lastBlock = last / blockSamples; // behind the last whole one
        if (firstBlock >= lastBlock) return part(first, last);
        const RunningSum& from = m_before[static_cast<std::size_t>(firstBlock)];
        const RunningSum& to = m_before[static_cast<std::size_t>(lastBlock)];
        if (to.broken > from.broken) return std::numeric_limits<double>::quiet_NaN();
        return part(first, firstBlock * blockSamples) + ((to.sum - from.sum) + (to.lost - from.lost)) +
               part(lastBlock * blockSamples, last);
    });
}

std::optional<Readings> ChannelMeasures::between(std::int64_t i1, std::int64_t i2) const {
    if (i1 > i2) std::swap(i1, i2);
    const std::int64_t count = samples();
    if (count < 2 || i1 < 0 || i2 >= count || !(m_rateHz > 0)) return {};

    const TracePyramid& trace = m_pyramid->channel(m_row);
    const double first = trace.sample(i1);
    const double last = trace.sample(i2);
    const auto before =
        static_cast<double>(static_cast<float>(i1 > 0 ? trace.sample(i1 - 1) : 2 * trace.sample(0) - trace.sample(1)));
    const auto after = static_cast<double>(
        static_cast<float>(i2 < count - 1 ? trace.sample(i2 + 1) : 2 * last - trace.sample(count - 2)));

    // Every sample of the stretch counts six times, but those at its ends lack one neighbour.
    const double dt = 1.0 / m_rateHz;
    const double weighted = 6 * sumOf(i1, i2 + 1) + (before - first) + (after - last);
    const Extent extent = trace.extent(i1, i2 + 1);
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    return Readings{.Minimum = extent.empty() ? none : extent.lowest,
                    .Maximum = extent.empty() ? none : extent.highest,
                    .Integral = dt / 6 * weighted};
}

} // namespace tavex2
