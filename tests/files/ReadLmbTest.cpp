#include "base/LittleEndian.h"
#include "files/Import.h"
#include "files/LmbLayout.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A small, sound file: 3 channels of 2 samples.
std::string soundFile() {
    return bytesOf(fs::path(TAVEX2_FILE_CASES) / "three_channels_labels_comments" / "expected.lmb");
}

Result<LmbFile> readBytes(const std::string& bytes) {
    std::istringstream in(bytes);
    return readLmb(in, bytes.size(), "some.lmb");
}

template <class T>
std::string with(std::string bytes, std::size_t offset, T value) {
    const auto field = littleEndianBytes(value);
    bytes.replace(offset, field.size(), reinterpret_cast<const char*>(field.data()), field.size());
    return bytes;
}

constexpr std::size_t numChannelsAt = 180;
constexpr std::size_t numSamplesAt = 182;
constexpr std::size_t rateAt = 186;
constexpr std::size_t durationAt = 194;

TEST(ReadLmbTest, GivesEveryRecordOfAFile) {
    const auto read = readBytes(soundFile());
    ASSERT_TRUE(read) << read.error().text;
    const LmbFile& file = read.value();
    EXPECT_EQ(file.header.Title.trimmed(), "Tavex2 analog data file.  Trial 0000  2024-01-01 00.00.00");
    EXPECT_EQ(file.header.NumChannels, 3);
    EXPECT_EQ(file.header.NumSamples, 2);
    EXPECT_EQ(file.header.Rate, 3.0);
    EXPECT_EQ(file.header.ChannelOn[3], -1);
    EXPECT_EQ(file.header.ChannelOn[4], 0);
    EXPECT_EQ(file.header.Labels[3].trimmed(), "Channel 02");
    EXPECT_EQ(file.header.Units[1].trimmed(), "\xB5V");
    EXPECT_EQ(file.comments[2].trimmed(), std::string(61, 'x'));
    EXPECT_THAT(file.samples.floats(0), testing::ElementsAre(1.0F, 2.0F));
    EXPECT_THAT(file.samples.floats(2), testing::ElementsAre(5.0F, 6.0F));
}

TEST(ReadLmbTest, TakesTheVersionFromTheIdentification) {
    const auto read = readLmbFile(fs::path(TAVEX2_FILE_CASES) / "opened_and_saved" / "loaded.lmb");
    ASSERT_TRUE(read) << read.error().text;
    EXPECT_EQ(read.value().versionMajor, 1);
    EXPECT_DOUBLE_EQ(read.value().versionMinor, 0.7);
    std::string unnumbered = soundFile();
    unnumbered.replace(30, 4, "x.yz");
    EXPECT_EQ(readBytes(unnumbered).value().versionMajor, 0);
}

TEST(ReadLmbTest, IgnoresWhatFollowsTheLastChannel) {
    EXPECT_EQ(readBytes(soundFile() + "more").value().samples.at(2, 1), 6.0);
}

TEST(ReadLmbTest, RefusesAFileOfAnotherKind) {
    for (const std::string& bytes : {std::string("RIFF and so on"), std::string(5000, '\0'), std::string("Lumidor")}) {
        const auto read = readBytes(bytes);
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().kind, ErrorKind::BadFormat);
        EXPECT_THAT(read.error().text, HasSubstr("some.lmb is not a Lumidor2 binary file"));
    }
}

TEST(ReadLmbTest, SaysThatAFileIsEmpty) {
    const auto read = readBytes("");
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, ErrorKind::BadFormat);
    EXPECT_THAT(read.error().text, HasSubstr("some.lmb is empty"));
}

TEST(ReadLmbTest, RefusesCountsThatNoTrialHas) {
    for (const int channels : {-32768, -1, 0, 65, 32767}) {
        const auto read = readBytes(with(soundFile(), numChannelsAt, static_cast<std::int16_t>(channels)));
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().kind, ErrorKind::BadFormat);
        EXPECT_THAT(read.error().text, HasSubstr(std::to_string(channels) + " channels"));
    }
    for (const std::int32_t samples : {std::numeric_limits<std::int32_t>::min(), -1, 0})
        EXPECT_THAT(readBytes(with(soundFile(), numSamplesAt, samples)).error().text,
                    HasSubstr(std::to_string(samples) + " samples"));
}

TEST(ReadLmbTest, ComparesCountsWithTheSizeBeforeItTakesMemory) {
    const auto read = readBytes(with(with(soundFile(), numSamplesAt, std::numeric_limits<std::int32_t>::max()),
                                     numChannelsAt, std::int16_t{64}));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, ErrorKind::BadFormat);
    EXPECT_THAT(read.error().text, HasSubstr("cut short"));
}

TEST(ReadLmbTest, RefusesARateOrDurationThatCannotBe) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double rate : {0.0, -1.0, nan, infinity, 1e300})
        EXPECT_THAT(readBytes(with(soundFile(), rateAt, rate)).error().text, HasSubstr("rate"));
    for (const double duration : {-1.0, nan, infinity})
        EXPECT_THAT(readBytes(with(soundFile(), durationAt, duration)).error().text, HasSubstr("duration"));
    EXPECT_TRUE(readBytes(with(soundFile(), rateAt, 999.5)));
}

TEST(ReadLmbTest, RefusesAFileCutAnywhere) {
    const std::string whole = soundFile();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto read = readBytes(whole.substr(0, size));
        ASSERT_FALSE(read) << size;
        ASSERT_EQ(read.error().kind, ErrorKind::BadFormat) << size;
    }
    EXPECT_TRUE(readBytes(whole));
}

TEST(ReadLmbTest, ReportsAFileThatEndsBeforeItsSizeSays) {
    const std::string whole = soundFile();
    for (const std::size_t size : {10U, 1000U, 4380U, 4400U}) {
        std::istringstream in(whole.substr(0, size));
        const auto read = readLmb(in, whole.size(), "some.lmb");
        ASSERT_FALSE(read) << size;
        EXPECT_EQ(read.error().kind, ErrorKind::ReadFailed) << size;
    }
}

TEST(ReadLmbTest, TellsHowFarItIsAndCanBeCancelled) {
    std::istringstream in(soundFile());
    std::vector<std::pair<int, int>> told;
    ASSERT_TRUE(readLmb(in, soundFile().size(), "some.lmb", [&](int done, int of) {
        told.emplace_back(done, of);
        return true;
    }));
    EXPECT_THAT(told, testing::ElementsAre(std::pair(333, 1000), std::pair(666, 1000), std::pair(1000, 1000)));
    in.clear();
    in.seekg(0);
    const auto read = readLmb(in, soundFile().size(), "some.lmb", [](int, int) { return false; });
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, ErrorKind::Cancelled);
}

TEST(ReadLmbFileTest, ReadsAFileLargerThanTwoGigabytes) {
    // A hole of one channel, but for its ends: the file takes no room on the disk.
    constexpr std::int32_t samples = 270'000'000;
    const TemporaryFolder folder;
    const fs::path path = folder / "long.lmb";
    const std::string start = with(with(soundFile(), numChannelsAt, std::int16_t{1}), numSamplesAt, samples);
    std::ofstream(path, std::ios::binary) << start.substr(0, lmbIdentificationBytes + lmbRecordBytes);
    const std::uint64_t whole = lmbFileBytes(1, samples).value();
    ASSERT_GT(whole, std::uint64_t{1} << 31);
    fs::resize_file(path, whole);
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    const auto put = [&](std::uint64_t sample, float volts) {
        const auto bytes = littleEndianBytes(volts);
        file.seekp(static_cast<std::streamoff>(whole - 4 * (samples - sample)));
        file.write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    };
    put(0, 1.5F);
    put(samples - 1, -2.5F);
    file.close();

    int calls = 0;
    const auto read = readLmbFile(path, [&](int, int) { return ++calls > 0; });
    ASSERT_TRUE(read) << read.error().text;
    const auto volts = read.value().samples.floats(0);
    ASSERT_EQ(volts.size(), static_cast<std::size_t>(samples));
    EXPECT_EQ(volts.front(), 1.5F);
    EXPECT_EQ(volts[1], 0.0F);
    EXPECT_EQ(volts.back(), -2.5F);
    EXPECT_GT(calls, 1000) << "one channel, told about many times";
}

TEST(ReadLmbFileTest, SaysWhatStandsInTheWay) {
    const TemporaryFolder folder;
    const auto missing = readLmbFile(folder / "none.lmb");
    EXPECT_EQ(missing.error().kind, ErrorKind::NotFound);
    EXPECT_THAT(missing.error().text, HasSubstr("none.lmb does not exist"));
    EXPECT_EQ(readLmbFile("").error().kind, ErrorKind::NotFound);

    const auto directory = readLmbFile(folder.path());
    EXPECT_EQ(directory.error().kind, ErrorKind::ReadFailed);
    EXPECT_THAT(directory.error().text, HasSubstr("is a folder"));

    std::ofstream(folder / "empty.lmb").flush();
    EXPECT_THAT(readLmbFile(folder / "empty.lmb").error().text, HasSubstr("empty.lmb is empty"));
    EXPECT_EQ(readLmbFile(folder / "empty.lmb" / "b.lmb").error().kind, ErrorKind::NotFound);
}

/// Whatever a damaged file holds, reading it ends in a sound trial or a clear error.
void expectSound(const std::string& bytes) {
    const auto read = readBytes(bytes);
    if (!read) {
        RC_ASSERT(read.error().kind == ErrorKind::BadFormat);
        RC_ASSERT(!read.error().text.empty());
        return;
    }
    const LmbFile& file = read.value();
    RC_ASSERT(file.samples.channels() >= 1 && file.samples.channels() <= mostChannels);
    RC_ASSERT(file.samples.channels() == file.header.NumChannels);
    RC_ASSERT(file.samples.samples() == file.header.NumSamples);
    RC_ASSERT(4U * static_cast<std::size_t>(file.samples.channels()) *
                  static_cast<std::size_t>(file.samples.samples()) <
              bytes.size());
    RC_ASSERT(file.header.Rate > 0 && std::isfinite(file.header.Duration));
}

RC_GTEST_PROP(ReadLmbProperty, DamagedBytesNeverBreakTheReader, ()) {
    std::string bytes = soundFile();
    const auto places = *rc::gen::container<std::vector<std::size_t>>(
        rc::gen::oneOf(rc::gen::inRange<std::size_t>(0, bytes.size()), rc::gen::inRange<std::size_t>(80, 210)));
    for (const std::size_t place : places)
        bytes[place] = *rc::gen::arbitrary<char>();
    bytes.resize(*rc::gen::oneOf(rc::gen::just(bytes.size()), rc::gen::inRange<std::size_t>(0, 2 * bytes.size())));
    expectSound(bytes);
}

RC_GTEST_PROP(ReadLmbProperty, AnyCountsNeverBreakTheReader,
              (std::int16_t channels, std::int32_t samples, double rate)) {
    expectSound(with(with(with(soundFile(), numChannelsAt, channels), numSamplesAt, samples), rateAt, rate));
}

RC_GTEST_PROP(ReadLmbProperty, AnyBytesBehindTheSignatureNeverBreakTheReader, (const std::string& rest)) {
    std::string bytes = "Lumidor2";
    while (bytes.size() < 6000)
        bytes += rest + '\1';
    expectSound(bytes);
}

} // namespace
} // namespace tavex2::test
