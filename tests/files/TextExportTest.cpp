#include "files/TextExport.h"

#include "base/Decimal.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <clocale>
#include <memory>
#include <utility>

namespace tavex2::test {
namespace {

using testing::HasSubstr;

class TextExportTest : public testing::Test {
  protected:
    /// A trial of these samples to export.
    Trial& take(TrialData samples, std::int32_t rateHz = 1000) {
        m_trial = collectedTrial({}, std::move(samples), rateHz);
        return *m_trial;
    }
    std::string tab() {
        EXPECT_TRUE(WriteTab(m_path, *m_trial));
        return bytesOf(m_path);
    }
    std::string lma() {
        EXPECT_TRUE(WriteLma(m_path, *m_trial));
        return bytesOf(m_path);
    }
    Result<void> overlayLma() {
        return WriteOverlayLma(m_path, m_state.overlays, m_state.settings.sampling, "Arm0003");
    }
    /// Makes trials the overlays, and what they were taken with the current settings.
    void overlay(const std::vector<TrialData>& trials) {
        OverlaySet& overlays = m_state.overlays;
        overlays.OverlayCount = static_cast<std::int16_t>(trials.size());
        std::ranges::transform(trials, overlays.OverlayData.begin(),
                               [](const TrialData& samples) { return collectedTrial({}, samples); });
        m_state.settings.sampling = overlays.OverlaySettings = overlays.OverlayData.front()->sampling;
    }
    static std::string line(const std::string& text, int number) {
        std::size_t from = 0;
        for (int i = 1; i < number; ++i)
            from = text.find("\r\n", from) + 2;
        return text.substr(from, text.find("\r\n", from) - from);
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_path = m_folder / "table.txt";
    std::shared_ptr<Trial> m_trial;
    ProgramState m_state; ///< settings and overlays
};

TEST_F(TextExportTest, ATabFileOfTwoChannels) {
    Trial& trial = take(trialOf({{0.5, -1.5, 2.25}, {1e-5, -4e-6, 9.999995}}));
    trial.sampling.Repeat = 3;
    trial.sampling.Duration = 2.0F;
    EXPECT_EQ(tab(), "Tavex2 data acquisition file\r\n" + m_path.string() +
                         "\r\n"
                         "Rate=\t 1000.00\tDuration= \t    6.000\r\n"
                         "Channel=\t         0\t         1\t\r\n"
                         "Time (s)  \tChan 0    \tChan 1    \t\r\n"
                         "0.000000\t0.50000\t0.00001\t\r\n"
                         "0.001000\t-1.50000\t0.00000\t\r\n"
                         "0.002000\t2.25000\t" +
                         fixedDecimal(9.999995, 5) + "\t\r\n");
}

TEST_F(TextExportTest, ATabFileOfOneChannelHasNoTabAtTheEndOfARow) {
    for (const int rank : {1, 2}) {
        take(trialOf({{1, 2}}, ElementType::Float32, rank));
        const std::string text = tab();
        EXPECT_EQ(line(text, 4), "Channel=\t         0\t");
        EXPECT_EQ(line(text, 6), "0.000000\t1.00000");
        EXPECT_EQ(line(text, 7), "0.001000\t2.00000");
        EXPECT_TRUE(text.ends_with("2.00000\r\n"));
    }
}

TEST_F(TextExportTest, AnLmaFileOfTwoChannels) {
    Trial& trial = take(trialOf({{0.5, -1.5}, {12345.67891, -0.00004}}));
    trial.name = "Arm0001";
    trial.sampling.Duration = 2.0F;
    EXPECT_EQ(lma(), "* Arm0001.lma\r\n"
                     "* Arm0001.lma\r\n"
                     "* Tavex2 data acquisition file\r\n"
                     "*  1000.00     2.000\r\n"
                     "*        0         2\r\n"
                     "* Channel:         0         1\r\n"
                     "* Time    Chan 0    Chan 1    \r\n"
                     "*  1000.00  1000.000  1000.000\r\n"
                     "    0.0000    0.500012345.6789\r\n"
                     "    0.0010   -1.5000    0.0000\r\n");
}

TEST_F(TextExportTest, TimesAreTheRunningSumInSinglePrecision) {
    take(trialOf({std::vector<double>(200'000, 0.0)}), 3);
    const std::string text = lma();
    EXPECT_EQ(line(text, 9).substr(0, 10), "    0.0000");
    EXPECT_EQ(line(text, 10).substr(0, 10), "    0.3333");
    EXPECT_EQ(line(text, 11).substr(0, 10), "    0.6667");
    // Rows are made in blocks on several threads; the sum goes through all of them.
    float time = 0;
    std::size_t at = text.find("    0.0000    0.0000");
    for (int row = 0; row < 200'000; ++row, at += 22) {
        std::string expected = fixedDecimal(static_cast<double>(time), 4);
        expected.insert(0, 10 - expected.size(), ' ');
        ASSERT_EQ(text.substr(at, 10), expected) << row;
        time += static_cast<float>(1.0 / 3);
    }
    EXPECT_EQ(at, text.size());
}

TEST_F(TextExportTest, EveryRowOfALongTableIsInItsPlace) {
    std::vector<double> counter(50'001);
    for (std::size_t i = 0; i < counter.size(); ++i)
        counter[i] = static_cast<double>(i);
    take(trialOf({counter, counter}, ElementType::Float32));
    const std::string text = tab();
    EXPECT_THAT(text, HasSubstr("\t8191.00000\t8191.00000\t\r\n"));
    std::size_t at = text.find("0.000000\t");
    for (std::size_t i = 0; i < counter.size(); ++i) {
        const std::size_t end = text.find("\r\n", at);
        const std::string value = std::to_string(i) + ".00000\t";
        ASSERT_TRUE(text.substr(at, end - at).ends_with("\t" + value + value)) << text.substr(at, end - at);
        at = end + 2;
    }
    EXPECT_EQ(at, text.size());
}

TEST_F(TextExportTest, AFailureOrACancelLeavesTheOldFile) {
    take(trialOf({std::vector<double>(20'000, 1.0)}));
    std::ofstream(m_path) << "old";
    const Result<void> cancelled = WriteTab(m_path, *m_trial, {IfExists::Replace, [](int, int) { return false; }});
    ASSERT_FALSE(cancelled);
    EXPECT_EQ(cancelled.error().kind, ErrorKind::Cancelled);
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_FALSE(WriteLma(m_folder / "missing" / "t.lma", *m_trial));
    EXPECT_FALSE(WriteTab("/proc/t.tab", *m_trial));
}

TEST_F(TextExportTest, ACancelIsAskedForAfterTheLastRowWhicheverThreadMadeIt) {
    take(trialOf({std::vector<double>(20'000, 1.0)}));
    for (int attempt = 0; attempt < 50; ++attempt) {
        int last = 0;
        const auto untilTheEnd = [&last](int done, int of) {
            last = done;
            return done < of;
        };
        const auto cancelled = WriteTab(m_path, *m_trial, {IfExists::Replace, untilTheEnd});
        ASSERT_EQ(last, 1000) << attempt;
        ASSERT_FALSE(cancelled);
        ASSERT_EQ(cancelled.error().kind, ErrorKind::Cancelled);
        ASSERT_FALSE(std::filesystem::exists(m_path));
    }
}

TEST_F(TextExportTest, AnOverlayFileHoldsTheMeanInSinglePrecision) {
    // 0.1 and 0.2 in single precision, and a sum that single precision rounds: 16777216 + 1 + 1 = 16777216.
    overlay({trialOf({{0.1, 1}, {16777216, -1.5}}), trialOf({{0.2, 2}, {1, -1.5}}),
             trialOf({{0.3, 3.00012}, {1, -1.5}}, ElementType::Float32)});
    m_state.settings.sampling.Duration = m_state.overlays.OverlaySettings.Duration = 0.002F;
    m_state.settings.sampling.Repeat = 2;
    ASSERT_TRUE(overlayLma());
    EXPECT_EQ(bytesOf(m_path), "* Arm0003.lma\r\n* Arm0003.lma\r\n"
                               "* Tavex2 data acquisition overlay file\r\n"
                               "*  1000.00     0.004\r\n"
                               "*        0         2\r\n"
                               "* Channel:         0         1\r\n"
                               "* Time    Chan 0    Chan 1    \r\n"
                               "*  1000.00  1000.000  1000.000\r\n"
                               "    0.0000    0.20005592405.5000\r\n"
                               "    0.0010    2.0000   -1.5000\r\n");
}

TEST_F(TextExportTest, WhatIsNoSetOfOverlaysIsNotExported) {
    const auto said = [this] {
        const auto written = overlayLma();
        EXPECT_FALSE(std::filesystem::exists(m_path));
        return written ? std::string("written") : written.error().text;
    };
    EXPECT_THAT(said(), testing::HasSubstr("No trial has been overlaid"));
    overlay({trialOf({{1, 2}})});
    EXPECT_THAT(said(), testing::HasSubstr("one channel"));
    overlay({trialOf({{1, 2}}, ElementType::Float64, 1)});
    EXPECT_THAT(said(), testing::HasSubstr("one channel"));
    overlay({trialOf({{1, 2}, {3, 4}})});
    for (const std::int32_t samples : {1, 3}) {
        m_state.settings.sampling.NumSamples = samples; // as a collection with another duration leaves it
        EXPECT_THAT(said(), testing::HasSubstr("other settings"));
    }
    m_state.settings.sampling = m_state.overlays.OverlaySettings;
    m_state.settings.sampling.Rate = 500;
    EXPECT_THAT(said(), testing::HasSubstr("other settings"));
    overlay({trialOf({{1, 2}, {3, 4}}), trialOf({{1}, {3}})}); // cannot happen, and is not read past its end
    EXPECT_THAT(said(), testing::HasSubstr("other settings"));
}

TEST_F(TextExportTest, WithoutATrialThereIsNothingToExport) {
    EXPECT_FALSE(WriteTab(m_path, Trial()));
    EXPECT_FALSE(WriteLma(m_path, Trial()));
    EXPECT_FALSE(std::filesystem::exists(m_path));
}

} // namespace
} // namespace tavex2::test
