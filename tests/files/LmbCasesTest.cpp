#include "base/Windows1252.h"
#include "files/FileIO.h"
#include "files/Import.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <map>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(TAVEX2_FILE_CASES))
        if (entry.is_directory()) names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

template <std::size_t N>
void setTexts(std::array<FixedText<N>, lmbSlots>& slots, const Json& texts) {
    for (const auto& [slot, text] : texts.get<std::map<std::string, std::string>>())
        slots[std::stoul(slot)].assign(windows1252FromUtf8(text));
}

/// The trial that a case's description has.
TrialPtr trialOfCase(const Json& trial, const fs::path& folder) {
    ProgramState state;
    if (trial.contains("loaded")) {
        LmbFile loaded = readLmbFile(folder / trial["loaded"].get<std::string>()).value();
        state.header = loaded.header;
        state.infoA = loaded.infoA;
        state.infoB = loaded.infoB;
        state.comments = loaded.comments;
    }
    state.settings.setup.TrialNumber = trial["TrialNumber"];
    setTexts(state.header.Labels, trial.value("Labels", Json::object()));
    setTexts(state.header.Units, trial.value("Units", Json::object()));
    const auto comments = trial.value("TrialComments", std::vector<std::string>());
    for (std::size_t i = 0; i < comments.size(); ++i)
        state.comments.at(i).assign(windows1252FromUtf8(comments[i]));

    const auto type = trial["element"] == "float32" ? ElementType::Float32 : ElementType::Float64;
    const auto collected = collectedTrial(
        state, trialOf(trial["volts"].get<std::vector<std::vector<double>>>(), type, trial["rank"].get<int>()));
    collected->sampling.Rate = trial["Rate"];
    collected->sampling.Duration = trial["Duration"];
    return collected;
}

class LmbCasesTest : public testing::TestWithParam<std::string> {};

TEST_P(LmbCasesTest, IsWrittenByteForByte) {
    const fs::path folder = fs::path(TAVEX2_FILE_CASES) / GetParam();
    const Json described = Json::parse(bytesOf(folder / "trial.json"));
    const TrialPtr trial = trialOfCase(described, folder);
    const auto time = described["time"].get<std::array<int, 6>>();
    const LocalTime now{time[0], time[1], time[2], time[3], time[4], time[5]};

    const TemporaryFolder out;
    const auto written = WriteLmb(out / "out.lmb", *trial, lmbTitle(trial->number, now));
    ASSERT_TRUE(written) << written.error().text;

    const std::string actual = bytesOf(out / "out.lmb");
    const std::string expected = bytesOf(folder / "expected.lmb");
    ASSERT_GT(expected.size(), 4374U);
    EXPECT_EQ(actual.size(), expected.size());
    const auto difference = std::ranges::mismatch(actual, expected);
    EXPECT_TRUE(actual == expected) << "first difference at byte " << difference.in1 - actual.begin();
}

TEST_P(LmbCasesTest, ReadsBackWhatTheFileHolds) {
    const fs::path folder = fs::path(TAVEX2_FILE_CASES) / GetParam();
    const Json trial = Json::parse(bytesOf(folder / "trial.json"));
    const auto read = readLmbFile(folder / "expected.lmb");
    ASSERT_TRUE(read) << read.error().text;
    const LmbFile& file = read.value();
    EXPECT_EQ(file.versionMajor, 2);
    EXPECT_EQ(file.versionMinor, 0.0);
    EXPECT_EQ(file.header.Rate, trial["Rate"].get<double>());
    EXPECT_EQ(file.header.Duration, static_cast<double>(trial["Duration"].get<float>()));
    EXPECT_EQ(file.header.Labels[0].trimmed(), "Time");
    EXPECT_EQ(file.header.Units[0].trimmed(), "s");

    const auto volts = trial["volts"].get<std::vector<std::vector<double>>>();
    EXPECT_EQ(file.samples.rank(), 2);
    ASSERT_EQ(file.samples.channels(), static_cast<int>(volts.size()));
    ASSERT_EQ(file.samples.samples(), static_cast<std::int64_t>(volts[0].size()));
    for (int c = 0; c < file.samples.channels(); ++c)
        for (std::size_t i = 0; i < volts[0].size(); ++i)
            EXPECT_EQ(file.samples.floats(c)[i], static_cast<float>(volts[static_cast<std::size_t>(c)][i]));
}

INSTANTIATE_TEST_SUITE_P(Folders, LmbCasesTest, testing::ValuesIn(caseNames()),
                         [](const auto& each) { return each.param; });

} // namespace
} // namespace tavex2::test
