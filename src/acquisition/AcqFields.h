#pragma once

#include "acquisition/records/AcqSettings.h"
#include "acquisition/records/SamplingBlock.h"
#include "base/Result.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavex2 {

/// The values that a field of AcqSettings may take when a user enters it.
struct FieldRange {
    double lowest = 0;
    double highest = 0;
    std::string_view unit; ///< empty for a plain number
};

/// The range of a sampling setting; an empty one for texts and derived numbers.
constexpr FieldRange samplingRange(std::string_view name) {
    constexpr double int16Max = 32767;
    constexpr std::array<std::pair<std::string_view, FieldRange>, 8> ranges{{
        {"DIOMask", {0, 255, ""}},
        {"DIOLatency", {0, int16Max, "ms"}},
        {"DIOState", {0, 1, ""}},
        {"Rate", {1, 100000, "Hz"}},
        {"Duration", {0.01, 3600, "s"}},
        {"UpperVolts", {-10, 10, "V"}},
        {"LowerVolts", {-10, 10, "V"}},
        {"Repeat", {1, 500, ""}},
    }};
    for (const auto& [each, range] : ranges)
        if (each == name) return range;
    return {};
}

/// Calls `visit(name, field, range)` for every sampling setting in the order of the setup file.
template <class Sampling, class Visit>
void forEachSamplingField(Sampling& sampling, Visit&& visit) {
    forEachSampling(sampling,
                    [&visit](std::string_view name, auto& field) { visit(name, field, samplingRange(name)); });
}

/// Calls `visit(name, field, range)` for every field of the record in the order of the setup file. `Settings` is
/// AcqSettings or const AcqSettings; text and yes/no fields come with an empty range.
template <class Settings, class Visit>
void forEachField(Settings& settings, Visit&& visit) {
    constexpr double int16Max = 32767;
    auto& setup = settings.setup;
    visit("Version", setup.Version, FieldRange{1, 1, ""});
    visit("SaveOffsets", setup.SaveOffsets, FieldRange{});
    visit("PauseToReset", setup.PauseToReset, FieldRange{});
    visit("Autosave", setup.Autosave, FieldRange{});
    visit("SaveType", setup.SaveType, FieldRange{0, 1, ""});
    visit("DisplayAutoScale", setup.DisplayAutoScale, FieldRange{});
    visit("DisplayPreset", setup.DisplayPreset, FieldRange{0, 4, ""});
    visit("DisplayInVolts", setup.DisplayInVolts, FieldRange{});
    visit("DisplayInSeconds", setup.DisplayInSeconds, FieldRange{});
    visit("StartMaximized", setup.StartMaximized, FieldRange{});
    visit("Comments", setup.Comments, FieldRange{});
    visit("Device", setup.Device, FieldRange{1, 10, ""});
    visit("StartDelay", setup.StartDelay, FieldRange{0, 30, "s"});
    visit("TriggerMode", setup.TriggerMode, FieldRange{0, 1, ""});
    visit("TrialNumber", setup.TrialNumber, FieldRange{0, 9999, ""});
    visit("FilePrefix", setup.FilePrefix, FieldRange{});
    forEachSamplingField(settings.sampling, visit);
    auto& trigger = settings.trigger;
    visit("TriggerLevel", trigger.TriggerLevel, FieldRange{-9.8, 9.8, "V"});
    visit("TriggerRising", trigger.TriggerRising, FieldRange{});
    visit("Pretrigger", trigger.Pretrigger, FieldRange{0, 95, "%"});
    visit("TriggerChannel", trigger.TriggerChannel, FieldRange{0, 63, ""});
    visit("RandomSound", trigger.RandomSound, FieldRange{});
    visit("RandomRatio", trigger.RandomRatio, FieldRange{0, int16Max, ""});
    auto& sound = settings.sound;
    visit("SoundBefore", sound.SoundBefore, FieldRange{});
    visit("SoundAvailable", sound.SoundAvailable, FieldRange{});
    visit("SoundFreq", sound.SoundFreq, FieldRange{5, 10000, "Hz"});
    visit("SoundDuration", sound.SoundDuration, FieldRange{0.02, 30, "s"});
    visit("SoundAfter", sound.SoundAfter, FieldRange{});
}

/// The range of a field; an empty one for text, yes/no fields and unknown names.
FieldRange rangeOf(std::string_view name);

/// Sets one field by its name from text, as a user types it: numbers with "." as decimal separator, True/False (also
/// 1/0, yes/no) for yes/no fields, up to eight comma-separated numbers for DIOLatency and DIOState. Errors: NotFound
/// for an unknown name; InvalidValue, naming the field, its range and what was given, for a value that is no such
/// number, lies outside the range, would be cut or holds control characters, and for the fields that the program
/// derives itself.
Result<void> setField(AcqSettings& settings, std::string_view name, std::string_view text);

/// The label of the setup dialog's box for a field, as the user sees it: "Rate:", "Upper:" for UpperVolts.
std::string boxOf(std::string_view field);

/// Takes one value over from text as setField() does. Gives what is wrong with the text, to stand behind the name of
/// the field, which then stays as it was.
std::optional<std::string> takeValue(bool& field, const FieldRange& range, std::string_view text);
std::optional<std::string> takeValue(double& field, const FieldRange& range, std::string_view text);

/// What is wrong with one field: `text` follows the field's name or the caption of its control, as in "Rate must be
/// ...".
struct FieldProblem {
    std::string_view field;
    std::string text;
};

/// The first field that stands in the way of a collection with these settings, which may come from a file; none when a
/// collection can be made. The prefix must be usable in file names, no text may hold control characters, a channel list
/// must not have been cut inside its last range, the sampling fields and the start delay must lie in their ranges, and
/// with `triggerEnabled` the trigger fields too.
std::optional<FieldProblem> collectionProblem(const AcqSettings& settings, bool triggerEnabled);

/// collectionProblem() as an InvalidValue error that names the field.
Result<void> checkCollectable(const AcqSettings& settings, bool triggerEnabled);

/// The last item of a channel list that fills its field to the last character and ends in a digit there: it may have
/// been cut inside that number. Empty for every other list.
std::string possiblyCutItem(const FixedText<50>& channels);

} // namespace tavex2
