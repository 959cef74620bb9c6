#include "acquisition/SetupFile.h"

#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <sstream>

namespace tavex2::test {
namespace {

Result<void> decode(const std::string& bytes, AcqSettings& settings) {
    std::istringstream in(bytes);
    return decodeSetup(in, settings);
}

/// The same file as a program of another version would have written it.
std::string ofVersion(char version, std::string bytes) {
    bytes[0] = version;
    return bytes;
}

/// Settings that differ from the defaults in every field.
AcqSettings unusual() {
    AcqSettings s;
    s.setup = {1, true, true, true, 1, false, 3, false, false, true, true, 7, 20, 1, 1234, "Größe"};
    s.sampling.DIOMask = 5;
    s.sampling.DIOLatency = {1, 2, 3, 4, 5, 6, 7, 8};
    s.sampling.DIOState = {0, 1, 0, 1, 0, 1, 0, 1};
    s.sampling.Channels.assign("3,1,7:9");
    s.sampling.Rate = 100000;
    s.sampling.Duration = 0.5F;
    s.sampling.UpperVolts = 2.5F;
    s.sampling.LowerVolts = -1.25F;
    s.sampling.NumChannels = 5;
    s.sampling.NumSamples = 50001;
    s.sampling.Repeat = 12;
    s.trigger = {-3.5F, false, 25, "63", true, 2};
    s.sound = {true, true, 440.0, 0.25, true};
    return s;
}

TEST(SetupFileTest, HoldsEveryFieldAtItsPlace) {
    const std::string bytes = encodeSetup(unusual());
    const std::string expected(
        "\x01\0\xFF\xFF\xFF\xFF\xFF\xFF\x01\0\0\0\x03\0\0\0\0\0\xFF\xFF\xFF\xFF\x07\0\x14\0\x01\0"
        "\xD2\x04"
        "\x05\0Gr\xF6\xDF"
        "e",
        37);
    EXPECT_EQ(bytes.substr(0, 37), expected);
    std::string sampling("\x05"
                         "\x01\0\x02\0\x03\0\x04\0\x05\0\x06\0\x07\0\x08\0"
                         "\0\0\x01\0\0\0\x01\0\0\0\x01\0\0\0\x01\0",
                         33);
    sampling += "3,1,7:9" + std::string(43, ' ');
    sampling += std::string("\xA0\x86\x01\0\0\0\0\x3F\0\0\x20\x40\0\0\xA0\xBF\x05\0\x51\xC3\0\0\x0C\0", 24);
    EXPECT_EQ(bytes.substr(37, 107), sampling);
    EXPECT_EQ(bytes.substr(144, 14), std::string("\0\0\x60\xC0\0\0\x19\0\x02\0"
                                                 "63\xFF\xFF",
                                                 14));
    EXPECT_EQ(bytes.substr(158, 2), std::string("\x02\0", 2));
    EXPECT_EQ(bytes.substr(160), std::string("\xFF\xFF\xFF\xFF\0\0\0\0\0\x80\x7B\x40\0\0\0\0\0\0\xD0\x3F\xFF\xFF", 22));
}

TEST(SetupFileTest, AnEmptyPrefixAndTriggerChannelZeroAre176Bytes) {
    AcqSettings settings;
    settings.setup.FilePrefix = "";
    EXPECT_EQ(encodeSetup(settings).size(), 176U);
}

TEST(SetupFileTest, ReadsBackWhatItWrote) {
    const TemporaryFolder folder;
    ASSERT_TRUE(writeSetupFile(folder / "a.set", unusual()));
    AcqSettings read;
    ASSERT_TRUE(readSetupFile(folder / "a.set", read));
    EXPECT_TRUE(read == unusual());
    ASSERT_TRUE(writeSetupFile(folder / "a.set", AcqSettings{}));
    EXPECT_EQ(bytesOf(folder / "a.set"), encodeSetup(AcqSettings{})) << "no tail of the longer file";
}

TEST(SetupFileTest, AnotherVersionIsRefusedAfterItsFirstGroupWasTakenOver) {
    AcqSettings settings;
    const auto result = decode(ofVersion(2, encodeSetup(unusual())), settings);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, ErrorKind::WrongVersion);
    SetupOptions other = unusual().setup;
    other.Version = 2;
    EXPECT_TRUE(settings.setup == other);
    EXPECT_TRUE(settings.sampling == AcqSettings{}.sampling);
}

TEST(SetupFileTest, AfterARefusedFileASavedOneCanBeReadAgain) {
    AcqSettings settings;
    ASSERT_EQ(decode(ofVersion(7, encodeSetup(unusual())), settings).error().kind, ErrorKind::WrongVersion);
    const std::string saved = encodeSetup(settings);
    EXPECT_EQ(saved.substr(0, 2), std::string("\x01\0", 2));
    EXPECT_TRUE(decode(saved, settings));
    EXPECT_EQ(settings.setup.Version, 1);
}

TEST(SetupFileTest, AFileTooShortForAVersionIsNotJudgedByTheOneReadBefore) {
    AcqSettings settings;
    ASSERT_EQ(decode(ofVersion(7, encodeSetup(unusual())), settings).error().kind, ErrorKind::WrongVersion);
    EXPECT_EQ(decode("", settings).error().kind, ErrorKind::BadFormat);
    EXPECT_EQ(decode("\x01", settings).error().kind, ErrorKind::BadFormat);
}

TEST(SetupFileTest, AWildPrefixLengthInAnotherVersionIsStillAnotherVersion) {
    std::string bytes = ofVersion(9, encodeSetup(AcqSettings{}));
    bytes[30] = '\xFF';
    bytes[31] = '\xFF';
    AcqSettings settings;
    EXPECT_EQ(decode(bytes, settings).error().kind, ErrorKind::WrongVersion);
    bytes[0] = 1;
    EXPECT_EQ(decode(bytes, settings).error().kind, ErrorKind::BadFormat);
}

TEST(SetupFileTest, WhatWasReadBeforeAFileEndsStays) {
    const std::string bytes = encodeSetup(unusual());
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        AcqSettings settings;
        const auto result = decode(bytes.substr(0, length), settings);
        ASSERT_FALSE(result) << length;
        EXPECT_EQ(result.error().kind, ErrorKind::BadFormat);
        EXPECT_EQ(static_cast<bool>(settings.setup.SaveOffsets), length >= 4);
        EXPECT_EQ(settings.setup.FilePrefix, length >= 37 ? "Größe" : "Trial");
        EXPECT_EQ(settings.sampling.Rate, length >= 124 ? 100000 : 1000);
        EXPECT_EQ(settings.sound.SoundFreq, length >= 172 ? 440.0 : 0.0);
    }
}

TEST(SetupFileTest, SaysWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    AcqSettings settings;
    EXPECT_EQ(readSetupFile(folder / "missing.set", settings).error().kind, ErrorKind::NotFound);
    EXPECT_EQ(readSetupFile(folder.path(), settings).error().kind, ErrorKind::ReadFailed);
    EXPECT_FALSE(writeSetupFile(folder / "missing" / "a.set", settings));
    EXPECT_TRUE(settings == AcqSettings{});
}

AcqSettings anySettings() {
    const auto int16 = [] { return *rc::gen::arbitrary<std::int16_t>(); };
    const auto bool16 = [&] { return Bool16::fromRaw(int16()); };
    const auto float32 = [] { return static_cast<float>(*rc::gen::arbitrary<double>()); };
    const auto text = [] { return *rc::gen::container<std::string>(rc::gen::inRange<char>(' ', '~')); };
    AcqSettings s;
    s.setup = {1,        bool16(), bool16(), bool16(), int16(), bool16(), int16(), bool16(),
               bool16(), bool16(), bool16(), int16(),  int16(), int16(),  int16(), text()};
    s.sampling.DIOMask = *rc::gen::arbitrary<std::uint8_t>();
    for (auto& each : s.sampling.DIOLatency)
        each = int16();
    for (auto& each : s.sampling.DIOState)
        each = int16();
    s.sampling.Channels.assign(text());
    s.sampling.Rate = *rc::gen::arbitrary<std::int32_t>();
    s.sampling.Duration = float32();
    s.sampling.UpperVolts = float32();
    s.sampling.LowerVolts = float32();
    s.sampling.NumChannels = int16();
    s.sampling.NumSamples = *rc::gen::arbitrary<std::int32_t>();
    s.sampling.Repeat = int16();
    s.trigger = {float32(), bool16(), int16(), text(), bool16(), int16()};
    s.sound = {bool16(), bool16(), *rc::gen::arbitrary<double>(), *rc::gen::arbitrary<double>(), bool16()};
    return s;
}

RC_GTEST_PROP(SetupFileProperty, AnyRecordSurvivesWriteAndRead, ()) {
    const AcqSettings written = anySettings();
    AcqSettings read;
    RC_ASSERT(static_cast<bool>(decode(encodeSetup(written), read)));
    RC_ASSERT(encodeSetup(read) == encodeSetup(written));
}

RC_GTEST_PROP(SetupFileProperty, AnyBytesAreReadOrRefused, ()) {
    const auto bytes = *rc::gen::container<std::string>(rc::gen::arbitrary<char>());
    AcqSettings settings;
    const auto result = decode(bytes, settings);
    RC_ASSERT(result || result.error().kind == ErrorKind::BadFormat || result.error().kind == ErrorKind::WrongVersion);
}

} // namespace
} // namespace tavex2::test
