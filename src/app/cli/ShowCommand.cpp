#include "app/cli/ShowCommand.h"

#include "acquisition/AcqFields.h"
#include "acquisition/Protocol.h"
#include "acquisition/SetupFile.h"
#include "app/cli/ConsoleRun.h"
#include "app/cli/TrialFile.h"
#include "base/Decimal.h"
#include "base/FileNames.h"
#include "base/PlainText.h"
#include "base/Windows1252.h"
#include "files/StimulusFile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

namespace tavex2 {

namespace {

using Json = nlohmann::ordered_json;

/// What is not there is no number: a channel may hold nothing that is one.
struct ChannelSummary {
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
    double mean = 0;
};

template <class T>
ChannelSummary summarise(std::span<const T> samples) {
    ChannelSummary summary;
    double sum = 0;
    for (const T sample : samples) {
        const auto volts = static_cast<double>(sample);
        summary.minimum = std::min(summary.minimum, volts);
        summary.maximum = std::max(summary.maximum, volts);
        sum += volts;
    }
    summary.mean = sum / static_cast<double>(samples.size());
    if (summary.minimum > summary.maximum) summary.minimum = summary.maximum = std::numeric_limits<double>::quiet_NaN();
    return summary;
}

ChannelSummary summariseChannel(const TrialArray& samples, int channel) {
    return samples.visitChannel(channel, [](auto volts) { return summarise(volts); });
}

Json channelSummaries(const TrialArray& samples) {
    Json list = Json::array();
    for (int channel = 0; channel < samples.channels(); ++channel) {
        const ChannelSummary summary = summariseChannel(samples, channel);
        list.push_back({{"Minimum", summary.minimum}, {"Maximum", summary.maximum}, {"Mean", summary.mean}});
    }
    return list;
}

/// The slots in use of one of the header's slot arrays: the time column and the channels.
template <class Array, class Convert>
Json slots(const LmbHeader& header, const Array& values, Convert convert) {
    Json list = Json::array();
    for (int slot = 0; slot <= header.NumChannels; ++slot)
        list.push_back(convert(values[static_cast<std::size_t>(slot)]));
    return list;
}

template <std::size_t N>
std::string textOf(const FixedText<N>& text) {
    return utf8FromWindows1252(text.trimmed());
}

/// On one line of a terminal.
std::string shown(std::string_view text) {
    return printable(text, LineBreaks::Escape);
}

/// The header's duration, which the program works with in single precision: 0.05 and not 0.05000000074505806.
double durationOf(const LmbHeader& header) {
    const auto single = static_cast<float>(header.Duration);
    return static_cast<double>(single) == header.Duration ? shortestDouble(single) : header.Duration;
}

Json toJson(const LmbFile& file) {
    const LmbHeader& header = file.header;
    const auto number = [](auto value) { return value; };
    const auto text = [](const auto& value) { return textOf(value); };
    Json json;
    json["Title"] = textOf(header.Title);
    json["NumChannels"] = header.NumChannels;
    json["NumSamples"] = header.NumSamples;
    json["Rate"] = header.Rate;
    json["Duration"] = durationOf(header);
    json["ChannelOn"] = slots(header, header.ChannelOn, number);
    json["ChannelNumber"] = slots(header, header.ChannelNumber, number);
    json["ChannelRate"] = slots(header, header.ChannelRate, number);
    json["ChannelScale"] = slots(header, header.ChannelScale, number);
    json["ChannelOffset"] = slots(header, header.ChannelOffset, number);
    json["ChannelIndexA"] = slots(header, header.ChannelIndexA, number);
    json["ChannelIndexB"] = slots(header, header.ChannelIndexB, number);
    json["Labels"] = slots(header, header.Labels, text);
    json["Units"] = slots(header, header.Units, text);
    json["TrialComments"] = Json::array();
    for (const auto& line : file.comments)
        json["TrialComments"].push_back(textOf(line));
    json["Channels"] = channelSummaries(file.samples);
    return json;
}

std::string cell(double volts) {
    constexpr std::size_t width = 12;
    return rightAligned(std::isnan(volts) ? "no number" : fixedDecimal(volts, 5), width);
}

std::string toText(const LmbFile& file) {
    constexpr std::size_t width = 12;
    const LmbHeader& header = file.header;
    std::string text;
    const auto row = [&](const std::string& name, const std::string& value) {
        text += leftAligned(name, width) + value + '\n';
    };
    row("Title", shown(textOf(header.Title)));
    row("NumChannels", std::to_string(header.NumChannels));
    row("NumSamples", std::to_string(header.NumSamples));
    row("Rate", plainNumber(header.Rate) + " Hz");
    row("Duration", plainNumber(durationOf(header)) + " s");
    for (std::size_t i = 0; i < file.comments.size(); ++i)
        if (const std::string line = shown(textOf(file.comments[i])); !line.empty())
            row("Comment " + std::to_string(i + 1), line);
    text += '\n' + leftAligned("Label", width) + leftAligned("Unit", width) + rightAligned("Minimum", width) +
            rightAligned("Maximum", width) + rightAligned("Mean", width) + '\n';
    for (int channel = 0; channel < file.samples.channels(); ++channel) {
        const auto slot = static_cast<std::size_t>(channel) + 1;
        const ChannelSummary summary = summariseChannel(file.samples, channel);
        text += leftAligned(shown(textOf(header.Labels[slot])), width) +
                leftAligned(shown(textOf(header.Units[slot])), width) + cell(summary.minimum) + cell(summary.maximum) +
                cell(summary.mean) + '\n';
    }
    return text;
}

/// Enters each field of a settings record that it is called with under its name.
auto fieldsInto(Json& json) {
    return [&json](std::string_view name, const auto& field, const FieldRange&) {
        using Field = std::decay_t<decltype(field)>;
        Json& value = json[std::string(name)];
        if constexpr (std::is_same_v<Field, Bool16>)
            value = static_cast<bool>(field);
        else if constexpr (std::is_same_v<Field, FixedText<50>>)
            value = textOf(field);
        else if constexpr (std::is_same_v<Field, float>)
            value = shortestDouble(field);
        else
            value = field;
    };
}

void print(const Json& json, bool asJson, std::ostream& out) {
    // A damaged sample may be no number; JSON has no word for it and gets null.
    if (asJson) {
        out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
        return;
    }
    std::size_t width = 18;
    for (const auto& [name, value] : json.items())
        width = std::max(width, name.size() + 2);
    for (const auto& [name, value] : json.items())
        out << leftAligned(name, width) << (value.is_string() ? shown(value.get<std::string>()) : value.dump()) << '\n';
}

Result<void> showSetup(const ShowRequest& request, std::ostream& out, std::ostream& err) {
    ProgramState state;
    if (auto read = readSetupFile(request.file, state.settings); !read) return read;
    const OwnSettings own = ownSettings(state);
    if (const auto read = readOwnSettings(request.file, own); !read)
        err << "tavex2: " << oneLine(read.error().text) << '\n';
    Json json;
    forEachField(state.settings, fieldsInto(json));
    for (const OwnSetting& setting : own)
        std::visit([&](const auto* value) { json[std::string(setting.name)] = *value; }, setting.value);
    print(json, request.json, out);
    return {};
}

Result<void> showStimulus(const ShowRequest& request, std::ostream& out) {
    const Result<StimulusFile> file = readPlvFile(request.file, untilInterrupted());
    if (!file) return file.error();
    const StimulusFile& trial = file.value();
    Json json;
    // The settings may claim another shape than the data have.
    json["NumChannels"] = trial.samples.channels();
    json["NumSamples"] = trial.samples.samples();
    json["Rate"] = trial.sampling.Rate;
    json["Duration"] = shortestDouble(trial.sampling.Duration);
    forEachSamplingField(trial.sampling, fieldsInto(json["Settings"]));
    json["Channels"] = channelSummaries(trial.samples);
    print(json, request.json, out);
    return {};
}

Result<void> showTrial(const ShowRequest& request, std::ostream& out, std::ostream& err) {
    const Result<LmbFile> file = readLmbOfAnyKind(request.file, err);
    if (!file) return file.error();
    if (request.json)
        print(toJson(file.value()), true, out);
    else
        out << toText(file.value());
    return {};
}

} // namespace

Result<void> showFile(const ShowRequest& request, std::ostream& out, std::ostream& err) {
    const std::string kind = extensionOf(request.file);
    if (kind == ".set") return showSetup(request, out, err);
    if (kind == ".plv") return showStimulus(request, out);
    return showTrial(request, out, err);
}

} // namespace tavex2
