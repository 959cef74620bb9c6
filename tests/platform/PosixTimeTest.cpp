#include "platform/LocalTime.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace tavex2::test {
namespace {

/// The time zone of this process for as long as it lives, in the form of the variable TZ.
class ZoneOfTest {
  public:
    explicit ZoneOfTest(const char* zone) {
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ~ZoneOfTest() {
        ::unsetenv("TZ");
        ::tzset();
    }
    ZoneOfTest(const ZoneOfTest&) = delete;
    ZoneOfTest& operator=(const ZoneOfTest&) = delete;
};

TEST(LocalTimeTest, AMomentIsWrittenWithMillisecondsAndTheZonesOffset) {
    const auto moment =
        std::chrono::system_clock::time_point(std::chrono::duration_cast<std::chrono::system_clock::duration>(
            std::chrono::milliseconds(1767225600250))); // 2026-01-01 00:00:00.250 UTC
    const ZoneOfTest utc("UTC0");
    EXPECT_EQ(isoTime(moment), "2026-01-01T00:00:00.250+00:00");
    const ZoneOfTest west("XXX3:30"); // three and a half hours behind
    EXPECT_EQ(isoTime(moment), "2025-12-31T20:30:00.250-03:30");
    const ZoneOfTest east("XXX-5:45");
    EXPECT_EQ(isoTime(moment), "2026-01-01T05:45:00.250+05:45");
}

} // namespace
} // namespace tavex2::test
