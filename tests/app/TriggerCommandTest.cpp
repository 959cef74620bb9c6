#include "app/CommandLineFixture.h"
#include "files/StimulusFile.h"
#include "support/Trials.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace tavex2::test {
namespace {

using testing::HasSubstr;

/// Channel 1 of a collected trial swings; channel 0 counts and channel 2 stands still.
class TriggerCommandTest : public CommandLineTest {
  protected:
    TriggerCommandTest() {
        std::vector<std::int16_t> samples;
        for (int i = 0; i < 400; ++i)
            for (const int sample : {i, i % 20 < 10 ? -8000 : 8000, -3}) // 2.44 V up from scan 10 on, every 20
                samples.push_back(static_cast<std::int16_t>(sample));
        writeWave(folder / "rec.wav", 3, 100, samples);
    }

    /// The samples of the crossings, as JSON tells them.
    std::vector<int> crossings(const std::filesystem::path& file, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"trigger", file.string(), "--json"});
        EXPECT_EQ(run(arguments), 0) << stdErr.str();
        std::vector<int> samples;
        const auto json = nlohmann::json::parse(stdOut.str());
        for (const auto& each : json.at("Crossings")) {
            samples.push_back(each.at("Sample"));
            EXPECT_DOUBLE_EQ(each.at("Seconds"), samples.back() / 100.0);
        }
        return samples;
    }
};

TEST_F(TriggerCommandTest, TellsHowOftenWhenFirstAndWhere) {
    ASSERT_EQ(collect({}), 0);
    const std::string file = (out / "Trial0001.lmb").string();
    ASSERT_EQ(run({"trigger", file, "--channel", "1", "--level", "1"}), 0) << stdErr.str();
    EXPECT_EQ(stdOut.str(), "fires 5 times, first at 0.1 s\n10\t0.1\n30\t0.3\n50\t0.5\n70\t0.7\n90\t0.9\n");
    ASSERT_EQ(run({"trigger", file, "--channel", "0", "--level", "0.01"}), 0);
    EXPECT_EQ(stdOut.str(), "fires once, at 0.33 s\n33\t0.33\n");
    ASSERT_EQ(run({"trigger", file, "--channel", "2", "--level", "0"}), 0);
    EXPECT_EQ(stdOut.str(), "never fires\n");
    EXPECT_EQ(stdErr.str(), "");
}

TEST_F(TriggerCommandTest, JsonRepeatsWhatWasAskedFor) {
    ASSERT_EQ(collect({}), 0);
    ASSERT_EQ(run({"trigger", (out / "Trial0001.lmb").string(), "--channel", "1", "--level", "-0.1", "--falling",
                   "--pretrigger", "50", "--json"}),
              0)
        << stdErr.str();
    EXPECT_EQ(nlohmann::json::parse(stdOut.str()), nlohmann::json::parse(R"({
        "Channel": 1, "Level": -0.1, "Falling": true, "Pretrigger": 50,
        "Crossings": [{"Sample": 60, "Seconds": 0.6}, {"Sample": 80, "Seconds": 0.8}, {"Sample": 100, "Seconds": 1.0}]})"));
}

TEST_F(TriggerCommandTest, ATriggeredCollectionStartsAtTheFirstCrossing) {
    ASSERT_EQ(collect({}), 0);
    for (const auto& [level, rising, pretrigger] : std::vector<std::tuple<std::string, bool, std::string>>{
             {"1", true, "0"}, {"1", false, "0"}, {"0", true, "25"}, {"-2", false, "40"}, {"-2", true, "41"}}) {
        std::vector<std::string> arguments{"--channel", "1", "--level", level, "--pretrigger", pretrigger};
        if (!rising) arguments.emplace_back("--falling");
        const int crossing = crossings(out / "Trial0001.lmb", arguments).at(0);
        const std::string prefix = "t" + level + pretrigger + (rising ? "r" : "f");
        ASSERT_EQ(collect({"--set", "TriggerMode=1", "--set", "TriggerChannel=1", "--set", "TriggerLevel=" + level,
                           "--set", "Pretrigger=" + pretrigger, "--set",
                           rising ? "TriggerRising=True" : "TriggerRising=False", "--set", "FilePrefix=" + prefix}),
                  0)
            << stdErr.str();
        // The first channel counts the scans.
        EXPECT_EQ(sample(prefix + "0001.lmb", 101, 0, std::stoi(pretrigger)), volts(crossing)) << prefix;
    }
}

TEST_F(TriggerCommandTest, ReadsStimulusFilesToo) {
    ASSERT_EQ(collect({"--format", "plv"}), 0);
    EXPECT_EQ(crossings(out / "Trial0001.plv", {"--channel", "1", "--level", "1", "--pretrigger", "80"}),
              std::vector{90});
}

TEST_F(TriggerCommandTest, SaysWhatItCannotSearch) {
    ASSERT_EQ(collect({}), 0);
    const std::string file = (out / "Trial0001.lmb").string();
    for (const char* channel : {"3", "-1"}) {
        EXPECT_EQ(run({"trigger", file, "--channel", channel, "--level", "1"}), 1);
        EXPECT_THAT(errorLine(), HasSubstr(std::string("There is no channel ") + channel + ". The trial has 3"));
    }
    for (const char* level : {"nan", "inf", "1e39", "high", ""}) {
        EXPECT_EQ(run({"trigger", file, "--channel", "0", "--level", level}), 2) << level;
        EXPECT_THAT(errorLine(), HasSubstr("takes a level in volts")) << level;
    }
    for (const char* percentage : {"96", "-1", "1.5", "ten"}) {
        EXPECT_EQ(run({"trigger", file, "--channel", "0", "--level", "1", "--pretrigger", percentage}), 2);
        EXPECT_THAT(errorLine(), HasSubstr("takes a whole number from 0 to 95")) << percentage;
    }
    EXPECT_EQ(run({"trigger", file, "--channel", "0"}), 2);
    EXPECT_THAT(errorLine(), HasSubstr("--level is required"));
    EXPECT_EQ(run({"trigger", (out / "none.lmb").string(), "--channel", "0", "--level", "1"}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("none.lmb does not exist"));
}

TEST_F(TriggerCommandTest, ATrialWithoutARateHasNoCrossings) {
    ASSERT_EQ(collect({"--format", "plv"}), 0);
    const std::filesystem::path file = out / "Trial0001.plv";
    std::string bytes = bytesOf(file);
    const std::string rate("\x64\0\0\0\0\0\x80\x3F", 8); // 100 Hz and the duration, 1 s
    const std::size_t place = bytes.find(rate);
    ASSERT_NE(place, std::string::npos);
    bytes.replace(place, 4, 4, '\0');
    std::ofstream(file, std::ios::binary) << bytes;
    EXPECT_EQ(run({"trigger", file.string(), "--channel", "1", "--level", "1"}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("no sampling rate"));
}

TEST_F(TriggerCommandTest, AWildDurationInTheFileMovesNoPreTrigger) {
    ASSERT_EQ(collect({"--format", "plv"}), 0);
    const std::filesystem::path file = out / "Trial0001.plv";
    std::string bytes = bytesOf(file);
    const std::size_t place = bytes.find(std::string("\x64\0\0\0\0\0\x80\x3F", 8)) + 4;
    bytes.replace(place, 4, 4, '\xFF'); // no number
    std::ofstream(file, std::ios::binary) << bytes;
    EXPECT_EQ(crossings(file, {"--channel", "1", "--level", "1", "--pretrigger", "80"}), std::vector{90});
}

} // namespace
} // namespace tavex2::test
