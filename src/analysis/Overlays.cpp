#include "analysis/Overlays.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <span>
#include <utility>

namespace tavex2 {

namespace {

Result<void> checkShapes(std::span<const TrialPtr> trials, int channel) {
    if (trials.empty()) return Error{ErrorKind::InvalidValue, "No trial has been overlaid yet."};
    for (const TrialPtr& trial : trials)
        if (channel < 0 || channel >= trial->samples->channels() ||
            trial->samples->samples() != trials.front()->samples->samples())
            return Error{ErrorKind::InvalidValue, "The overlaid trials do not have the same channels and samples. "
                                                  "Clear the overlay and add them again."};
    return {};
}

/// Copies the channel of each trial into a row of its own.
template <class T>
void copyRows(TrialArray& rows, std::span<const TrialPtr> trials, int channel) {
    for (std::size_t k = 0; k < trials.size(); ++k) {
        const std::span<T> row = rows.samplesOf<T>(static_cast<int>(k));
        trials[k]->samples->visitChannel(channel, [row](auto samples) {
            std::ranges::transform(samples, row.begin(), [](auto each) { return static_cast<T>(each); });
        });
    }
}

void averageInto(std::span<double> row, std::span<const TrialPtr> trials, int channel) {
    std::ranges::fill(row, 0.0);
    for (const TrialPtr& trial : trials)
        trial->samples->visitChannel(channel, [row](auto samples) {
            for (std::size_t i = 0; i < row.size(); ++i)
                row[i] += static_cast<double>(samples[i]);
        });
    const double factor = 1.0 / static_cast<double>(trials.size());
    for (double& each : row)
        each *= factor;
}

template <class T>
void rectifyRows(TrialArray& rows) {
    for (int k = 0; k < rows.channels(); ++k)
        for (T& each : rows.samplesOf<T>(k))
            each = std::abs(each);
}

} // namespace

Result<void> AddOverlay(OverlaySet& overlays, const TrialPtr& trial) {
    if (static_cast<std::size_t>(overlays.OverlayCount) == overlays.OverlayData.size())
        return Error{ErrorKind::InvalidValue, "Maximum 16 overlays!"};
    if (overlays.OverlayCount == 0)
        overlays.OverlaySettings = trial->sampling;
    else if (!SettingsCompatible(overlays.OverlaySettings, trial->sampling))
        return Error{ErrorKind::InvalidValue, "Can't overlay because properties are not the same."};
    overlays.OverlayData[static_cast<std::size_t>(overlays.OverlayCount)] = trial;
    ++overlays.OverlayCount;
    return {};
}

void ClearOverlays(OverlaySet& overlays) {
    overlays.OverlayCount = 0;
}

Result<TrialData> BuildPlotData(const OverlaySet& overlays, int channel, bool average, bool rectify) {
    const auto trials = std::span(overlays.OverlayData).first(static_cast<std::size_t>(overlays.OverlayCount));
    if (auto checked = checkShapes(trials, channel); !checked) return checked.error();

    const bool single = !average && std::ranges::all_of(trials, [](const TrialPtr& trial) {
        return trial->samples->elementType() == ElementType::Float32;
    });
    const int rows = average ? 1 : overlays.OverlayCount;
    Result<TrialArray> built = TrialArray::allocate(single ? ElementType::Float32 : ElementType::Float64,
                                                    rows == 1 ? 1 : 2, rows, trials.front()->samples->samples());
    if (!built) return built.error();
    if (average)
        averageInto(built.value().doubles(0), trials, channel);
    else if (single)
        copyRows<float>(built.value(), trials, channel);
    else
        copyRows<double>(built.value(), trials, channel);
    if (rectify && single) rectifyRows<float>(built.value());
    if (rectify && !single) rectifyRows<double>(built.value());
    return TrialData(std::make_shared<const TrialArray>(std::move(built).value()));
}

} // namespace tavex2
