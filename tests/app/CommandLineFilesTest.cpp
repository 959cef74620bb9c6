#include "acquisition/SetupFile.h"
#include "app/CommandLineFixture.h"
#include "app/cli/LastResort.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <new>

/// What the command line makes of the files that it is given.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(CommandLineTest, CapitalsInAnExtensionMakeNoDifference) {
    ASSERT_EQ(collect({}), 0);
    const std::string capital = (folder / "TRIAL.LMB").string();
    fs::rename(out / "Trial0001.lmb", capital);
    const std::string stimulus = (folder / "TRIAL.PLV").string();
    ASSERT_EQ(run({"convert", capital, stimulus}), 0) << stdErr.str();
    EXPECT_TRUE(bytesOf(stimulus).starts_with("PLV"));
    ASSERT_EQ(run({"show", stimulus, "--json"}), 0) << stdErr.str();
    EXPECT_EQ(nlohmann::json::parse(stdOut.str()).at("NumSamples"), 101);
    ASSERT_EQ(run({"convert", stimulus, (folder / "TRIAL.TAB").string()}), 0) << stdErr.str();
    ASSERT_EQ(run({"plot", stimulus, (folder / "p.png").string()}), 0) << stdErr.str();

    ASSERT_TRUE(writeSetupFile(folder / "PROTOCOL.SET", AcqSettings{}));
    ASSERT_EQ(run({"show", (folder / "PROTOCOL.SET").string()}), 0) << stdErr.str();
    EXPECT_THAT(stdOut.str(), HasSubstr("FilePrefix"));

    EXPECT_EQ(run({"collect", "--fast", "--out", out.string(), "--board", "recording:" + capital, "--set", "Rate=100",
                   "--set", "Duration=0.5"}),
              0)
        << stdErr.str();
}

/// Puts text into the fixed places of a trial file.
void overwrite(const fs::path& file, std::size_t at, const std::string& text) {
    std::fstream(file, std::ios::binary | std::ios::in | std::ios::out)
        .seekp(static_cast<std::streamoff>(at))
        .write(text.data(), static_cast<std::streamsize>(text.size()));
}

constexpr std::size_t firstLabelAt = 2292;
constexpr std::size_t firstUnitAt = 2942;
constexpr std::size_t commentsAt = 4130;
constexpr std::size_t rateAt = 186;

std::string rateBytes(double hertz) {
    std::string bytes(sizeof hertz, '\0');
    std::memcpy(bytes.data(), &hertz, sizeof hertz);
    return bytes;
}

TEST_F(CommandLineTest, ATrialFileWithoutIdentificationOpensAsInTheWindow) {
    ASSERT_EQ(collect({}), 0);
    const std::string trial = (out / "Trial0001.lmb").string();
    const std::string foreign = (folder / "foreign.lmb").string();
    std::ofstream(foreign, std::ios::binary) << bytesOf(trial).substr(80);
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"show", foreign, "--json"},
                                               {"measure", foreign, "--json"},
                                               {"plot", foreign, (folder / "p.png").string()},
                                               {"convert", foreign, (folder / "back.lmb").string()}}) {
        EXPECT_EQ(run(arguments), 0) << arguments.front();
        EXPECT_THAT(errorLine(),
                    AllOf(HasSubstr("foreign.lmb"), HasSubstr("File format was not a Lumidor2 binary file (.LMB)")));
    }
    EXPECT_EQ(bytesOf(folder / "back.lmb"), bytesOf(trial));

    EXPECT_EQ(run({"collect", "--fast", "--out", out.string(), "--board", "recording:" + foreign, "--set", "Rate=100",
                   "--set", "Duration=0.5", "--set", "FilePrefix=Again", "--json"}),
              0)
        << stdErr.str();
    EXPECT_EQ(sample("Again0001.lmb", 51, 0, 50), volts(50));
    EXPECT_THAT(nlohmann::json::parse(stdOut.str()).at("Board").get<std::string>(),
                HasSubstr("foreign.lmb (without identification)"));

    std::ofstream(foreign, std::ios::binary) << bytesOf(trial).substr(81);
    EXPECT_EQ(run({"collect", "--fast", "--out", out.string(), "--board", "recording:" + foreign}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("does not start with"));
    EXPECT_EQ(run({"show", foreign}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("does not start with")) << "a file of quite another kind is told once";
}

TEST_F(CommandLineTest, ConvertKeepsTheTrialsOwnNumberAndTime) {
    ASSERT_EQ(collect({"--trials", "2"}), 0);
    const fs::path trial = out / "Trial0002.lmb";
    overwrite(trial, 80, "Tavex2 analog data file.  Trial 0002  1999-12-31 23.59.58");
    ASSERT_EQ(run({"convert", trial.string(), (folder / "copy.lmb").string()}), 0) << stdErr.str();
    EXPECT_EQ(bytesOf(folder / "copy.lmb"), bytesOf(trial));
}

TEST_F(CommandLineTest, ConvertKeepsTheTailOfAStimulusFileThatItReplaces) {
    ASSERT_EQ(collect({}), 0);
    const std::string trial = (out / "Trial0001.lmb").string();
    ASSERT_EQ(run({"convert", trial, (folder / "new.plv").string()}), 0);
    std::ofstream(folder / "old.plv") << std::string(9000, 'x');
    ASSERT_EQ(run({"convert", trial, (folder / "old.plv").string()}), 0);
    const std::string fresh = bytesOf(folder / "new.plv");
    EXPECT_EQ(bytesOf(folder / "old.plv"), fresh + std::string(9000 - fresh.size(), 'x'));
}

TEST_F(CommandLineTest, TextFromAFileIsShownAndNeverObeyed) {
    ASSERT_EQ(collect({"--set", "Channels=0"}), 0);
    const fs::path trial = out / "Trial0001.lmb";
    overwrite(trial, firstLabelAt,
              "a\x1b[31m\x9b"
              "2J ");
    overwrite(trial, commentsAt, "first\rsecond");
    ASSERT_EQ(run({"show", trial.string()}), 0);
    EXPECT_THAT(stdOut.str(), AllOf(HasSubstr("a\\u001b[31m"), HasSubstr("first\\u000dsecond")));
    EXPECT_EQ(stdOut.str().find('\x1b'), std::string::npos);
    ASSERT_EQ(run({"show", trial.string(), "--json"}), 0);
    EXPECT_EQ(stdOut.str().find('\x1b'), std::string::npos);
    EXPECT_TRUE(nlohmann::json::accept(stdOut.str())) << stdOut.str();
    ASSERT_EQ(run({"measure", trial.string()}), 0);
    EXPECT_EQ(stdOut.str().find('\x1b'), std::string::npos);

    EXPECT_EQ(run({"show", (folder / "evil\x1b[31m\nname.lmb").string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("evil\\u001b[31m"));
}

TEST_F(CommandLineTest, ShowPadsByCharacters) {
    ASSERT_EQ(collect({"--set", "Channels=0:1"}), 0);
    const fs::path trial = out / "Trial0001.lmb";
    overwrite(trial, firstLabelAt, "M\xfcller    ");
    overwrite(trial, firstUnitAt, "\xb5V        ");
    ASSERT_EQ(run({"show", trial.string()}), 0);
    EXPECT_THAT(stdOut.str(), AllOf(HasSubstr("\nM\u00fcller      \u00b5V               0.00000     0.03052"),
                                    HasSubstr("\nChannel 01  V                0.00000     0.00000")));
}

TEST_F(CommandLineTest, NumbersAreAsShortAsTheyAreExact) {
    ASSERT_EQ(collect({"--set", "Duration=0.05"}), 0);
    const std::string trial = (out / "Trial0001.lmb").string();
    ASSERT_EQ(run({"show", trial, "--json"}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("\"Duration\": 0.05,"));
    ASSERT_EQ(run({"show", trial}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("Duration    0.05 s\n"));
    ASSERT_EQ(run({"convert", trial, (folder / "t.plv").string()}), 0);
    ASSERT_EQ(run({"show", (folder / "t.plv").string(), "--json"}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("\"Duration\": 0.05,"));
    AcqSettings settings;
    settings.sampling.UpperVolts = 0.1F;
    ASSERT_TRUE(writeSetupFile(folder / "s.set", settings));
    ASSERT_EQ(run({"show", (folder / "s.set").string(), "--json"}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("\"UpperVolts\": 0.1,"));
}

TEST_F(CommandLineTest, ShowTellsTheOwnSettingsThatBelongToASetupFile) {
    const std::string setup = (folder / "s.set").string();
    ASSERT_TRUE(writeSetupFile(setup, AcqSettings{}));
    ASSERT_EQ(run({"show", setup}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("\nAutosaveWithoutAsking  false\n"));
    std::ofstream(setup + ".json") << R"({"AutosaveWithoutAsking": true})";
    ASSERT_EQ(run({"show", setup}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("\nAutosaveWithoutAsking  true\n"));
    ASSERT_EQ(run({"show", setup, "--json"}), 0);
    EXPECT_EQ(nlohmann::json::parse(stdOut.str()).at("AutosaveWithoutAsking"), true);
    EXPECT_EQ(stdErr.str(), "");
    std::ofstream(setup + ".json") << R"({"Soon": true})";
    ASSERT_EQ(run({"show", setup, "--json"}), 0);
    EXPECT_EQ(nlohmann::json::parse(stdOut.str()).at("AutosaveWithoutAsking"), false);
    EXPECT_THAT(errorLine(), HasSubstr("s.set.json: There is no setting named \"Soon\"."));
}

TEST_F(CommandLineTest, CollectTakesTheProgramsOwnSettingsByNameAndWithASetupFile) {
    EXPECT_EQ(collect({"--set", "AutosaveWithoutAsking=True"}), 0) << stdErr.str();
    EXPECT_EQ(collect({"--set", "AutosaveWithoutAsking=5"}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("AutosaveWithoutAsking must be True or False, not \"5\"."));
    EXPECT_EQ(collect({"--set", "Ratte=5"}), 2);
    EXPECT_THAT(errorLine(),
                HasSubstr("There is no setting named \"Ratte\". The settings are those of the setup, such as "
                          "Channels, Rate, Duration, Repeat and FilePrefix. The program's own are "
                          "AutosaveWithoutAsking (autosave shows no dialog and never replaces a file)."));

    const std::string setup = (folder / "s.set").string();
    ASSERT_TRUE(writeSetupFile(setup, AcqSettings{}));
    std::ofstream(setup + ".json") << R"({"AutosaveWithoutAsking": 3})";
    EXPECT_EQ(collect({"--setup", setup}), 0);
    EXPECT_THAT(errorLine(), HasSubstr("AutosaveWithoutAsking must be true or false, not \"3\". What could not be read "
                                       "has its default"));
}

TEST_F(CommandLineTest, AChannelWithoutANumberSaysSo) {
    ASSERT_EQ(collect({"--set", "Channels=0", "--set", "Duration=0.01"}), 0); // two samples
    const fs::path trial = out / "Trial0001.lmb";
    overwrite(trial, 4374 + 8, std::string("\0\0\xc0\x7f\0\0\xc0\x7f", 8));
    ASSERT_EQ(run({"show", trial.string()}), 0);
    EXPECT_THAT(stdOut.str(), HasSubstr("   no number   no number   no number\n"));
    ASSERT_EQ(run({"show", trial.string(), "--json"}), 0);
    EXPECT_TRUE(nlohmann::json::parse(stdOut.str()).at("Channels")[0].at("Minimum").is_null());
}

TEST_F(CommandLineTest, ARateThatWouldRoundToNothingIsRefused) {
    ASSERT_EQ(collect({}), 0);
    const fs::path trial = out / "Trial0001.lmb";
    for (const double hertz : {0.4, 0.5}) {
        overwrite(trial, rateAt, rateBytes(hertz));
        EXPECT_EQ(run({"convert", trial.string(), (folder / "t.plv").string()}), 1);
        EXPECT_THAT(errorLine(), AllOf(HasSubstr(hertz == 0.4 ? "at 0.4 Hz" : "at 0.5 Hz"), HasSubstr("rounded")));
        EXPECT_FALSE(fs::exists(folder / "t.plv"));
    }
    overwrite(trial, rateAt, rateBytes(0.51));
    EXPECT_EQ(run({"convert", trial.string(), (folder / "t.plv").string()}), 0) << stdErr.str();
}

TEST_F(CommandLineTest, AStimulusFileWithoutARateIsNotDrawn) {
    ASSERT_EQ(collect({"--format", "plv"}), 0);
    overwrite(out / "Trial0001.plv", 88, std::string(4, '\0'));
    EXPECT_EQ(run({"plot", (out / "Trial0001.plv").string(), (folder / "p.png").string()}), 1);
    EXPECT_THAT(errorLine(), HasSubstr("no sampling rate"));
}

TEST_F(CommandLineTest, APictureIsDrawnByItsExtension) {
    ASSERT_EQ(collect({}), 0);
    for (const char* name : {"p.png", "p.PDF", "p.svg"})
        EXPECT_EQ(run({"plot", (out / "Trial0001.lmb").string(), (folder / name).string()}), 0) << stdErr.str();
    EXPECT_EQ(pictures.size(), 3U);
}

TEST_F(CommandLineTest, WhatAWriterThatWasEndedByForceLeftIsRemovedAtTheNextStart) {
    ASSERT_EQ(collect({}), 0);
    const std::string trial = (out / "Trial0001.lmb").string();
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"convert", trial, (folder / "t.tab").string()},
                                               {"plot", trial, (folder / "p.png").string()},
                                               {"tone", (folder / "t.wav").string()}}) {
        const fs::path left = folder / ".tavex2-2147483647-0"; // of a process whose number no system gives
        std::ofstream(left) << "half a file";
        EXPECT_EQ(run(arguments), 0) << stdErr.str();
        EXPECT_FALSE(fs::exists(left)) << arguments.front();
    }
}

/// A stream behind which the disk is full.
class FullDisk final : public std::streambuf {};

TEST_F(CommandLineTest, OutputThatCannotBeWrittenIsAFailure) {
    FullDisk disk;
    std::ostream full(&disk);
    for (const char* argument : {"boards", "--help", "--version"}) {
        const char* argv[] = {"tavex2", argument};
        stdErr.str("");
        full.clear();
        const CommandLineResult ended =
            runCommandLine(2, argv, {.out = full, .err = stdErr, .store = store, .drawPicture = {}, .openSound = {}});
        EXPECT_EQ(ended.exitCode, 1) << argument;
        EXPECT_THAT(errorLine(), HasSubstr("could not be written"));
    }
}

// The last resort -----------------------------------------------------------------------------------------------------

TEST(LastResortTest, MakesOneLineOfAnyException) {
    const auto ended = [](const std::function<int()>& program) {
        std::ostringstream err;
        EXPECT_EQ(withLastResort(program, err), 1);
        const std::string text = err.str();
        EXPECT_EQ(std::ranges::count(text, '\n'), 1) << text;
        EXPECT_TRUE(text.starts_with("tavex2: ")) << text;
        return text;
    };
    EXPECT_THAT(ended([]() -> int { throw fs::filesystem_error("cannot\nlook", std::error_code()); }),
                HasSubstr("cannot\\u000alook"));
    EXPECT_THAT(ended([]() -> int { throw std::bad_alloc(); }), HasSubstr("memory"));
    EXPECT_THAT(ended([]() -> int { throw 7; }), HasSubstr("unknown reason"));
}

TEST(LastResortTest, GivesTheProgramsOwnExitCodeOtherwise) {
    std::ostringstream err;
    EXPECT_EQ(withLastResort([] { return 2; }, err), 2);
    EXPECT_EQ(err.str(), "");
}

} // namespace
} // namespace tavex2::test
