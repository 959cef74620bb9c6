#include "files/FileIO.h"
#include "files/Import.h"
#include "files/LmbLayout.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <numeric>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

const LocalTime someTime{2024, 3, 5, 14, 7, 9};

std::vector<float> floatsAt(const std::string& bytes, std::size_t offset, std::size_t count) {
    std::vector<float> values(count);
    std::memcpy(values.data(), bytes.data() + offset, 4 * count);
    return values;
}

TrialData ramp(int channels, std::int64_t samples, ElementType type = ElementType::Float64) {
    std::vector<std::vector<double>> volts(static_cast<std::size_t>(channels));
    for (auto& row : volts) {
        row.resize(static_cast<std::size_t>(samples));
        std::iota(row.begin(), row.end(), static_cast<double>(&row - volts.data()) * 1000.0);
    }
    return trialOf(volts, type);
}

class WriteLmbTest : public testing::Test {
  protected:
    TemporaryFolder m_folder;
    fs::path m_path = m_folder / "out.lmb";
    ProgramState m_state;

    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(m_folder.path()), fs::directory_iterator()));
    }
};

TEST_F(WriteLmbTest, WritesAHeaderAndFourBytesASample) {
    for (const auto& [channels, samples] : {std::pair{1, 1}, {1, 2001}, {2, 2001}, {12, 5001}, {64, 3}}) {
        collect(m_state, ramp(channels, samples));
        ASSERT_TRUE(WriteLmb(m_path, m_state, someTime));
        EXPECT_EQ(fs::file_size(m_path),
                  4374U + 4U * static_cast<unsigned>(samples) * (static_cast<unsigned>(channels) + 1U));
    }
}

TEST_F(WriteLmbTest, KnowsSizesBeyondFourGigabytes) {
    EXPECT_EQ(lmbFileBytes(64, 2147483647).value(), 4374U + 4ULL * 2147483647ULL * 65ULL);
}

TEST_F(WriteLmbTest, RefusesTrialsThatTheFormatCannotHold) {
    EXPECT_THAT(lmbFileBytes(65, 10).error().text, HasSubstr("64"));
    EXPECT_THAT(lmbFileBytes(2, 2147483648).error().text, HasSubstr("2147483647"));
    EXPECT_FALSE(lmbFileBytes(0, 10));
    EXPECT_FALSE(lmbFileBytes(1, 0));
    EXPECT_FALSE(lmbFileBytes(-1, -1));

    collect(m_state, ramp(65, 2));
    const auto written = WriteLmb(m_path, m_state, someTime);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::InvalidValue);
    EXPECT_THAT(written.error().text, HasSubstr("65 channels"));
    EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(WriteLmbTest, RefusesToSaveWithoutATrial) {
    const auto written = WriteLmb(m_path, m_state, someTime);
    ASSERT_FALSE(written);
    EXPECT_THAT(written.error().text, HasSubstr("no trial"));
    EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(WriteLmbTest, RefusesATrialWithoutARate) {
    collect(m_state, ramp(1, 3));
    m_state.trials.CurrentTrial->sampling.Rate = 0;
    EXPECT_THAT(WriteLmb(m_path, m_state, someTime).error().text, HasSubstr("rate"));
    EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(WriteLmbTest, AddsUpTimesInSinglePrecision) {
    // Last times worked out apart from this program; exact arithmetic would give 100, 555.56 and 10 s.
    struct Expected {
        std::int32_t rateHz;
        std::int64_t samples;
        float last;
    };
    for (const auto& [rateHz, samples, last] :
         {Expected{1000, 100001, 99.95669555664062F}, Expected{360, 200001, 555.9015502929688F},
          Expected{100000, 1000001, 9.91734504699707F}}) {
        collect(m_state, ramp(1, samples, ElementType::Float32), rateHz);
        ASSERT_TRUE(WriteLmb(m_path, m_state, someTime));
        const auto times = floatsAt(bytesOf(m_path), 4374, static_cast<std::size_t>(samples));
        EXPECT_EQ(times.front(), 0.0F);
        EXPECT_EQ(times.back(), last) << rateHz << " Hz";
        // The exact sum of two float32 numbers fits into float64 here, so rounding it once is what float32 addition
        // does.
        const double interval = static_cast<double>(static_cast<float>(1.0 / rateHz));
        for (std::size_t i = 1; i < times.size(); ++i)
            ASSERT_EQ(times[i], static_cast<float>(static_cast<double>(times[i - 1]) + interval)) << i;
    }
}

TEST_F(WriteLmbTest, KeepsLongChannelsWhole) {
    // Longer than any buffer on the way, and not a multiple of one.
    for (const auto type : {ElementType::Float32, ElementType::Float64}) {
        constexpr std::size_t samples = 700001;
        collect(m_state, ramp(2, samples, type));
        ASSERT_TRUE(WriteLmb(m_path, m_state, someTime));
        const std::string bytes = bytesOf(m_path);
        for (std::size_t c = 0; c < 2; ++c) {
            std::vector<float> expected(samples);
            std::iota(expected.begin(), expected.end(), 1000.0F * static_cast<float>(c));
            EXPECT_TRUE(floatsAt(bytes, 4374 + 4 * samples * (c + 1), samples) == expected);
        }
    }
}

TEST_F(WriteLmbTest, PutsTrialNumberAndTwentyFourHourTimeIntoTheTitle) {
    collect(m_state, ramp(1, 2));
    const auto title = [&](int number, const LocalTime& time) {
        m_state.settings.setup.TrialNumber = static_cast<std::int16_t>(number);
        EXPECT_TRUE(WriteLmb(m_path, m_state, time));
        return bytesOf(m_path).substr(80, 100);
    };
    const auto padded = [](std::string text) { return text + std::string(100 - text.size(), ' '); };
    EXPECT_EQ(title(7, someTime), padded("Tavex2 analog data file.  Trial 0007  2024-03-05 14.07.09"));
    EXPECT_EQ(title(12345, {2024, 12, 31, 0, 0, 0}),
              padded("Tavex2 analog data file.  Trial 12345  2024-12-31 00.00.00"));
}

TEST_F(WriteLmbTest, TakesShapeAndRateFromTheTrialAndNotFromTheSettings) {
    collect(m_state, ramp(2, 5), 500);
    m_state.settings.sampling.Rate = 44100;
    m_state.settings.sampling.Duration = 60.0F;
    m_state.settings.sampling.NumChannels = 8;
    m_state.settings.sampling.NumSamples = 1000000;
    m_state.trials.CurrentTrial->sampling.NumChannels = 9;
    ASSERT_TRUE(WriteLmb(m_path, m_state, someTime));
    const LmbFile file = readLmbFile(m_path).value();
    EXPECT_EQ(file.header.NumChannels, 2);
    EXPECT_EQ(file.header.NumSamples, 5);
    EXPECT_EQ(file.header.Rate, 500.0);
    EXPECT_EQ(file.header.Duration, static_cast<double>(4.0F / 500.0F));
}

TEST_F(WriteLmbTest, LeavesTheWrittenHeaderInMemoryAndClearsUnsaved) {
    collect(m_state, ramp(2, 3));
    m_state.header.Labels[2].assign("Force");
    ASSERT_TRUE(WriteLmb(m_path, m_state, someTime));
    EXPECT_EQ(m_state.header, readLmbFile(m_path).value().header);
    EXPECT_EQ(m_state.header.Labels[0].trimmed(), "Time");
    EXPECT_EQ(m_state.header.Labels[1].trimmed(), "Channel 00");
    EXPECT_EQ(m_state.header.Labels[2].trimmed(), "Force");
    EXPECT_TRUE(m_state.header.Labels[3].neverSet());
    EXPECT_FALSE(m_state.Unsaved());
    EXPECT_TRUE(m_state.TrialNotSaved()) << "the commands clear it";
}

TEST_F(WriteLmbTest, ChangesNothingWhenItFails) {
    collect(m_state, ramp(2, 3));
    const LmbHeader before = m_state.header;
    const auto written = WriteLmb(m_folder.path() / "none" / "out.lmb", m_state, someTime);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::NotFound);
    EXPECT_TRUE(m_state.Unsaved());
    EXPECT_EQ(m_state.header, before);
}

TEST_F(WriteLmbTest, TellsHowFarItIsAndCanBeCancelled) {
    collect(m_state, ramp(3, 2));
    std::vector<std::pair<int, int>> reported;
    ASSERT_TRUE(WriteLmb(m_path, m_state, someTime, {IfExists::Replace, [&](int done, int of) {
                                                         reported.emplace_back(done, of);
                                                         return true;
                                                     }}));
    EXPECT_THAT(reported,
                ElementsAre(std::pair(250, 1000), std::pair(500, 1000), std::pair(750, 1000), std::pair(1000, 1000)));

    m_state.changeCurrent([](Trial& trial) { trial.Unsaved = true; });
    const std::string old = bytesOf(m_path);
    const auto cancelled = WriteLmb(m_path, m_state, {}, {IfExists::Replace, [](int done, int) { return done < 500; }});
    ASSERT_FALSE(cancelled);
    EXPECT_EQ(cancelled.error().kind, ErrorKind::Cancelled);
    EXPECT_EQ(bytesOf(m_path), old);
    EXPECT_EQ(filesInFolder(), 1U);
    EXPECT_TRUE(m_state.Unsaved());
}

TEST_F(WriteLmbTest, WritesTheTrialItStartedWithEvenIfAnotherOneArrives) {
    collect(m_state, ramp(2, 4));
    ASSERT_TRUE(WriteLmb(m_path, m_state, someTime, {IfExists::Replace, [&](int, int) {
                                                         m_state.trials.CurrentTrial = ramp(1, 1);
                                                         return true;
                                                     }}));
    EXPECT_EQ(readLmbFile(m_path).value().samples.at(1, 3), 1003.0);
}

TEST_F(WriteLmbTest, NeverReplacesAFileWhenLookingForAFreeName) {
    collect(m_state, ramp(1, 2));
    m_state.TrialName = "Trial0001";
    EXPECT_EQ(WriteLmbToFreeName(m_folder.path(), m_state, someTime).value(), m_folder / "Trial0001.lmb");
    const std::string first = bytesOf(m_folder / "Trial0001.lmb");
    collect(m_state, ramp(2, 2));
    EXPECT_EQ(WriteLmbToFreeName(m_folder.path(), m_state, someTime).value(), m_folder / "Trial0001 (2).lmb");
    EXPECT_EQ(bytesOf(m_folder / "Trial0001.lmb"), first);
}

TEST_F(WriteLmbTest, TakesTheNextNameWhenAnotherProgramIsFaster) {
    collect(m_state, ramp(1, 2));
    m_state.TrialName = "a";
    const auto interfere = [&](int, int) {
        if (!fs::exists(m_folder / "a.lmb")) std::ofstream(m_folder / "a.lmb") << "theirs";
        return true;
    };
    EXPECT_EQ(WriteLmbToFreeName(m_folder.path(), m_state, someTime, interfere).value(), m_folder / "a (2).lmb");
    EXPECT_EQ(bytesOf(m_folder / "a.lmb"), "theirs");
    EXPECT_EQ(filesInFolder(), 2U);
}

TEST_F(WriteLmbTest, SaysWhyNoFreeNameCouldBeWritten) {
    collect(m_state, ramp(1, 2));
    EXPECT_EQ(WriteLmbToFreeName(m_folder / "none", m_state, someTime).error().kind, ErrorKind::NotFound);
}

RC_GTEST_PROP(WriteLmbProperty, EveryTrialReadsBackAsItsSinglePrecisionSelf, ()) {
    const int channels = *rc::gen::inRange(1, 6);
    const auto samples = *rc::gen::inRange<std::size_t>(1, 50);
    const bool wide = *rc::gen::arbitrary<bool>();
    std::vector<std::vector<double>> volts;
    for (int c = 0; c < channels; ++c)
        volts.push_back(*rc::gen::container<std::vector<double>>(
            samples, rc::gen::map(rc::gen::inRange(-1000000000, 1000000001), [](int n) { return n / 1e8; })));
    ProgramState state;
    collect(state, trialOf(volts, wide ? ElementType::Float64 : ElementType::Float32,
                           channels == 1 && *rc::gen::arbitrary<bool>() ? 1 : 2));
    state.comments[3].assign(*rc::gen::string<std::string>());
    state.infoA[223] = *rc::gen::arbitrary<char>();
    state.infoB[323] = *rc::gen::arbitrary<char>();

    const TemporaryFolder folder;
    RC_ASSERT(static_cast<bool>(WriteLmb(folder / "a.lmb", state, someTime)));
    const auto read = readLmbFile(folder / "a.lmb");
    RC_ASSERT(static_cast<bool>(read));
    const LmbFile& file = read.value();
    RC_ASSERT(file.header == state.header);
    RC_ASSERT(file.infoA == state.infoA);
    RC_ASSERT(file.infoB == state.infoB);
    RC_ASSERT(file.comments == state.comments);
    RC_ASSERT(file.samples.channels() == channels);
    for (int c = 0; c < channels; ++c)
        for (std::size_t i = 0; i < samples; ++i)
            RC_ASSERT(file.samples.floats(c)[i] == static_cast<float>(volts[static_cast<std::size_t>(c)][i]));
}

} // namespace
} // namespace tavex2::test
