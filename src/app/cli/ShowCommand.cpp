#include "app/cli/ShowCommand.h"

#include "acquisition/AcqFields.h"
#include "acquisition/SetupFile.h"
#include "base/Windows1252.h"
#include "files/Import.h"

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

ChannelSummary summarise(std::span<const float> samples) {
    ChannelSummary summary;
    double sum = 0;
    for (const float sample : samples) {
        const auto volts = static_cast<double>(sample);
        summary.minimum = std::min(summary.minimum, volts);
        summary.maximum = std::max(summary.maximum, volts);
        sum += volts;
    }
    summary.mean = sum / static_cast<double>(samples.size());
    return summary;
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
    json["Channels"] = Json::array();
    for (int channel = 0; channel < file.samples.channels(); ++channel) {
        const ChannelSummary summary = summarise(file.samples.floats(channel));
        json["Channels"].push_back(
            {{"Minimum", summary.minimum}, {"Maximum", summary.maximum}, {"Mean", summary.mean}});
    }
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
        const ChannelSummary summary = summarise(file.samples.floats(channel));
        out << std::left << std::setw(12) << shown(header.Labels[slot]) << std::setw(12) << shown(header.Units[slot])
            << std::right << std::setw(12) << summary.minimum << std::setw(12) << summary.maximum << std::setw(12)
            << summary.mean << '\n';
    }
    return out.str();
}

/// The fields of a setup, group after group in one object.
Json toJson(const AcqSettings& settings) {
    Json json;
    forEachField(settings, [&json](std::string_view name, const auto& field, const FieldRange&) {
        using Field = std::decay_t<decltype(field)>;
        Json& value = json[std::string(name)];
        if constexpr (std::is_same_v<Field, Bool16>)
            value = static_cast<bool>(field);
        else if constexpr (std::is_same_v<Field, FixedText<50>>)
            value = shown(field);
        else
            value = field;
    });
    return json;
}

Result<void> showSetup(const ShowRequest& request, std::ostream& out) {
    AcqSettings settings;
    if (auto read = readSetupFile(request.file, settings); !read) return read;
    const Json json = toJson(settings);
    if (request.json)
        out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    else
        for (const auto& [name, value] : json.items())
            out << std::left << std::setw(18) << name << (value.is_string() ? value.get<std::string>() : value.dump())
                << '\n';
    return {};
}

Result<void> showTrial(const ShowRequest& request, std::ostream& out) {
    const Result<LmbFile> file = readLmbFile(request.file);
    if (!file) return file.error();
    if (request.json)
        // A damaged sample may be no number; JSON has no word for it and gets null.
        out << toJson(file.value()).dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    else
        out << toText(file.value());
    return {};
}

} // namespace

Result<void> showFile(const ShowRequest& request, std::ostream& out) {
    return request.file.extension() == ".set" ? showSetup(request, out) : showTrial(request, out);
}

} // namespace tavex2
