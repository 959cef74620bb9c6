#include "acquisition/Sound.h"

#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace tavex2::test {
namespace {

std::uint32_t number(const std::string& bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= std::uint32_t{static_cast<unsigned char>(bytes[offset + i])} << (8 * i);
    return value;
}

TEST(WriteToneTest, WritesOneSecondOf500HertzWithItsHeader) {
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteTone(folder / "tone.wav", 500.0, 1.0));
    const std::string bytes = bytesOf(folder / "tone.wav");
    ASSERT_EQ(bytes.size(), 11069U);
    const char header[] =
        "RIFF\x35\x2B\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x11\x2B\0\0\x11\x2B\0\0\x01\0\x08\0data\x11\x2B\0\0";
    EXPECT_EQ(bytes.substr(0, 44), std::string(header, 44));
    EXPECT_EQ(number(bytes, 4), 11061U);
    std::vector<int> first;
    for (std::size_t i = 44; i < 50; ++i)
        first.push_back(static_cast<unsigned char>(bytes[i]));
    EXPECT_THAT(first, testing::ElementsAre(128, 146, 163, 176, 186, 191));
    for (std::size_t i = 44; i < bytes.size(); ++i) {
        EXPECT_GE(static_cast<unsigned char>(bytes[i]), 64);
        EXPECT_LE(static_cast<unsigned char>(bytes[i]), 192);
    }
}

TEST(WriteToneTest, ALongHighToneHasThePhaseOfAPiOfEightDecimals) {
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteTone(folder / "tone.wav", 3000.0, 5.0));
    const std::string bytes = bytesOf(folder / "tone.wav");
    ASSERT_EQ(bytes.size(), 44U + 55125U);
    const auto differences = [&](double pi) {
        const double radiansPerSample = 3000.0 / 11025 * 2 * pi;
        int count = 0;
        for (std::size_t i = 0; i < 55125; ++i) {
            const auto expected = static_cast<int>(
                std::nearbyint(std::sin(static_cast<double>(i) * radiansPerSample) * 64 + 128)); // halves to even
            if (static_cast<unsigned char>(bytes[44 + i]) != expected) ++count;
        }
        return count;
    };
    EXPECT_EQ(differences(3.14159265), 0);
    EXPECT_GT(differences(std::numbers::pi), 0) << "the bytes tell one from the other";
}

TEST(WriteToneTest, ADurationOfZeroIsAHeaderAlone) {
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteTone(folder / "tone.wav", 500.0, 0.0));
    const std::string bytes = bytesOf(folder / "tone.wav");
    EXPECT_EQ(bytes.size(), 44U);
    EXPECT_EQ(number(bytes, 40), 0U);
}

TEST(WriteToneTest, AShorterToneLeavesTheTailOfTheLongerOne) {
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteTone(folder / "tone.wav", 500.0, 1.0));
    const std::string before = bytesOf(folder / "tone.wav");
    ASSERT_TRUE(WriteTone(folder / "tone.wav", 1000.0, 0.1));
    const std::string after = bytesOf(folder / "tone.wav");
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(number(after, 40), 1102U); // 1102.5 halves to even
    EXPECT_EQ(after.substr(44 + 1102), before.substr(44 + 1102));
    EXPECT_NE(after.substr(44, 1102), before.substr(44, 1102));
}

TEST(WriteToneTest, SaysWhereItCouldNotWrite) {
    const TemporaryFolder folder;
    const Result<void> result = WriteTone(folder / "missing" / "tone.wav", 500.0, 1.0);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, ErrorKind::NotFound);
    EXPECT_THAT(result.error().text, testing::HasSubstr("missing"));
}

} // namespace
} // namespace tavex2::test
