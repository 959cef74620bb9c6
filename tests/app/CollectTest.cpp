#include "acquisition/SetupFile.h"
#include "app/CommandLineFixture.h"
#include "app/cli/CollectChecks.h"
#include "base/PathText.h"
#include "platform/ChannelList.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <regex>
#include <utility>

/// What a collection without a window writes, tells and refuses.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Collect = CommandLineTest;

/// A board that refuses to be configured: whoever gets as far as collecting from it gets its error.
const std::vector<std::string> refusingBoard{"collect", "--fast", "--board", "simulator:fail=refuse"};

// Formats -------------------------------------------------------------------------------------------------------------

TEST_F(Collect, WritesTheFormatThatTheSettingsName) {
    ASSERT_EQ(collect({"--set", "SaveType=1"}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.tab"));
    ASSERT_EQ(collect({"--set", "SaveType=0"}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.lmb", "Trial0001.tab"));
}

TEST_F(Collect, WritesTheFormatThatASetupFileNames) {
    AcqSettings settings;
    settings.setup.SaveType = 1;
    ASSERT_TRUE(writeSetupFile(folder / "p.set", settings));
    ASSERT_EQ(collect({"--setup", (folder / "p.set").string()}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.tab"));
}

TEST_F(Collect, FormatsThatAreAskedForCountMoreThanTheSettings) {
    ASSERT_EQ(collect({"--set", "SaveType=1", "--format", "lma"}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.lma"));
}

TEST_F(Collect, AFormatThatIsAskedForTwiceIsWrittenOnce) {
    ASSERT_EQ(collect({"--format", "lmb", "--format", "tab", "--format", "lmb", "--json"}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.lmb", "Trial0001.tab"));
    EXPECT_EQ(nlohmann::json::parse(stdOut.str()).at("Trials").at(0).at("Files").size(), 2U);
}

// Room and names ------------------------------------------------------------------------------------------------------

TEST_F(Collect, RoomIsReckonedForAllFormatsTogether) {
    const TrialFormat* const lmb = trialFormat(".lmb");
    const TrialFormat* const plv = trialFormat(".plv");
    const AcqSettings settings;
    const auto channels = parseChannelList(settings.sampling.Channels.trimmed(), mostChannels);
    const std::uint64_t bytesOfATrial =
        plv->mostBytes(static_cast<int>(channels.value().size()), samplesPerTrial(settings.sampling));
    const double room = static_cast<double>(fs::space(out).available);
    const int trials = static_cast<int>(0.75 * room / static_cast<double>(bytesOfATrial)); // the other needs half of it
    ASSERT_GT(trials, 100) << "too full a disk to tell the sums apart";
    const auto check = [&](const std::vector<const TrialFormat*>& formats) {
        return checkPlace({.settings = settings, .trials = trials, .folder = out, .formats = formats});
    };
    EXPECT_TRUE(check({lmb}));
    EXPECT_TRUE(check({plv}));
    const auto both = check({lmb, plv});
    ASSERT_FALSE(both);
    EXPECT_THAT(both.error().text, AllOf(HasSubstr(pathText(out)), HasSubstr("has room for"), HasSubstr("Make room")));
    EXPECT_TRUE(filesWritten().empty()) << "looking leaves nothing";
}

TEST_F(Collect, TrialsThatTheDiskCannotHoldAreRefusedBeforeTheyAreTaken) {
    std::vector<std::string> arguments = refusingBoard;
    for (const char* argument : {"--trials", "9999", "--set", "Channels=0:15", "--set", "Rate=100000", "--set",
                                 "Duration=3600", "--set", "Repeat=500"})
        arguments.emplace_back(argument);
    arguments.insert(arguments.end(), {"--out", out.string()});
    EXPECT_EQ(run(arguments), 1);
    EXPECT_THAT(errorLine(), HasSubstr("has room for"));
}

TEST_F(Collect, NamesThatNoDiskTakesAreRefusedBeforeTheTrialsAreTaken) {
    constexpr std::size_t longestPrefix = 255 - std::string_view("0001-r1-partial (9999).lmb").size();
    std::vector<std::string> arguments = refusingBoard;
    arguments.insert(arguments.end(),
                     {"--out", out.string(), "--set", "FilePrefix=" + std::string(longestPrefix + 1, 'p')});
    EXPECT_EQ(run(arguments), 1);
    EXPECT_THAT(errorLine(), AllOf(HasSubstr("up to 256 bytes"), HasSubstr("Shorten FilePrefix")));

    ASSERT_EQ(collect({"--set", "FilePrefix=" + std::string(longestPrefix, 'p')}), 0) << stdErr.str();
    ASSERT_EQ(collect({"--set", "FilePrefix=" + std::string(longestPrefix, 'p')}), 0) << stdErr.str();
    EXPECT_EQ(filesWritten().size(), 2U);
}

// What is told --------------------------------------------------------------------------------------------------------

/// Keeps what had been told and which files were there each time that the program says that it shall be seen now.
class Witness final : public std::stringbuf {
  public:
    explicit Witness(std::function<std::vector<std::string>()> files) : m_files(std::move(files)) {}
    std::vector<std::pair<std::string, std::vector<std::string>>> seen;

  private:
    int sync() override {
        seen.emplace_back(str(), m_files());
        return 0;
    }
    std::function<std::vector<std::string>()> m_files;
};

TEST_F(Collect, EachTrialIsToldAsSoonAsItIsWritten) {
    Witness witness([this] { return filesWritten(); });
    std::ostream told(&witness);
    const std::string board = "recording:" + (folder / "rec.wav").string();
    const std::string into = out.string();
    const std::vector<const char*> argv{"tavex2",       "collect",    "--fast", "--board",  board.c_str(),
                                        "--out",        into.c_str(), "--set",  "Rate=100", "--set",
                                        "Duration=0.5", "--trials",   "3"};
    const CommandLineResult ended =
        runCommandLine(static_cast<int>(argv.size()), argv.data(),
                       {.out = told, .err = stdErr, .store = store, .drawPicture = {}, .openSound = {}});
    ASSERT_EQ(ended.exitCode, 0) << stdErr.str();
    ASSERT_GE(witness.seen.size(), 3U);
    EXPECT_THAT(witness.seen[0].first, AllOf(HasSubstr("Trial0001.lmb: "), Not(HasSubstr("Trial0002"))));
    EXPECT_THAT(witness.seen[0].second, ElementsAre("Trial0001.lmb"));
    EXPECT_THAT(witness.seen[1].first, AllOf(HasSubstr("Trial0002.lmb: "), Not(HasSubstr("Trial0003"))));
    EXPECT_THAT(witness.seen[1].second, ElementsAre("Trial0001.lmb", "Trial0002.lmb"));
}

TEST_F(Collect, JsonTellsWhenATrialBeganAndWhatWasGivenToIt) {
    ASSERT_EQ(collect({"--set", "Duration=0.3", "--set", "DIOMask=5", "--set", "DIOLatency=20,0,70", "--json"}), 0)
        << stdErr.str();
    EXPECT_THAT(stdOut.str(), HasSubstr("\"Duration\": 0.3,")) << "as short as it is exact";
    const auto trial = nlohmann::json::parse(stdOut.str()).at("Trials").at(0);
    EXPECT_TRUE(std::regex_match(trial.at("Start").get<std::string>(),
                                 std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}([+-]\d\d:\d\d|Z))")))
        << trial.at("Start");
    EXPECT_FALSE(trial.contains("TriggerSample")) << "it was not triggered";
    ASSERT_EQ(trial.at("Pulses").size(), 2U);
    EXPECT_EQ(trial.at("Pulses")[0].at("line"), 0);
    EXPECT_EQ(trial.at("Pulses")[0].at("milliseconds"), 20);
    EXPECT_EQ(trial.at("Pulses")[1].at("line"), 2);
    EXPECT_EQ(trial.at("Pulses")[1].at("milliseconds"), 70);
}

TEST_F(Collect, JsonTellsAtWhichSampleTheTriggerFired) {
    ASSERT_EQ(collect({"--set", "TriggerMode=1", "--set", "TriggerChannel=1", "--set", "TriggerLevel=1", "--set",
                       "Pretrigger=20", "--set", "Repeat=2", "--set", "DIOMask=0", "--json"}),
              0)
        << stdErr.str();
    const auto trials = nlohmann::json::parse(stdOut.str()).at("Trials");
    ASSERT_EQ(trials.size(), 2U);
    EXPECT_EQ(trials[0].at("TriggerSample"), 20);
    EXPECT_EQ(sample("Trial0001.lmb", 101, 1, 20), volts(10000)) << "which is the first one above the level";
    EXPECT_EQ(sample("Trial0001.lmb", 101, 1, 19), volts(0));
    EXPECT_FALSE(trials[1].contains("TriggerSample")) << "only the first repeat waits for it";
    EXPECT_TRUE(trials[0].at("Pulses").empty());
}

// Labels, units and comments ------------------------------------------------------------------------------------------

TEST_F(Collect, LabelsUnitsAndCommentsAreWrittenToEveryTrial) {
    ASSERT_EQ(collect({"--label", "1=V2", "--label", "2=ten charac", "--unit", "1=\u00b5V", "--comment", "first line",
                       "--comment", std::string(60, 'c'), "--trials", "2"}),
              0)
        << stdErr.str();
    for (const char* name : {"Trial0001.lmb", "Trial0002.lmb"}) {
        ASSERT_EQ(run({"show", (out / name).string(), "--json"}), 0);
        const auto shown = nlohmann::json::parse(stdOut.str());
        EXPECT_EQ(shown.at("Labels")[2], "V2");
        EXPECT_EQ(shown.at("Units")[2], "\u00b5V");
        EXPECT_EQ(shown.at("Labels")[3], "ten charac");
        EXPECT_EQ(shown.at("Labels")[1], "Channel 00");
        EXPECT_EQ(shown.at("TrialComments")[0], "first line");
        EXPECT_EQ(shown.at("TrialComments")[1], std::string(60, 'c'));
    }
}

TEST_F(Collect, TextsThatATrialFileCannotHoldAreWrongUsage) {
    const auto refused = [&](std::vector<std::string> arguments) {
        EXPECT_EQ(collect(arguments), 2) << arguments[1];
        EXPECT_TRUE(filesWritten().empty());
        return errorLine();
    };
    for (const char* option : {"--label", "--unit"})
        for (const char* argument : {"64=V2", "-1=V2", "x=V2", "=V2", "V2", "1 =V2", "1.5=V2"})
            EXPECT_THAT(refused({option, argument}),
                        AllOf(HasSubstr(std::string(option) + " takes K=TEXT"), HasSubstr(argument)));
    EXPECT_THAT(refused({"--label", "3=V2"}), AllOf(HasSubstr("--label 3=V2"), HasSubstr("0 to 2")));
    EXPECT_THAT(refused({"--label", "0=elevenchars"}), HasSubstr("at most 10 characters, not \"elevenchars\""));
    EXPECT_THAT(refused({"--unit", "0=\u03a9"}), HasSubstr("cannot hold in \"\u03a9\""));
    EXPECT_THAT(refused({"--unit", "0=a\tb"}), HasSubstr("cannot hold"));
    EXPECT_THAT(refused({"--comment", std::string(61, 'c')}), HasSubstr("at most 60 characters"));
    EXPECT_THAT(refused({"--comment", "\u4e2d"}), HasSubstr("cannot hold"));
    EXPECT_THAT(refused({"--comment", "1", "--comment", "2", "--comment", "3", "--comment", "4", "--comment", "5"}),
                HasSubstr("four comments, not for 5"));
}

} // namespace
} // namespace tavex2::test
