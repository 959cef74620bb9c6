#pragma once

#include <chrono>
#include <string>

namespace tavex2 {

/// A date and time of day in the user's time zone, 24-hour clock.
struct LocalTime {
    int year = 1970;
    int month = 1; ///< 1..12
    int day = 1;   ///< 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// A moment in the user's time zone as ISO 8601 writes it: "2026-03-01T14:05:09.250+01:00".
std::string isoTime(std::chrono::system_clock::time_point moment);

/// The system's local time now.
LocalTime localTimeNow();

} // namespace tavex2
