#include "files/TextExport.h"

#include "base/Decimal.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "base/PlainText.h"
#include "base/Windows1252.h"
#include "files/TextTable.h"

#include <algorithm>
#include <span>
#include <string>

namespace tavex2 {

namespace {

/// What the heads of both tables say.
struct Facts {
    int channels = 0;
    std::int64_t samples = 0;
    double rateHz = 0;
    double allRepeatsSeconds = 0; ///< Repeat x Duration, in single precision
};

Result<Facts> factsOf(const TrialArray& trial, const SamplingSettings& taken) {
    if (taken.Rate <= 0) return Error{ErrorKind::InvalidValue, "The trial has no sampling rate."};
    return Facts{.channels = trial.channels(),
                 .samples = trial.samples(),
                 .rateHz = static_cast<double>(taken.Rate),
                 .allRepeatsSeconds = static_cast<double>(static_cast<float>(taken.Repeat) * taken.Duration)};
}

Result<Facts> factsOf(const Trial& trial) {
    if (!trial.hasSamples()) return Error{ErrorKind::InvalidValue, "There is no trial to export."};
    return factsOf(*trial.samples, trial.sampling);
}

std::string tabHead(const Facts& facts, const std::filesystem::path& path) {
    std::string head = "Tavex2 data acquisition file\r\n";
    head += windows1252FromUtf8(pathText(path)) + "\r\n";
    head += "Rate=\t" + rightAligned(fixedDecimal(facts.rateHz, 2), 8) + "\tDuration= \t" +
            rightAligned(fixedDecimal(facts.allRepeatsSeconds, 3), 9) + "\r\n";
    head += "Channel=\t";
    for (int k = 0; k < facts.channels; ++k)
        head += rightAligned(std::to_string(k), 10) + "\t";
    head += "\r\nTime (s)  \t";
    for (int k = 0; k < facts.channels; ++k)
        head += "Chan " + leftAligned(std::to_string(k), 5) + "\t";
    return head + "\r\n";
}

std::string lmaHead(const Facts& facts, const std::string& trialName, const std::string& kind) {
    // The name stands there twice: the sibling program passes over one line.
    const std::string name = "* " + windows1252FromUtf8(trialName) + ".lma\r\n";
    const std::string rate = fixedDecimal(facts.rateHz, 2);
    std::string head = name + name + "* Tavex2 data acquisition " + kind + "\r\n";
    head += "* " + rightAligned(rate, 8) + " " + rightAligned(fixedDecimal(facts.allRepeatsSeconds, 3), 9) + "\r\n";
    head += "*        0 " + rightAligned(std::to_string(facts.samples), 9) + "\r\n";
    head += "* Channel:";
    for (int c = 0; c < facts.channels; ++c)
        head += rightAligned(std::to_string(c), 10);
    head += "\r\n* Time    ";
    for (int c = 0; c < facts.channels; ++c)
        head += "Chan " + leftAligned(std::to_string(c), 5);
    head += "\r\n*" + rightAligned(rate, 9);
    for (int c = 0; c < facts.channels; ++c)
        head += " " + rightAligned(fixedDecimal(facts.rateHz, 3), 9);
    return head + "\r\n";
}

constexpr DecimalFormat lmaColumn{.decimals = 4, .width = 10};
constexpr TableLayout lmaLayout{.time = lmaColumn, .value = lmaColumn, .afterTime = "", .afterValue = ""};

/// The overlays' average, summed up in single precision and in their order, on which its last digits depend.
Result<TrialArray> averageOf(const OverlaySet& overlays, const SamplingSettings& sampling) {
    const auto trials = std::span(overlays.OverlayData).first(static_cast<std::size_t>(overlays.OverlayCount));
    if (trials.empty()) return Error{ErrorKind::InvalidValue, "No trial has been overlaid yet."};
    if (sampling.NumChannels == 1)
        return Error{ErrorKind::InvalidValue, "Overlaid trials of one channel cannot be exported to this table, which "
                                              "needs channels and samples. Export the trials one by one instead."};
    for (const TrialPtr& trial : trials)
        if (!SettingsCompatible(sampling, overlays.OverlaySettings) ||
            trial->samples->channels() != sampling.NumChannels || trial->samples->samples() != sampling.NumSamples)
            return Error{ErrorKind::InvalidValue,
                         "The overlaid trials were taken with other settings than the current ones. Open one of them "
                         "again and export then, or clear the overlay."};

    Result<TrialArray> average =
        TrialArray::allocate(ElementType::Float32, 2, sampling.NumChannels, sampling.NumSamples);
    if (!average) return average;
    for (int channel = 0; channel < average.value().channels(); ++channel) {
        const std::span<float> means = average.value().floats(channel);
        std::ranges::fill(means, 0.0F);
        for (const TrialPtr& trial : trials)
            trial->samples->visitChannel(channel, [means](auto samples) {
                for (std::size_t i = 0; i < means.size(); ++i)
                    means[i] = static_cast<float>(static_cast<double>(means[i]) + static_cast<double>(samples[i]));
            });
        for (float& mean : means)
            mean /= static_cast<float>(trials.size());
    }
    return average;
}

Result<void> writeTable(const std::filesystem::path& path, const std::string& head, const TrialArray& trial,
                        const Facts& facts, const TableLayout& layout, const WriteOptions& options) {
    Result<AtomicFile> file = AtomicFile::create(path, options.ifExists);
    if (!file) return file.error();
    if (auto written = file.value().write(std::as_bytes(std::span(head))); !written) return written;
    if (auto written = writeRows(file.value(), trial, facts.rateHz, layout, options.progress); !written) return written;
    return file.value().commit();
}

} // namespace

Result<void> WriteTab(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options) {
    const Result<Facts> facts = factsOf(trial);
    if (!facts) return facts.error();
    // The one value of a one-channel row has nothing behind it.
    const TableLayout layout{.time = {.decimals = 6},
                             .value = {.decimals = 5},
                             .afterTime = "\t",
                             .afterValue = facts.value().channels > 1 ? "\t" : ""};
    return writeTable(path, tabHead(facts.value(), wholePath(path)), *trial.samples, facts.value(), layout, options);
}

Result<void> WriteLma(const std::filesystem::path& path, const Trial& trial, const WriteOptions& options) {
    const Result<Facts> facts = factsOf(trial);
    if (!facts) return facts.error();
    return writeTable(path, lmaHead(facts.value(), trial.name, "file"), *trial.samples, facts.value(), lmaLayout,
                      options);
}

Result<void> WriteOverlayLma(const std::filesystem::path& path, const OverlaySet& overlays,
                             const SamplingSettings& current, const std::string& trialName,
                             const WriteOptions& options) {
    const Result<TrialArray> average = averageOf(overlays, current);
    if (!average) return average.error();
    const Result<Facts> facts = factsOf(average.value(), current);
    if (!facts) return facts.error();
    return writeTable(path, lmaHead(facts.value(), trialName, "overlay file"), average.value(), facts.value(),
                      lmaLayout, options);
}

} // namespace tavex2
