#include "platform/LocalTime.h"

#include "base/Decimal.h"

#include <cstdlib>
#include <ctime>

namespace tavex2 {

namespace {

LocalTime localTimeAt(std::chrono::system_clock::time_point moment) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    const std::tm parts = *std::localtime(&seconds);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

} // namespace

LocalTime localTimeNow() {
    return localTimeAt(std::chrono::system_clock::now());
}

std::string isoTime(std::chrono::system_clock::time_point moment) {
    using namespace std::chrono;
    const auto whole = floor<seconds>(moment);
    const LocalTime local = localTimeAt(whole);
    const sys_seconds asIfUtc = sys_days{year{local.year} / local.month / local.day} + hours{local.hour} +
                                minutes{local.minute} + seconds{local.second};
    const auto offset = static_cast<int>(duration_cast<minutes>(asIfUtc - whole).count());
    constexpr int minutesOfAnHour = 60;
    return zeroPadded(local.year, 4) + "-" + zeroPadded(local.month, 2) + "-" + zeroPadded(local.day, 2) + "T" +
           zeroPadded(local.hour, 2) + ":" + zeroPadded(local.minute, 2) + ":" + zeroPadded(local.second, 2) + "." +
           zeroPadded(static_cast<int>(floor<milliseconds>(moment - whole).count()), 3) + (offset < 0 ? "-" : "+") +
           zeroPadded(std::abs(offset) / minutesOfAnHour, 2) + ":" + zeroPadded(std::abs(offset) % minutesOfAnHour, 2);
}

} // namespace tavex2
