#include "acquisition/AcqFields.h"

#include "base/PlainText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <optional>
#include <type_traits>

namespace tavex2 {

namespace {

/// Fields that the program computes itself.
constexpr std::array<std::string_view, 3> derivedFields{"NumChannels", "NumSamples", "SoundAvailable"};

template <class T>
concept Number = (std::integral<T> || std::floating_point<T>)&&!std::same_as<T, bool>;

std::string number(double value) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
    return {buffer.data(), end.ptr};
}

/// Says what the field takes, e.g. "Rate must be a whole number from 1 to 100000 Hz".
template <class T>
Error outOfRange(std::string_view name, const FieldRange& range, std::string_view given) {
    std::string text(name);
    text += std::is_integral_v<T> ? " must be a whole number from " : " must be a number from ";
    text += number(range.lowest) + " to " + number(range.highest);
    if (!range.unit.empty()) text += " " + std::string(range.unit);
    return {ErrorKind::InvalidValue, text + ", not \"" + std::string(given) + "\"."};
}

template <Number T>
Result<void> parseNumber(std::string_view name, T& field, const FieldRange& range, std::string_view text) {
    const std::string_view digits = withoutBlanks(text);
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool whole = !std::integral<T> || value == std::floor(value);
    if (error != std::errc{} || end != digits.data() + digits.size() || !whole ||
        !(value >= range.lowest && value <= range.highest))
        return outOfRange<T>(name, range, text);
    field = static_cast<T>(value);
    return {};
}

template <Number T>
Result<void> assign(std::string_view name, T& field, const FieldRange& range, std::string_view text) {
    return parseNumber(name, field, range, text);
}

Result<void> assign(std::string_view name, Bool16& field, const FieldRange&, std::string_view text) {
    const std::string lower = lowerCase(std::string(withoutBlanks(text)));
    if (lower == "true" || lower == "yes" || lower == "1" || lower == "-1")
        field = true;
    else if (lower == "false" || lower == "no" || lower == "0")
        field = false;
    else
        return Error{ErrorKind::InvalidValue,
                     std::string(name) + " must be True or False, not \"" + std::string(text) + "\"."};
    return {};
}

Result<void> assign(std::string_view name, std::array<std::int16_t, 8>& field, const FieldRange& range,
                    std::string_view text) {
    std::array<std::int16_t, 8> values = field;
    std::size_t count = 0;
    for (std::size_t start = 0; start <= text.size(); ++count) {
        const std::size_t comma = std::min(text.find(',', start), text.size());
        if (count == values.size())
            return Error{ErrorKind::InvalidValue, std::string(name) + " takes at most 8 values, one a line."};
        if (auto result = parseNumber(name, values[count], range, text.substr(start, comma - start)); !result)
            return result;
        start = comma + 1;
    }
    field = values;
    return {};
}

Result<void> usableInFileNames(std::string_view name, std::string_view text) {
    if (text.find_first_of("/\\:*?\"<>|") == std::string_view::npos) return {};
    return Error{ErrorKind::InvalidValue,
                 std::string(name) + " becomes part of file names and cannot contain any of / \\ : * ? \" < > |."};
}

Result<void> assign(std::string_view name, std::string& field, const FieldRange& range, std::string_view text) {
    if (range.highest > range.lowest) { // text of a channel number
        std::int16_t channel = 0;
        if (auto result = parseNumber(name, channel, range, text); !result) return result;
        field = std::to_string(channel);
        return {};
    }
    if (auto result = usableInFileNames(name, text); !result) return result;
    field = text;
    return {};
}

template <std::size_t N>
Result<void> assign(std::string_view name, FixedText<N>& field, const FieldRange&, std::string_view text) {
    const std::string_view trimmed = withoutBlanks(text);
    if (trimmed.size() > N)
        return Error{ErrorKind::InvalidValue, std::string(name) + " holds " + std::to_string(N) + " characters and \"" +
                                                  std::string(trimmed) + "\" would be cut after \"" +
                                                  std::string(trimmed.substr(0, N)) +
                                                  "\". Shorten it, for example with ranges such as 0:7."};
    field.assign(trimmed);
    return {};
}

template <Number T>
Result<void> inRange(std::string_view name, T field, const FieldRange& range) {
    // A float32 field compares with the float32 nearest to the limit, so that the limit itself is allowed.
    if (field >= static_cast<T>(range.lowest) && field <= static_cast<T>(range.highest)) return {};
    return outOfRange<T>(name, range, number(static_cast<double>(field)));
}

Result<void> inRange(std::string_view name, const std::array<std::int16_t, 8>& field, const FieldRange& range) {
    for (const std::int16_t each : field)
        if (auto result = inRange(name, each, range); !result) return result;
    return {};
}

template <class T>
requires(!Number<T>) Result<void> inRange(std::string_view, const T&, const FieldRange&) {
    return {};
}

} // namespace

std::vector<std::string> fieldNames() {
    std::vector<std::string> names;
    const AcqSettings settings;
    forEachField(settings, [&](std::string_view name, const auto&, const FieldRange&) { names.emplace_back(name); });
    return names;
}

FieldRange rangeOf(std::string_view name) {
    FieldRange found;
    const AcqSettings settings;
    forEachField(settings, [&](std::string_view each, const auto&, const FieldRange& range) {
        if (each == name) found = range;
    });
    return found;
}

Result<void> setField(AcqSettings& settings, std::string_view name, std::string_view text) {
    if (std::ranges::find(derivedFields, name) != derivedFields.end())
        return Error{ErrorKind::InvalidValue, std::string(name) + " is worked out by the program and cannot be set."};
    std::optional<Result<void>> result;
    forEachField(settings, [&](std::string_view each, auto& field, const FieldRange& range) {
        if (each == name) result = assign(name, field, range, text);
    });
    if (!result)
        return Error{ErrorKind::NotFound, "There is no setting named \"" + std::string(name) +
                                              "\". The settings are those of the setup, such as Channels, Rate, "
                                              "Duration, Repeat and FilePrefix."};
    return *result;
}

Result<void> checkCollectable(const AcqSettings& settings, bool triggerEnabled) {
    constexpr std::array<std::string_view, 6> sampling{"DIOLatency", "Rate",       "Duration",
                                                       "UpperVolts", "LowerVolts", "Repeat"};
    constexpr std::array<std::string_view, 2> trigger{"TriggerLevel", "Pretrigger"};
    Result<void> result = usableInFileNames("FilePrefix", settings.setup.FilePrefix);
    forEachField(settings, [&](std::string_view name, const auto& field, const FieldRange& range) {
        const bool matters = name == "StartDelay" || std::ranges::find(sampling, name) != sampling.end() ||
                             (triggerEnabled && std::ranges::find(trigger, name) != trigger.end());
        if (result && matters) result = inRange(name, field, range);
    });
    return result;
}

} // namespace tavex2
