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

constexpr const char* someTitle = "some title";

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
    std::shared_ptr<Trial> m_trial;

    /// A trial of these samples to write.
    Trial& take(TrialData samples, std::int32_t rateHz = 1000) {
        m_trial = collectedTrial({}, std::move(samples), rateHz);
        return *m_trial;
    }
    Result<LmbHeader> write(const WriteOptions& options = {}) const {
        return WriteLmb(m_path, *m_trial, someTitle, options);
    }

    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(m_folder.path()), fs::directory_iterator()));
    }
};

TEST_F(WriteLmbTest, WritesTimesAndChannelsAfterRecordsOfOneSize) {
    for (const auto& [channels, samples] : {std::pair{1, 1}, {1, 2001}, {2, 2001}, {12, 5001}, {64, 3}}) {
        take(ramp(channels, samples));
        ASSERT_TRUE(write());
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

    take(ramp(65, 2));
    const auto written = write();
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::InvalidValue);
    EXPECT_THAT(written.error().text, HasSubstr("65 channels"));
    EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(WriteLmbTest, RefusesToSaveWithoutATrial) {
    const auto written = WriteLmb(m_path, Trial(), someTitle);
    ASSERT_FALSE(written);
    EXPECT_THAT(written.error().text, HasSubstr("no trial"));
    EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(WriteLmbTest, RefusesATrialWithoutARate) {
    take(ramp(1, 3)).sampling.Rate = 0;
    EXPECT_THAT(write().error().text, HasSubstr("rate"));
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
        take(ramp(1, samples, ElementType::Float32), rateHz);
        ASSERT_TRUE(write());
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
        take(ramp(2, samples, type));
        ASSERT_TRUE(write());
        const std::string bytes = bytesOf(m_path);
        for (std::size_t c = 0; c < 2; ++c) {
            std::vector<float> expected(samples);
            std::iota(expected.begin(), expected.end(), 1000.0F * static_cast<float>(c));
            EXPECT_TRUE(floatsAt(bytes, 4374 + 4 * samples * (c + 1), samples) == expected);
        }
    }
}

TEST_F(WriteLmbTest, PutsTrialNumberAndTwentyFourHourTimeIntoTheTitle) {
    take(ramp(1, 2));
    const auto title = [&](int number, const LocalTime& time) {
        EXPECT_TRUE(WriteLmb(m_path, *m_trial, lmbTitle(number, time)));
        return bytesOf(m_path).substr(80, 100);
    };
    const auto padded = [](std::string text) { return text + std::string(100 - text.size(), ' '); };
    EXPECT_EQ(title(7, {2024, 3, 5, 14, 7, 9}), padded("Tavex2 analog data file.  Trial 0007  2024-03-05 14.07.09"));
    EXPECT_EQ(title(12345, {2024, 12, 31, 0, 0, 0}),
              padded("Tavex2 analog data file.  Trial 12345  2024-12-31 00.00.00"));
}

TEST_F(WriteLmbTest, TakesTheRateFromTheTrialAndItsShapeFromTheSamples) {
    Trial& trial = take(ramp(2, 5), 500);
    trial.sampling.NumChannels = 9;
    trial.sampling.NumSamples = 1000000;
    trial.header.NumChannels = 8;
    trial.header.Rate = 44100;
    trial.header.Duration = 60;
    ASSERT_TRUE(write());
    const LmbFile file = readLmbFile(m_path).value();
    EXPECT_EQ(file.header.NumChannels, 2);
    EXPECT_EQ(file.header.NumSamples, 5);
    EXPECT_EQ(file.header.Rate, 500.0);
    EXPECT_EQ(file.header.Duration, static_cast<double>(4.0F / 500.0F));
}

TEST_F(WriteLmbTest, GivesTheHeaderThatWasWritten) {
    take(ramp(2, 3)).header.Labels[2].assign("Force");
    const auto written = write();
    ASSERT_TRUE(written);
    const LmbHeader& header = written.value();
    EXPECT_EQ(header, readLmbFile(m_path).value().header);
    EXPECT_EQ(header.Title.trimmed(), someTitle);
    EXPECT_EQ(header.Labels[0].trimmed(), "Time");
    EXPECT_EQ(header.Labels[1].trimmed(), "Channel 00");
    EXPECT_EQ(header.Labels[2].trimmed(), "Force");
    EXPECT_TRUE(header.Labels[3].neverSet());
}

TEST_F(WriteLmbTest, SaysThatTheFolderIsNotThere) {
    take(ramp(2, 3));
    const auto written = WriteLmb(m_folder.path() / "none" / "out.lmb", *m_trial, someTitle);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::NotFound);
    EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(WriteLmbTest, TellsHowFarItIsAndCanBeCancelled) {
    take(ramp(3, 2));
    std::vector<std::pair<int, int>> reported;
    ASSERT_TRUE(write({IfExists::Replace, [&](int done, int of) {
                           reported.emplace_back(done, of);
                           return true;
                       }}));
    EXPECT_THAT(reported,
                ElementsAre(std::pair(250, 1000), std::pair(500, 1000), std::pair(750, 1000), std::pair(1000, 1000)));

    const std::string old = bytesOf(m_path);
    const auto cancelled = write({IfExists::Replace, [](int done, int) { return done < 500; }});
    ASSERT_FALSE(cancelled);
    EXPECT_EQ(cancelled.error().kind, ErrorKind::Cancelled);
    EXPECT_EQ(bytesOf(m_path), old);
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(WriteLmbTest, WritesTheTrialItStartedWithEvenIfAnotherOneArrives) {
    ProgramState state;
    collect(state, ramp(2, 4));
    const TrialPtr started = state.trials.CurrentTrial;
    ASSERT_TRUE(WriteLmb(m_path, *started, someTitle, {IfExists::Replace, [&](int, int) {
                                                           collect(state, ramp(1, 1));
                                                           return true;
                                                       }}));
    EXPECT_EQ(readLmbFile(m_path).value().samples.at(1, 3), 1003.0);
}

TEST_F(WriteLmbTest, NeverReplacesAFileWhenLookingForAFreeName) {
    take(ramp(1, 2));
    const auto first = WriteLmbToFreeName(m_folder.path(), *m_trial, someTitle);
    ASSERT_TRUE(first) << first.error().text;
    EXPECT_EQ(first.value().path, m_folder / "Trial0001.lmb");
    EXPECT_EQ(first.value().header, readLmbFile(m_folder / "Trial0001.lmb").value().header);
    const std::string bytes = bytesOf(m_folder / "Trial0001.lmb");
    take(ramp(2, 2));
    EXPECT_EQ(WriteLmbToFreeName(m_folder.path(), *m_trial, someTitle).value().path, m_folder / "Trial0001 (2).lmb");
    EXPECT_EQ(bytesOf(m_folder / "Trial0001.lmb"), bytes);
}

TEST_F(WriteLmbTest, TakesTheNextNameWhenAnotherProgramIsFaster) {
    take(ramp(1, 2)).name = "a";
    const auto interfere = [&](int, int) {
        if (!fs::exists(m_folder / "a.lmb")) std::ofstream(m_folder / "a.lmb") << "theirs";
        return true;
    };
    EXPECT_EQ(WriteLmbToFreeName(m_folder.path(), *m_trial, someTitle, interfere).value().path, m_folder / "a (2).lmb");
    EXPECT_EQ(bytesOf(m_folder / "a.lmb"), "theirs");
    EXPECT_EQ(filesInFolder(), 2U);
}

TEST_F(WriteLmbTest, SaysWhyNoFreeNameCouldBeWritten) {
    take(ramp(1, 2));
    EXPECT_EQ(WriteLmbToFreeName(m_folder / "none", *m_trial, someTitle).error().kind, ErrorKind::NotFound);
}

RC_GTEST_PROP(WriteLmbProperty, EveryTrialReadsBackAsItsSinglePrecisionSelf, ()) {
    const int channels = *rc::gen::inRange(1, 6);
    const auto samples = *rc::gen::inRange<std::size_t>(1, 50);
    const bool wide = *rc::gen::arbitrary<bool>();
    std::vector<std::vector<double>> volts;
    for (int c = 0; c < channels; ++c)
        volts.push_back(*rc::gen::container<std::vector<double>>(
            samples, rc::gen::map(rc::gen::inRange(-1000000000, 1000000001), [](int n) { return n / 1e8; })));
    const auto trial = collectedTrial({}, trialOf(volts, wide ? ElementType::Float64 : ElementType::Float32,
                                                  channels == 1 && *rc::gen::arbitrary<bool>() ? 1 : 2));
    trial->comments[3].assign(*rc::gen::string<std::string>());
    trial->infoA[223] = *rc::gen::arbitrary<char>();
    trial->infoB[323] = *rc::gen::arbitrary<char>();

    const TemporaryFolder folder;
    const auto written = WriteLmb(folder / "a.lmb", *trial, someTitle);
    RC_ASSERT(static_cast<bool>(written));
    const auto read = readLmbFile(folder / "a.lmb");
    RC_ASSERT(static_cast<bool>(read));
    const LmbFile& file = read.value();
    RC_ASSERT(file.header == written.value());
    RC_ASSERT(file.infoA == trial->infoA);
    RC_ASSERT(file.infoB == trial->infoB);
    RC_ASSERT(file.comments == trial->comments);
    RC_ASSERT(file.samples.channels() == channels);
    for (int c = 0; c < channels; ++c)
        for (std::size_t i = 0; i < samples; ++i)
            RC_ASSERT(file.samples.floats(c)[i] == static_cast<float>(volts[static_cast<std::size_t>(c)][i]));
}

} // namespace
} // namespace tavex2::test
