#include "analysis/ReadingsText.h"

#include "base/Decimal.h"
#include "base/Windows1252.h"

#include <cmath>
#include <initializer_list>
#include <string_view>

namespace tavex2 {

namespace {

std::string row(std::initializer_list<std::string_view> cells) {
    std::string text;
    for (const std::string_view cell : cells) {
        if (!text.empty()) text += '\t';
        text += cell;
    }
    return text + '\n';
}

/// A gap in the data has no number.
std::string numberText(double value, int decimals) {
    return std::isnan(value) ? "no number" : fixedDecimal(value, decimals);
}

} // namespace

std::string voltText(double volts) {
    return numberText(volts, 4);
}

ReadingTexts textsOf(double cursor1, double cursor2, const std::optional<Readings>& readings) {
    ReadingTexts texts;
    texts.cursor1 = fixedDecimal(cursor1, 4);
    texts.cursor2 = fixedDecimal(cursor2, 4);
    texts.interval = fixedDecimal(std::abs(cursor2 - cursor1), 4);
    if (readings) {
        texts.integral = numberText(readings->Integral, 7);
        texts.minimum = voltText(readings->Minimum);
        texts.maximum = voltText(readings->Maximum);
        texts.peakToPeak = voltText(readings->peakToPeak());
    }
    return texts;
}

ReadingsLine readingsLine(const std::string& trial, const LmbHeader& header, int channel, const ReadingTexts& texts) {
    return {.trial = trial,
            .channel = utf8FromWindows1252(labelOf(header, channel)),
            .unit = utf8FromWindows1252(channelUnitOf(header, channel)),
            .texts = texts};
}

std::string readingsTable(const std::vector<ReadingsLine>& lines) {
    std::string table = row({"Trial", "Channel", "Unit", "Cursor 1 (s)", "Cursor 2 (s)", "Interval (s)", "Minimum (V)",
                             "Maximum (V)", "Peak-to-Peak (V)", "Integral (V s)"});
    for (const ReadingsLine& line : lines)
        table += row({line.trial, line.channel, line.unit, line.texts.cursor1, line.texts.cursor2, line.texts.interval,
                      line.texts.minimum, line.texts.maximum, line.texts.peakToPeak, line.texts.integral});
    return table;
}

} // namespace tavex2
