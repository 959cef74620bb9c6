#pragma once

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

/// The system's local time now.
LocalTime localTimeNow();

} // namespace tavex2
