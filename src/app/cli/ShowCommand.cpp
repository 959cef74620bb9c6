#include "app/cli/ShowCommand.h"

#include "acquisition/AcqFields.h"
#include "acquisition/SetupFile.h"
#include "base/FileNames.h"
#include "base/Windows1252.h"
#include "files/Import.h"
#include "files/StimulusFile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>

namespace tavex2 {

namespace {

using Json = nlohmann::ordered_json;

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
std::string shown(const FixedText<N>& text) {
    return utf8FromWindows1252(text.trimmed());
}

Json toJson(const LmbFile& file) {
    const LmbHeader& header = file.header;
    const auto number = [](auto value) { return value; };
    const auto text = [](const auto& value) { return shown(value); };
    Json json;
    json["Title"] = shown(header.Title);
    json["NumChannels"] = header.NumChannels;
    json["NumSamples"] = header.NumSamples;
    json["Rate"] = header.Rate;
    json["Duration"] = header.Duration;
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
        json["TrialComments"].push_back(shown(line));
    json["Channels"] = channelSummaries(file.samples);
    return json;
}

std::string toText(const LmbFile& file) {
    std::ostringstream out;
    const LmbHeader& header = file.header;
    out << "Title       " << shown(header.Title) << '\n'
        << "NumChannels " << header.NumChannels << '\n'
        << "NumSamples  " << header.NumSamples << '\n'
        << "Rate        " << header.Rate << " Hz\n"
        << "Duration    " << header.Duration << " s\n";
    for (std::size_t i = 0; i < file.comments.size(); ++i)
        if (const std::string line = shown(file.comments[i]); !line.empty())
            out << "Comment " << i + 1 << "   " << line << '\n';
    out << '\n'
        << std::left << std::setw(12) << "Label" << std::setw(12) << "Unit" << std::right << std::setw(12) << "Minimum"
        << std::setw(12) << "Maximum" << std::setw(12) << "Mean" << '\n'
        << std::fixed << std::setprecision(5);
    for (int channel = 0; channel < file.samples.channels(); ++channel) {
        const auto slot = static_cast<std::size_t>(channel) + 1;
        const ChannelSummary summary = summariseChannel(file.samples, channel);
        out << std::left << std::setw(12) << shown(header.Labels[slot]) << std::setw(12) << shown(header.Units[slot])
            << std::right << std::setw(12) << summary.minimum << std::setw(12) << summary.maximum << std::setw(12)
            << summary.mean << '\n';
    }
    return out.str();
}

/// Enters each field of a settings record that it is called with under its name.
auto fieldsInto(Json& json) {
    return [&json](std::string_view name, const auto& field, const FieldRange&) {
        using Field = std::decay_t<decltype(field)>;
        Json& value = json[std::string(name)];
        if constexpr (std::is_same_v<Field, Bool16>)
            value = static_cast<bool>(field);
        else if constexpr (std::is_same_v<Field, FixedText<50>>)
            value = shown(field);
        else
            value = field;
    };
}

void print(const Json& json, bool asJson, std::ostream& out) {
    // A damaged sample may be no number; JSON has no word for it and gets null.
    if (asJson)
        out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    else
        for (const auto& [name, value] : json.items())
            out << std::left << std::setw(18) << name << (value.is_string() ? value.get<std::string>() : value.dump())
                << '\n';
}

Result<void> showSetup(const ShowRequest& request, std::ostream& out) {
    AcqSettings settings;
    if (auto read = readSetupFile(request.file, settings); !read) return read;
    Json json;
    forEachField(settings, fieldsInto(json));
    print(json, request.json, out);
    return {};
}

Result<void> showStimulus(const ShowRequest& request, std::ostream& out) {
    const Result<StimulusFile> file = readPlvFile(request.file);
    if (!file) return file.error();
    const StimulusFile& trial = file.value();
    Json json;
    // The settings may claim another shape than the data have.
    json["NumChannels"] = trial.samples.channels();
    json["NumSamples"] = trial.samples.samples();
    json["Rate"] = trial.sampling.Rate;
    json["Duration"] = trial.sampling.Duration;
    forEachSamplingField(trial.sampling, fieldsInto(json["Settings"]));
    json["Channels"] = channelSummaries(trial.samples);
    print(json, request.json, out);
    return {};
}

Result<void> showTrial(const ShowRequest& request, std::ostream& out) {
    const Result<LmbFile> file = readLmbFile(request.file);
    if (!file) return file.error();
    if (request.json)
        print(toJson(file.value()), true, out);
    else
        out << toText(file.value());
    return {};
}

} // namespace

Result<void> showFile(const ShowRequest& request, std::ostream& out) {
    const std::string kind = extensionOf(request.file);
    if (kind == ".set") return showSetup(request, out);
    if (kind == ".plv") return showStimulus(request, out);
    return showTrial(request, out);
}

} // namespace tavex2
