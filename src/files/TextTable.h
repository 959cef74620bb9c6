#pragma once

#include "base/DecimalText.h"
#include "base/TrialArray.h"
#include "files/FileProgress.h"
#include "platform/AtomicFile.h"

#include <cstdint>
#include <string_view>

namespace tavex2 {

/// How the rows of a text export look.
struct TableLayout {
    DecimalFormat time;
    DecimalFormat value;
    std::string_view afterTime;
    std::string_view afterValue; ///< after each value, the last of a row included
};

/// Writes one row for each sample of a trial: its time, then each channel's value in volts, then a carriage return and
/// a line feed. The time starts at 0 and is the running sum of 1 / `rateHz` in single precision, rounding included.
/// Numbers are exact, ties away from zero. The rows are made on all cores. Errors: those of AtomicFile, and Cancelled
/// when `progress`, which is told the thousandths done, says so.
Result<void> writeRows(AtomicFile& file, const TrialArray& trial, double rateHz, const TableLayout& layout,
                       const FileProgress& progress);

} // namespace tavex2
