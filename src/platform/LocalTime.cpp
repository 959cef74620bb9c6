#include "platform/LocalTime.h"

#include <ctime>

namespace tavex2 {

LocalTime localTimeNow() {
    const std::time_t now = std::time(nullptr);
    const std::tm parts = *std::localtime(&now);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

} // namespace tavex2
