#include "acquisition/SetupFile.h"
#include "app/CommandLineFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST_F(CommandLineTest, WithoutACommandItAsksForTheWindow) {
    EXPECT_EQ(run({}), 0);
    ASSERT_TRUE(result.window);
    EXPECT_EQ(run({"--board", "simulator", "--set", "Rate=10"}), 0);
    EXPECT_EQ(result.window->board, "simulator");
    EXPECT_THAT(result.window->settings, ElementsAre("Rate=10"));
}

TEST_F(CommandLineTest, CollectWritesTheRecordedSamples) {
    ASSERT_EQ(collect({}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.lmb"));
    EXPECT_EQ(fs::file_size(out / "Trial0001.lmb"), 4374U + 4U * 101U * 4U);
    for (int i = 0; i < 101; ++i) {
        EXPECT_EQ(sample("Trial0001.lmb", 101, 0, i), volts(i));
        EXPECT_EQ(sample("Trial0001.lmb", 101, 2, i), volts(-3));
    }
    EXPECT_THAT(stdOut.str(), HasSubstr("Trial0001.lmb: 3 channels x 101 samples at 100 Hz"));
}

TEST_F(CommandLineTest, CollectTriggersWithTheCrossingBehindThePreTrigger) {
    ASSERT_EQ(collect({"--set", "TriggerMode=1", "--set", "TriggerChannel=1", "--set", "TriggerLevel=1"}), 0)
        << stdErr.str();
    EXPECT_EQ(sample("Trial0001.lmb", 101, 1, 10), volts(10000)); // 10 % of 1 s at 100 Hz
    EXPECT_EQ(sample("Trial0001.lmb", 101, 1, 9), volts(0));
    EXPECT_EQ(sample("Trial0001.lmb", 101, 0, 0), volts(140));
}

TEST_F(CommandLineTest, RepeatsAreWrittenUnderNamesOfTheirOwnWithoutAMissingSample) {
    ASSERT_EQ(collect({"--set", "Repeat=3"}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001-r2.lmb", "Trial0001-r3.lmb", "Trial0001.lmb"));
    EXPECT_EQ(sample("Trial0001.lmb", 101, 0, 100), volts(100));
    EXPECT_EQ(sample("Trial0001-r2.lmb", 101, 0, 0), volts(101));
    EXPECT_EQ(sample("Trial0001-r3.lmb", 101, 0, 0), volts(202));
}

TEST_F(CommandLineTest, ExistingFilesAreNeverReplaced) {
    ASSERT_EQ(collect({"--trials", "2"}), 0);
    ASSERT_EQ(collect({}), 0);
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001 (2).lmb", "Trial0001.lmb", "Trial0002.lmb"));
    EXPECT_THAT(stdOut.str(), HasSubstr("Trial0001 (2).lmb"));
}

TEST_F(CommandLineTest, JsonNamesTheFieldsOfTheRecords) {
    ASSERT_EQ(collect({"--json"}), 0);
    const auto json = nlohmann::json::parse(stdOut.str());
    ASSERT_EQ(json.at("Trials").size(), 1U);
    const auto& trial = json.at("Trials")[0];
    EXPECT_EQ(trial.at("TrialName"), "Trial0001");
    EXPECT_EQ(trial.at("NumChannels"), 3);
    EXPECT_EQ(trial.at("NumSamples"), 101);
    EXPECT_EQ(trial.at("Rate"), 100);
    EXPECT_EQ(trial.at("File"), (out / "Trial0001.lmb").string());
}

TEST_F(CommandLineTest, ThePictureShowsTheLastTrialWithItsLabels) {
    ASSERT_EQ(collect({"--plot", (out / "t.png").string()}), 0);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(pictures[0].trial->samples(), 101);
    EXPECT_EQ(pictures[0].title, "Trial0001");
    EXPECT_THAT(pictures[0].labels, ElementsAre("Channel 00", "Channel 01", "Channel 02"));
}

TEST_F(CommandLineTest, AFastRunIsARealRunPulsesIncluded) {
    const auto inputs = [&](const char* speed) {
        std::vector<std::string> arguments{"collect", "--out",         out.string(), "--set",        "Channels=0:1,61",
                                           "--set",   "Duration=0.05", "--set",      "DIOLatency=20"};
        if (*speed != '\0') arguments.emplace_back(speed);
        EXPECT_EQ(run(arguments), 0) << stdErr.str();
    };
    inputs("--fast");
    inputs("--fast");
    EXPECT_EQ(bytesOf(out / "Trial0001.lmb").substr(4374), bytesOf(out / "Trial0001 (2).lmb").substr(4374));
    int high = 0;
    for (int i = 0; i < 51; ++i)
        if (sample("Trial0001.lmb", 51, 2, i) > 2.5F) {
            EXPECT_EQ(i, 20);
            ++high;
        }
    EXPECT_EQ(high, 1) << "a pulse of one millisecond at its latency";
    inputs("");
    for (int channel = 0; channel < 2; ++channel)
        for (int i = 0; i < 51; ++i)
            ASSERT_EQ(sample("Trial0001.lmb", 51, channel, i), sample("Trial0001 (3).lmb", 51, channel, i));
}

TEST_F(CommandLineTest, BadInputIsOneLineAndLeavesNothingBehind) {
    const auto refused = [&](std::vector<std::string> arguments) {
        EXPECT_EQ(collect(std::move(arguments)), 1);
        EXPECT_TRUE(filesWritten().empty());
        return errorLine();
    };
    EXPECT_THAT(refused({"--set", "Rate=0"}), HasSubstr("from 1 to 100000 Hz"));
    EXPECT_THAT(refused({"--set", "Duration=9999"}), HasSubstr("from 0.01 to 3600 s"));
    EXPECT_THAT(refused({"--set", "Rate=200"}), HasSubstr("100 Hz"));
    EXPECT_THAT(refused({"--set", "Channels=0:3"}), HasSubstr("0 to 2"));
    EXPECT_THAT(refused({"--set", "TriggerMode=1", "--set", "TriggerChannel=9"}), HasSubstr("not among"));
    EXPECT_THAT(refused({"--plot", (folder / "none" / "p.png").string()}), HasSubstr("does not exist"));
}

TEST_F(CommandLineTest, AFolderThatCannotTakeTheTrialIsRefusedBeforeItIsCollected) {
    const auto into = [&](const fs::path& where) {
        EXPECT_EQ(run({"collect", "--fast", "--out", where.string()}), 1);
        return errorLine();
    };
    EXPECT_THAT(into(folder / "missing"), AllOf(HasSubstr("does not exist"), HasSubstr("Create it")));
    EXPECT_THAT(into(folder / "rec.wav"), HasSubstr("not a folder"));
    EXPECT_THAT(into("/proc"), AllOf(HasSubstr("/proc"), HasSubstr("hoose another one")));
}

TEST_F(CommandLineTest, BoardsThatCannotBeUsedAreNamed) {
    const auto board = [&](const std::string& spec) {
        EXPECT_EQ(run({"collect", "--fast", "--out", out.string(), "--board", spec}), 1);
        EXPECT_TRUE(filesWritten().empty());
        return errorLine();
    };
    EXPECT_THAT(board("recording:" + (folder / "missing.wav").string()), HasSubstr("missing.wav"));
    EXPECT_THAT(board("recording:"), HasSubstr("Name the file"));
    EXPECT_THAT(board("toaster"), HasSubstr("no kind of board"));
    EXPECT_THAT(board("7"), HasSubstr("no board number 7"));
    EXPECT_THAT(board("simulator:speed=1"), HasSubstr("no option"));
    EXPECT_THAT(board("simulator:fail=refuse"), HasSubstr("-10009"));
    EXPECT_THAT(board("simulator:fail=open"), HasSubstr("-10008"));
}

TEST_F(CommandLineTest, ABoardThatFailsLeavesWhatHadArrivedInAFileOfItsOwn) {
    EXPECT_EQ(run({"collect", "--fast", "--out", out.string(), "--board", "simulator:fail=vanish@500"}), 1);
    EXPECT_THAT(errorLine(), AllOf(HasSubstr("-10010"), HasSubstr("scan 500 of 2001"), HasSubstr("no longer answers")));
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001-partial.lmb"));
    EXPECT_EQ(fs::file_size(out / "Trial0001-partial.lmb"), 4374U + 4U * 500U * 3U);
}

TEST_F(CommandLineTest, WrongUsageIsExitCodeTwo) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"frobnicate"},
                                               {"collect", "--trials", "0"},
                                               {"collect", "--format", "xyz"},
                                               {"show"},
                                               {"plot", "a.lmb"},
                                               {"plot", "a.lmb", "a.doc"},
                                               {"plot", "a.lmb", "a.png", "--width", "199"},
                                               {"plot", "a.lmb", "a.png", "--height", "10001"},
                                               {"measure", "a.lmb", "--from", "nan"},
                                               {"measure", "a.lmb", "--to", "inf"},
                                               {"tone", "t.wav", "--frequency", "nan"},
                                               {"tone", "t.wav", "--duration", "nan"},
                                               {"convert", "a.lmb", "a"},
                                               {"overlay", "a.lmb", "a.tab"},
                                               {"show", ""},
                                               {"collect", "--out", ""},
                                               {""},
                                               {"collect", "--bogus"}}) {
        EXPECT_EQ(run(arguments), 2);
        errorLine();
    }
    EXPECT_EQ(collect({"--set", "Speed=1"}), 2);
    EXPECT_THAT(errorLine(), HasSubstr("no setting named"));
    EXPECT_EQ(collect({"--set", "Rate"}), 2);
    EXPECT_THAT(errorLine(), HasSubstr("NAME=VALUE"));
}

TEST_F(CommandLineTest, OptionsThatACommandDoesNotUseAreRefused) {
    for (const std::vector<std::string>& before :
         std::vector<std::vector<std::string>>{{"--board", "simulator"}, {"--set", "Rate=10"}, {"a.lmb"}}) {
        std::vector<std::string> arguments = before;
        arguments.emplace_back("boards");
        EXPECT_EQ(run(arguments), 2) << before.front();
        EXPECT_THAT(errorLine(), HasSubstr("'boards' does not use"));
        EXPECT_EQ(stdOut.str(), "");
    }
    EXPECT_EQ(run({"boards", "--board", "simulator"}), 2);
    errorLine();
}

TEST_F(CommandLineTest, MoreTrialsThanCanBeOverlaidAreWrongUsage) {
    std::vector<std::string> arguments{"overlay"};
    arguments.insert(arguments.end(), 17, "a.lmb");
    arguments.emplace_back("mean.lma");
    EXPECT_EQ(run(arguments), 2);
    EXPECT_THAT(errorLine(), HasSubstr("At most 16"));
}

TEST_F(CommandLineTest, HelpAndVersionGoToStandardOutput) {
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_THAT(stdOut.str(), testing::StartsWith("tavex2 "));
    EXPECT_FALSE(result.window);
    EXPECT_EQ(run({"collect", "--help"}), 0);
    EXPECT_THAT(stdOut.str(), AllOf(HasSubstr("--board"), HasSubstr("--fast"), HasSubstr("--plot")));
}

TEST_F(CommandLineTest, ShowGivesTheHeaderAndTheChannels) {
    ASSERT_EQ(collect({}), 0);
    ASSERT_EQ(run({"show", (out / "Trial0001.lmb").string(), "--json"}), 0);
    const auto json = nlohmann::json::parse(stdOut.str());
    EXPECT_EQ(json.at("NumChannels"), 3);
    EXPECT_EQ(json.at("NumSamples"), 101);
    EXPECT_EQ(json.at("Rate"), 100.0);
    EXPECT_EQ(json.at("Duration"), 1.0);
    EXPECT_EQ(json.at("Labels"), (nlohmann::json{"Time", "Channel 00", "Channel 01", "Channel 02"}));
    EXPECT_EQ(json.at("Units"), (nlohmann::json{"s", "V", "V", "V"}));
    EXPECT_EQ(json.at("ChannelNumber"), (nlohmann::json{-1, 0, 1, 2}));
    EXPECT_EQ(json.at("TrialComments").size(), 4U);
    EXPECT_EQ(json.at("Channels")[0].at("Maximum"), static_cast<double>(volts(100)));
    EXPECT_EQ(json.at("Channels")[2].at("Mean"), static_cast<double>(volts(-3)));

    ASSERT_EQ(run({"show", (out / "Trial0001.lmb").string()}), 0);
    EXPECT_THAT(stdOut.str(), AllOf(HasSubstr("Tavex2 analog data file."), HasSubstr("Channel 02")));
}

TEST_F(CommandLineTest, MeasureGivesTheReadingsOfAStretch) {
    ASSERT_EQ(collect({}), 0);
    const std::string file = (out / "Trial0001.lmb").string();
    ASSERT_EQ(run({"measure", file, "--from", "0.105", "--to", "0.5", "--json"}), 0) << stdErr.str();
    const auto json = nlohmann::json::parse(stdOut.str());
    EXPECT_EQ(json.at("Channel"), 0);
    EXPECT_DOUBLE_EQ(json.at("from"), 0.11) << "the first sample inside";
    EXPECT_DOUBLE_EQ(json.at("to"), 0.5);
    EXPECT_DOUBLE_EQ(json.at("Interval"), 0.39);
    EXPECT_EQ(json.at("Minimum"), static_cast<double>(volts(11)));
    EXPECT_EQ(json.at("Maximum"), static_cast<double>(volts(50)));
    EXPECT_EQ(json.at("PeakToPeak"), static_cast<double>(volts(50)) - static_cast<double>(volts(11)));
    // A straight line: the mean of the stretch times its samples.
    EXPECT_NEAR(json.at("Integral"), static_cast<double>(volts(11) + volts(50)) / 2 * 40 / 100, 1e-6);

    ASSERT_EQ(run({"measure", file, "--channel", "2", "--rectify"}), 0);
    EXPECT_THAT(stdOut.str(), AllOf(HasSubstr("Trial0001\tChannel 02\tV\t0.0000\t1.0000\t1.0000\t0.0"),
                                    HasSubstr("Peak-to-Peak (V)")));
}

TEST_F(CommandLineTest, AStretchOfNothingButNaNHasNoNumbers) {
    ASSERT_EQ(collect({}), 0);
    const fs::path file = out / "Trial0001.lmb";
    constexpr std::streamoff firstVolts = 4374 + 4 * 101; // behind records and times
    std::fstream(file, std::ios::in | std::ios::out | std::ios::binary)
        .seekp(firstVolts)
        .write(std::string(4 * 101, '\xFF').data(), 4 * 101); // the first channel's samples, as NaN
    ASSERT_EQ(run({"measure", file.string()}), 0) << stdErr.str();
    EXPECT_THAT(stdOut.str(), HasSubstr("\t1.0000\tno number\tno number\tno number\tno number\n"));
    ASSERT_EQ(run({"measure", file.string(), "--json"}), 0);
    const auto json = nlohmann::json::parse(stdOut.str());
    for (const char* none : {"Minimum", "Maximum", "PeakToPeak", "Integral"})
        EXPECT_TRUE(json.at(none).is_null()) << none;
    EXPECT_EQ(json.at("Interval"), 1.0);
    ASSERT_EQ(run({"measure", file.string(), "--channel", "1"}), 0);
    EXPECT_THAT(stdOut.str(), Not(HasSubstr("no number"))) << "the other channels have theirs";
}

TEST_F(CommandLineTest, MeasureSaysWhatItCannotMeasure) {
    ASSERT_EQ(collect({}), 0);
    const std::string file = (out / "Trial0001.lmb").string();
    for (const auto& [arguments, said] : std::vector<std::pair<std::vector<std::string>, std::string>>{
             {{"--channel", "3"}, "no channel 3"},
             {{"--channel", "-1"}, "no channel -1"},
             {{"--from", "0.5", "--to", "0.4"}, "behind --to"},
             {{"--from", "0.501", "--to", "0.502"}, "no sample between"},
             {{"--from", "7"}, "behind --to"},
             {{"--from", "7", "--to", "8"}, "no sample between"}}) {
        std::vector<std::string> all{"measure", file};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(run(all), 1);
        EXPECT_THAT(errorLine(), HasSubstr(said));
    }
}

TEST_F(CommandLineTest, OverlayWritesTheMeanOfTrials) {
    ASSERT_EQ(collect({"--trials", "2"}), 0);
    const std::string first = (out / "Trial0001.lmb").string();
    const std::string second = (out / "Trial0002.lmb").string();
    const fs::path table = out / "mean.lma";
    ASSERT_EQ(run({"overlay", first, second, table.string()}), 0) << stdErr.str();
    const std::string text = bytesOf(table);
    EXPECT_THAT(text, testing::StartsWith("* Trial0002.lma\r\n* Trial0002.lma\r\n"
                                          "* Tavex2 data acquisition overlay file\r\n"));
    EXPECT_EQ(std::ranges::count(text, '\n'), 8 + 101);

    EXPECT_EQ(run({"overlay", first, second, (out / "mean.lmb").string()}), 2);
    EXPECT_THAT(errorLine(), HasSubstr("does not end in .lma"));
    ASSERT_EQ(collect({"--set", "Duration=0.5"}), 0);
    EXPECT_EQ(run({"overlay", first, (out / "Trial0001 (2).lmb").string(), table.string()}), 1);
    EXPECT_THAT(errorLine(), AllOf(HasSubstr("Trial0001 (2).lmb"), HasSubstr("properties are not the same")));
    EXPECT_EQ(bytesOf(table), text) << "a refused overlay leaves the table alone";
    EXPECT_EQ(run({"overlay", first}), 2);
}

TEST_F(CommandLineTest, OverlayRefusesTrialsOfOneChannel) {
    ASSERT_EQ(collect({"--set", "Channels=0"}), 0);
    EXPECT_EQ(run({"overlay", (out / "Trial0001.lmb").string(), (out / "m.lma").string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("one channel"));
    EXPECT_FALSE(fs::exists(out / "m.lma"));
}

TEST_F(CommandLineTest, CollectWritesStimulusFilesToo) {
    ASSERT_EQ(collect({"--format", "plv"}), 0);
    ASSERT_EQ(collect({"--format", "plv"}), 0);
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001 (2).plv", "Trial0001.plv"));
    EXPECT_EQ(bytesOf(out / "Trial0001.plv"), bytesOf(out / "Trial0001 (2).plv"));
}

TEST_F(CommandLineTest, ShowAndPlotTakeStimulusFiles) {
    ASSERT_EQ(collect({}), 0);
    const std::string file = (out / "t.plv").string();
    ASSERT_EQ(run({"convert", (out / "Trial0001.lmb").string(), file}), 0);
    ASSERT_EQ(run({"show", file, "--json"}), 0);
    const auto json = nlohmann::json::parse(stdOut.str());
    EXPECT_EQ(json.at("NumChannels"), 3);
    EXPECT_EQ(json.at("NumSamples"), 101);
    EXPECT_EQ(json.at("Rate"), 100);
    EXPECT_EQ(json.at("Settings").at("Channels"), "0:2");
    EXPECT_EQ(json.at("Channels")[0].at("Maximum"), static_cast<double>(volts(100)));
    ASSERT_EQ(run({"show", file}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("NumSamples        101"));
    ASSERT_EQ(run({"plot", file, (out / "p.png").string()}), 0);
    EXPECT_EQ(pictures.at(0).labels, (std::vector<std::string>{"Channel 00", "Channel 01", "Channel 02"}));
}

TEST_F(CommandLineTest, ShowAndPlotSayWhatIsWrongWithAFile) {
    EXPECT_EQ(run({"show", (folder / "missing.lmb").string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("missing.lmb"));
    EXPECT_EQ(run({"plot", (folder / "rec.wav").string(), (out / "p.png").string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("rec.wav"));
    EXPECT_TRUE(pictures.empty());
}

TEST_F(CommandLineTest, PlotDrawsATrialFile) {
    ASSERT_EQ(collect({}), 0);
    ASSERT_EQ(run({"plot", (out / "Trial0001.lmb").string(), (out / "p.png").string(), "--width", "640"}), 0);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(pictures[0].widthPixels, 640);
    EXPECT_EQ(pictures[0].heightPixels, 600);
    EXPECT_EQ(pictures[0].rateHz, 100);
}

TEST_F(CommandLineTest, ASetupFileGivesTheSettingsAndArgumentsComeAfterIt) {
    AcqSettings settings;
    settings.sampling.Channels.assign("2,0");
    settings.sampling.Rate = 100;
    settings.sampling.Duration = 0.5F;
    settings.setup.FilePrefix = "Protocol";
    ASSERT_TRUE(writeSetupFile(folder / "p.set", settings));
    ASSERT_EQ(run({"collect", "--fast", "--setup", (folder / "p.set").string(), "--set", "Duration=0.2", "--board",
                   "recording:" + (folder / "rec.wav").string(), "--out", out.string()}),
              0)
        << stdErr.str();
    EXPECT_EQ(sample("Protocol0001.lmb", 21, 1, 20), volts(20));

    ASSERT_EQ(run({"show", (folder / "p.set").string(), "--json"}), 0);
    const auto json = nlohmann::json::parse(stdOut.str());
    EXPECT_EQ(json.size(), 38U + 1U) << "the file's, and the program's own";
    EXPECT_EQ(json.at("FilePrefix"), "Protocol");
    EXPECT_EQ(json.at("Channels"), "2,0");
    EXPECT_EQ(json.at("Duration"), 0.5);
    EXPECT_EQ(json.at("DIOLatency").size(), 8U);
    EXPECT_EQ(json.at("TriggerRising"), true);
}

TEST_F(CommandLineTest, ASetupFileThatCannotBeUsedIsOneLine) {
    const auto with = [&](const std::string& name) {
        EXPECT_EQ(collect({"--setup", (folder / name).string()}), 1);
        EXPECT_TRUE(filesWritten().empty());
        return errorLine();
    };
    EXPECT_THAT(with("missing.set"), HasSubstr("missing.set does not exist"));
    std::ofstream(folder / "short.set").write("\x01\0\0", 3);
    EXPECT_THAT(with("short.set"), HasSubstr("ends too soon"));
    AcqSettings settings;
    settings.sampling.Repeat = -2;
    ASSERT_TRUE(writeSetupFile(folder / "wild.set", settings));
    EXPECT_THAT(with("wild.set"), HasSubstr("Repeat must be a whole number from 1 to 500"));
    std::ofstream(folder / "new.set", std::ios::binary) << '\x03' << encodeSetup(settings).substr(1);
    EXPECT_THAT(with("new.set"), HasSubstr("version number"));
}

TEST_F(CommandLineTest, APrefixOfASetupFileWithAControlCharacterIsRefusedByName) {
    AcqSettings settings;
    settings.setup.FilePrefix = std::string("a\0b", 3);
    ASSERT_TRUE(writeSetupFile(folder / "control.set", settings));
    EXPECT_EQ(collect({"--setup", (folder / "control.set").string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("FilePrefix cannot hold control characters, as \"a\\u0000b\" does."));
    EXPECT_TRUE(filesWritten().empty());
}

TEST_F(CommandLineTest, ASavedTrialCanPlayTheBoardsPart) {
    ASSERT_EQ(collect({}), 0);
    EXPECT_EQ(
        run({"collect", "--fast", "--out", out.string(), "--board", "recording:" + (out / "Trial0001.lmb").string(),
             "--set", "Rate=100", "--set", "Duration=0.5", "--set", "Channels=2,0", "--set", "FilePrefix=Again"}),
        0)
        << stdErr.str();
    EXPECT_EQ(sample("Again0001.lmb", 51, 1, 50), volts(50));
}

TEST_F(CommandLineTest, BoardsListsWhatCanBeUsed) {
    ASSERT_EQ(run({"boards"}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("1  Simulated board (simulator)"));
    store.values["Tavex2/Startup/Boards"] = "simulator:seed=2;recording:" + (folder / "rec.wav").string();
    ASSERT_EQ(run({"boards", "--json"}), 0);
    const auto json = nlohmann::json::parse(stdOut.str());
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[1].at("Device"), 2);
    EXPECT_EQ(json[1].at("Inputs"), 3);
    EXPECT_EQ(run({"collect", "--fast", "--out", out.string(), "--board", "2", "--set", "Rate=100"}), 0)
        << stdErr.str();
}

// Formats -------------------------------------------------------------------------------------------------------------

TEST_F(CommandLineTest, CollectWritesEveryFormatAskedFor) {
    ASSERT_EQ(collect({"--format", "lmb", "--format", "tab", "--format", "lma", "--json"}), 0) << stdErr.str();
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.lma", "Trial0001.lmb", "Trial0001.tab"));
    const auto trial = nlohmann::json::parse(stdOut.str()).at("Trials").at(0);
    EXPECT_EQ(trial.at("File"), (out / "Trial0001.lmb").string());
    EXPECT_EQ(trial.at("Files").size(), 3U);
    EXPECT_TRUE(bytesOf(out / "Trial0001.tab").starts_with("Tavex2 data acquisition file\r\n"));
    EXPECT_EQ(run({"collect", "--format", "doc"}), 2);
}

TEST_F(CommandLineTest, ConvertWritesATrialInAnotherFormat) {
    ASSERT_EQ(collect({"--format", "lmb", "--format", "lma"}), 0);
    const std::string trial = (out / "Trial0001.lmb").string();
    ASSERT_EQ(run({"convert", trial, (folder / "Trial0001.lma").string()}), 0) << stdErr.str();
    ASSERT_EQ(run({"convert", trial, (folder / "t.tab").string()}), 0) << stdErr.str();
    ASSERT_EQ(run({"convert", trial, (folder / "copy.lmb").string()}), 0) << stdErr.str();
    // The volts of a 16-bit recording survive float32, so both ways give the same table.
    EXPECT_EQ(bytesOf(folder / "Trial0001.lma"), bytesOf(out / "Trial0001.lma"));
    EXPECT_EQ(bytesOf(folder / "copy.lmb").substr(180), bytesOf(trial).substr(180)) << "all but the title";
    const std::string stimulus = (folder / "Trial0001.plv").string();
    ASSERT_EQ(run({"convert", trial, stimulus}), 0) << stdErr.str();
    fs::remove(folder / "Trial0001.lma");
    ASSERT_EQ(run({"convert", stimulus, (folder / "Trial0001.lma").string()}), 0) << stdErr.str();
    EXPECT_EQ(bytesOf(folder / "Trial0001.lma"), bytesOf(out / "Trial0001.lma"));
    EXPECT_EQ(run({"convert", trial, (folder / "t.doc").string()}), 2);
    errorLine();
    EXPECT_EQ(run({"convert", (folder / "missing.lmb").string(), (folder / "t.tab").string()}), 1);
    errorLine();
}

// Sound ---------------------------------------------------------------------------------------------------------------

TEST_F(CommandLineTest, ToneWritesTheStimulusTone) {
    ASSERT_EQ(run({"tone", (folder / "tone.wav").string()}), 0) << stdErr.str();
    const std::string bytes = bytesOf(folder / "tone.wav");
    ASSERT_EQ(bytes.size(), 11069U);
    std::vector<int> first;
    for (std::size_t i = 44; i < 50; ++i)
        first.push_back(static_cast<unsigned char>(bytes[i]));
    EXPECT_THAT(first, ElementsAre(128, 146, 163, 176, 186, 191));
}

TEST_F(CommandLineTest, AShorterToneTakesThePlaceOfALongerOne) {
    const std::string file = (folder / "tone.wav").string();
    ASSERT_EQ(run({"tone", file, "--duration", "2", "--frequency", "1000"}), 0);
    EXPECT_EQ(fs::file_size(file), 44U + 22050U);
    ASSERT_EQ(run({"tone", file, "--duration", "0"}), 0);
    EXPECT_EQ(fs::file_size(file), 44U);
}

TEST_F(CommandLineTest, AToneThatCannotBeWrittenIsToldInOneLine) {
    EXPECT_EQ(run({"tone", (folder / "missing" / "tone.wav").string()}), 1);
    errorLine();
    for (const char* wrong : {"--duration=-1", "--duration=long", "--frequency=0", "--frequency=20000"}) {
        EXPECT_EQ(run({"tone", (folder / "tone.wav").string(), wrong}), 2) << wrong;
        errorLine();
    }
    EXPECT_EQ(run({"tone"}), 2);
}

TEST_F(CommandLineTest, CollectPlaysTheToneOfTheSettingsAndLetsItSound) {
    ASSERT_EQ(run({"collect", "--out", out.string(), "--set", "Duration=0.02", "--set", "DIOMask=0", "--set",
                   "SoundBefore=1", "--set", "SoundFreq=800", "--set", "SoundDuration=0.1"}),
              0)
        << stdErr.str();
    ASSERT_EQ(run({"tone", (folder / "same.wav").string(), "--frequency", "800", "--duration", "0.1"}), 0);
    EXPECT_THAT(heard, ElementsAre(bytesOf(folder / "same.wav"), "finished"));
}

TEST_F(CommandLineTest, CollectOpensNoSoundThatNobodyAskedFor) {
    ASSERT_EQ(collect({}), 0);
    ASSERT_EQ(collect({"--set", "SoundBefore=1"}), 0) << "fast runs are silent";
    EXPECT_EQ(soundsOpened, 0);
}

TEST_F(CommandLineTest, CollectSaysWhenAToneCannotBeHeard) {
    soundDevices = 0;
    ASSERT_EQ(run({"collect", "--out", out.string(), "--set", "Duration=0.02", "--set", "DIOMask=0", "--set",
                   "SoundAfter=1"}),
              0);
    EXPECT_THAT(errorLine(), HasSubstr("no sound output"));
    EXPECT_THAT(filesWritten(), ElementsAre("Trial0001.lmb"));
}

// Opening a file ------------------------------------------------------------------------------------------------------

TEST_F(CommandLineTest, ASetupFileAsksForTheWindow) {
    ASSERT_TRUE(writeSetupFile(folder / "Protocol.SET", AcqSettings{}));
    EXPECT_EQ(run({(folder / "Protocol.SET").string(), "--board", "simulator"}), 0) << stdErr.str();
    ASSERT_TRUE(result.window);
    EXPECT_THAT(result.window->files, ElementsAre(folder / "Protocol.SET"));
    EXPECT_EQ(result.window->board, "simulator");
}

TEST_F(CommandLineTest, SeveralFilesAskForOneWindow) {
    ASSERT_EQ(collect({"--trials", "2"}), 0);
    const fs::path first = out / "Trial0001.lmb";
    const fs::path second = out / "Trial0002.lmb";
    EXPECT_EQ(run({first.string(), second.string(), "--set", "Rate=10"}), 0) << stdErr.str();
    ASSERT_TRUE(result.window);
    EXPECT_THAT(result.window->files, ElementsAre(first, second));
    EXPECT_THAT(result.window->settings, ElementsAre("Rate=10"));

    EXPECT_EQ(run({first.string(), (folder / "missing.lmb").string()}), 1);
    EXPECT_THAT(errorLine(), AllOf(HasSubstr("There is no file"), HasSubstr("missing.lmb")));
    EXPECT_FALSE(result.window);
    EXPECT_EQ(run({first.string(), "show"}), 2) << "a command takes its files behind it";
    EXPECT_EQ(run({first.string(), "notes.txt"}), 2);
}

TEST_F(CommandLineTest, WhatIsNeitherACommandNorASetupFileIsWrongUsage) {
    EXPECT_EQ(run({"colect"}), 2);
    EXPECT_THAT(errorLine(), HasSubstr("'colect' is neither a command nor a trial file"));
    EXPECT_FALSE(result.window);
    EXPECT_EQ(run({(folder / "missing.set").string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("There is no file"));
}

} // namespace
} // namespace tavex2::test
