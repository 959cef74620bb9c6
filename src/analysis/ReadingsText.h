#pragma once

#include "acquisition/records/LmbHeader.h"
#include "analysis/ChannelMeasures.h"

#include <optional>
#include <string>
#include <vector>

namespace tavex2 {

/// A sample's or reading's volts with four decimals; "no number" for NaN.
std::string voltText(double volts);

/// The texts of a stretch's boxes: seconds and volts with four decimals, the integral with seven, "no number" for NaN;
/// all but the times empty where there are no readings.
struct ReadingTexts {
    std::string cursor1, cursor2, interval, integral, minimum, maximum, peakToPeak;
};

/// `cursor1` and `cursor2` are seconds, in either order.
ReadingTexts textsOf(double cursor1, double cursor2, const std::optional<Readings>& readings);

/// One line of a table of readings; the texts are UTF-8.
struct ReadingsLine {
    std::string trial;
    std::string channel;
    std::string unit;
    ReadingTexts texts;
};

/// The line of a channel, which the header names.
ReadingsLine readingsLine(const std::string& trial, const LmbHeader& header, int channel, const ReadingTexts& texts);

/// A table for spreadsheets: a heading and a line each, separated by tabs.
std::string readingsTable(const std::vector<ReadingsLine>& lines);

} // namespace tavex2
