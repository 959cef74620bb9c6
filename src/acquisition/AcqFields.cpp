#include "acquisition/AcqFields.h"

#include "base/BooleanText.h"
#include "base/Decimal.h"
#include "base/PlainText.h"
#include "platform/ChannelList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>
#include <utility>

namespace tavex2 {

namespace {

/// Fields that the program computes itself.
constexpr std::array<std::string_view, 3> derivedFields{"NumChannels", "NumSamples", "SoundAvailable"};

template <class T>
concept Number = (std::integral<T> || std::floating_point<T>)&&!std::same_as<T, bool>;

/// What is wrong with a value, to stand behind the name of its field; none when nothing is.
using Problem = std::optional<std::string>;

/// A number as the field holds it: a single-precision 12.1 is not 12.1000003815.
template <Number T>
std::string number(T value) {
    if constexpr (std::same_as<T, float>)
        return std::isfinite(value) ? plainNumber(shortestDouble(value))
                                    : generalDecimal(static_cast<double>(value), 1);
    else
        return plainNumber(static_cast<double>(value));
}

std::string quoted(std::string_view text) {
    return '"' + printable(text, LineBreaks::Escape) + '"';
}

/// Says what the field takes, e.g. "must be a whole number from 1 to 100000 Hz".
template <class T>
std::string outOfRange(const FieldRange& range, std::string_view given) {
    std::string text = std::is_integral_v<T> ? "must be a whole number from " : "must be a number from ";
    text += plainNumber(range.lowest) + " to " + plainNumber(range.highest);
    if (!range.unit.empty()) text += " " + std::string(range.unit);
    return text + ", not " + quoted(given) + ".";
}

// Taking a text over --------------------------------------------------------------------------------------------------

template <Number T>
Problem assign(T& field, const FieldRange& range, std::string_view text) {
    const std::string_view digits = withoutBlanks(text);
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool whole = !std::integral<T> || value == std::floor(value);
    if (error != std::errc{} || end != digits.data() + digits.size() || !whole ||
        !(value >= range.lowest && value <= range.highest))
        return outOfRange<T>(range, text);
    field = static_cast<T>(value);
    return {};
}

Problem assign(Bool16& field, const FieldRange& range, std::string_view text) {
    bool value = false;
    if (Problem problem = takeValue(value, range, text)) return problem;
    field = value;
    return {};
}

Problem assign(std::array<std::int16_t, 8>& field, const FieldRange& range, std::string_view text) {
    std::array<std::int16_t, 8> values = field;
    std::size_t count = 0;
    for (std::size_t start = 0; start <= text.size(); ++count) {
        const std::size_t comma = std::min(text.find(',', start), text.size());
        if (count == values.size()) return "takes at most 8 values, one a line.";
        if (Problem problem = assign(values[count], range, text.substr(start, comma - start))) return problem;
        start = comma + 1;
    }
    field = values;
    return {};
}

Problem controlsIn(std::string_view text) {
    if (!hasControlCharacters(text)) return {};
    return "cannot hold control characters, as " + quoted(text) + " does.";
}

Problem unusableInFileNames(std::string_view text) {
    if (Problem problem = controlsIn(text)) return problem;
    if (text.find_first_of("/\\:*?\"<>|") == std::string_view::npos) return {};
    return "becomes part of file names and cannot contain any of / \\ : * ? \" < > |.";
}

Problem assign(std::string& field, const FieldRange& range, std::string_view text) {
    if (range.highest > range.lowest) { // text of a channel number
        std::int16_t channel = 0;
        if (Problem problem = assign(channel, range, text)) return problem;
        field = std::to_string(channel);
        return {};
    }
    if (Problem problem = unusableInFileNames(text)) return problem;
    field = text;
    return {};
}

template <std::size_t N>
Problem assign(FixedText<N>& field, const FieldRange&, std::string_view text) {
    const std::string_view trimmed = withoutBlanks(text);
    if (Problem problem = controlsIn(trimmed)) return problem;
    if (trimmed.size() > N)
        return "holds " + std::to_string(N) + " characters and " + quoted(trimmed) + " would be cut after " +
               quoted(trimmed.substr(0, N)) + ". Shorten it, for example with ranges such as 0:7.";
    field.assign(trimmed);
    return {};
}

// Looking at what is there --------------------------------------------------------------------------------------------

template <Number T>
Problem unfit(T field, const FieldRange& range) {
    // A float32 field compares with the float32 nearest to the limit, so that the limit itself is allowed.
    if (field >= static_cast<T>(range.lowest) && field <= static_cast<T>(range.highest)) return {};
    return outOfRange<T>(range, number(field));
}

Problem unfit(const std::array<std::int16_t, 8>& field, const FieldRange& range) {
    for (const std::int16_t each : field)
        if (Problem problem = unfit(each, range)) return problem;
    return {};
}

/// The board knows what else is wrong with a text.
Problem unfit(const std::string& field, const FieldRange&) {
    return controlsIn(field);
}

std::string_view lastItem(std::string_view list) {
    return list.substr(list.rfind(',') + 1); // npos + 1 is 0
}

/// Whether the field is used up, so that a longer text would have been cut.
bool full(const FixedText<50>& text) {
    return text.bytes().back() != ' ' && text.trimmed().size() == text.bytes().size();
}

Problem unfit(const FixedText<50>& field, const FieldRange&) {
    const std::string list = field.trimmed();
    if (Problem problem = controlsIn(list)) return problem;
    const std::string_view last = lastItem(list);
    if (!full(field) || parseChannelList(last, std::numeric_limits<int>::max())) return {};
    return "fills its 50 characters and was cut in " + quoted(last) +
           ". Enter the list anew, shorter, for example with ranges such as 0:7.";
}

Problem unfit(Bool16, const FieldRange&) {
    return {};
}

} // namespace

FieldRange rangeOf(std::string_view name) {
    FieldRange found;
    const AcqSettings settings;
    forEachField(settings, [&](std::string_view each, const auto&, const FieldRange& range) {
        if (each == name) found = range;
    });
    return found;
}

std::optional<std::string> takeValue(bool& field, const FieldRange&, std::string_view text) {
    const std::optional<bool> value = booleanOf(text);
    if (!value) return "must be True or False, not " + quoted(text) + ".";
    field = *value;
    return {};
}

std::optional<std::string> takeValue(double& field, const FieldRange& range, std::string_view text) {
    return assign(field, range, text);
}

Result<void> setField(AcqSettings& settings, std::string_view name, std::string_view text) {
    if (std::ranges::find(derivedFields, name) != derivedFields.end())
        return Error{ErrorKind::InvalidValue, std::string(name) + " is worked out by the program and cannot be set."};
    bool found = false;
    Problem problem;
    forEachField(settings, [&](std::string_view each, auto& field, const FieldRange& range) {
        if (each != name) return;
        found = true;
        problem = assign(field, range, text);
    });
    if (!found)
        return Error{ErrorKind::NotFound, "There is no setting named " + quoted(name) +
                                              ". The settings are those of the setup, such as Channels, Rate, "
                                              "Duration, Repeat and FilePrefix."};
    if (problem) return Error{ErrorKind::InvalidValue, std::string(name) + " " + *problem};
    return {};
}

std::string boxOf(std::string_view field) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 8> labels{{{"StartDelay", "Start delay (s)"},
                                                                                   {"DIOLatency", "Delay"},
                                                                                   {"UpperVolts", "Upper"},
                                                                                   {"LowerVolts", "Lower"},
                                                                                   {"TriggerLevel", "Level"},
                                                                                   {"TriggerChannel", "Channel"},
                                                                                   {"Pretrigger", "Pretrigger %"},
                                                                                   {"FilePrefix", "Filename"}}};
    for (const auto& [each, label] : labels)
        if (each == field) return std::string(label) + ":";
    return std::string(field) + ":"; // the others are called as their field is
}

std::optional<FieldProblem> collectionProblem(const AcqSettings& settings, bool triggerEnabled) {
    constexpr std::array<std::string_view, 8> always{"StartDelay", "DIOLatency", "Channels",   "Rate",
                                                     "Duration",   "UpperVolts", "LowerVolts", "Repeat"};
    constexpr std::array<std::string_view, 3> trigger{"TriggerLevel", "Pretrigger", "TriggerChannel"};
    std::optional<FieldProblem> first;
    const auto note = [&first](std::string_view field, Problem problem) {
        if (problem && !first) first = FieldProblem{field, std::move(*problem)};
    };
    note("FilePrefix", unusableInFileNames(settings.setup.FilePrefix));
    forEachField(settings, [&](std::string_view name, const auto& field, const FieldRange& range) {
        if (std::ranges::find(always, name) != always.end() ||
            (triggerEnabled && std::ranges::find(trigger, name) != trigger.end()))
            note(name, unfit(field, range));
    });
    return first;
}

Result<void> checkCollectable(const AcqSettings& settings, bool triggerEnabled) {
    const std::optional<FieldProblem> problem = collectionProblem(settings, triggerEnabled);
    if (!problem) return {};
    return Error{ErrorKind::InvalidValue, std::string(problem->field) + " " + problem->text};
}

std::string possiblyCutItem(const FixedText<50>& channels) {
    const std::string list = channels.trimmed();
    if (!full(channels) || list.back() < '0' || list.back() > '9') return {};
    return std::string(withoutBlanks(lastItem(list)));
}

} // namespace tavex2
