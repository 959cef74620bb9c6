#include "app/StartUp.h"

#include "app/OutsidePrograms.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Pair;

class StartUpTest : public testing::Test {
  protected:
    StartUpTest() : before(fs::current_path()) {
        fs::create_directories(folder / "data");
        sound.devices = 0;
    }
    ~StartUpTest() override { fs::current_path(before); }

    StartUpResult start() {
        return startUp(state, {.store = store,
                               .sound = sound,
                               .digitalOutput = dio,
                               .programFolder = "/opt/tavex2",
                               .toneFile = folder / "tone.wav",
                               .environment = [this](const char* name) -> std::optional<std::string> {
                                   return std::string(name) == "WINDIR" ? windir : std::nullopt;
                               }});
    }

    TemporaryFolder folder;
    fs::path before;
    ProgramState state;
    FakeSettingsStore store;
    FakeSound sound;
    FakeClock clock;
    FakeDigitalOutput dio{clock};
    std::optional<std::string> windir;
};

TEST_F(StartUpTest, TheFirstStartTakesTheDefaults) {
    fs::current_path(folder.path());
    const StartUpResult result = start();
    EXPECT_EQ(fs::path(state.paths.DataDir), fs::current_path());
    EXPECT_EQ(state.paths.ProgramDir, "/opt/tavex2");
    EXPECT_EQ(state.paths.SiblingProgramDir, "/opt/tavex2");
    EXPECT_EQ(state.paths.LastFile, "");
    EXPECT_EQ(state.paths.ViewerProgram, "Notepad.exe");
    EXPECT_EQ(state.paths.SpreadsheetProgram, "Excel.exe");
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 0);
    EXPECT_FALSE(result.maximized);
    EXPECT_FALSE(state.DataPresent());
    EXPECT_EQ(state.settings.setup.TrialNumber, 0);
    EXPECT_TRUE(store.values.empty()) << "start-up only reads";
}

TEST_F(StartUpTest, UnderstandsAYesHoweverItWasStored) {
    const std::vector<std::pair<const char*, bool>> texts{
        {"True", true}, {"true", true}, {"1", true}, {"-1", true},     {" Yes ", true},
        {"0", false},   {"no", false},  {"", false}, {"maybe", false}, {"False", false}};
    for (const auto& [text, maximized] : texts) {
        store.values["Tavex2/Startup/Fullscreen"] = text;
        EXPECT_EQ(start().maximized, maximized) << text;
    }
}

TEST_F(StartUpTest, TheProgramsOwnSettingsAreTheUsersOrTheirDefaults) {
    for (const auto& [text, on] : std::vector<std::pair<const char*, bool>>{
             {"True", true}, {"False", false}, {"maybe", false}, {"", false}, {"1", true}}) {
        store.values["Tavex2/Startup/Autosavewithoutasking"] = text;
        start();
        EXPECT_EQ(state.autosaveWithoutAsking, on) << text;
    }
    store.values.clear();
    start();
    EXPECT_FALSE(state.autosaveWithoutAsking);
}

TEST_F(StartUpTest, ReadsEveryStoredKeyUnderItsOwnApplicationName) {
    store.values = {{"Tavex2/Startup/Progdir", "/a"},      {"Tavex2/Startup/Datadir", (folder / "data").string()},
                    {"Tavex2/Startup/Lastfile", "/f.lmb"}, {"Tavex2/Startup/Lastsetupfile", "/s.set"},
                    {"Tavex2/Startup/Fullscreen", "True"}, {"Orvanta/Startup/Progdir", "/b"},
                    {"Orvanta/Startup/Viewer", "less"},    {"Orvanta/Startup/Spreadsheet", "calc"}};
    const StartUpResult result = start();
    EXPECT_EQ(state.paths.ProgramDir, "/a");
    EXPECT_EQ(state.paths.LastFile, "/f.lmb");
    EXPECT_EQ(state.paths.LastSetupFile, "/s.set");
    EXPECT_EQ(state.paths.SiblingProgramDir, "/b");
    EXPECT_EQ(state.paths.ViewerProgram, "less");
    EXPECT_EQ(state.paths.SpreadsheetProgram, "calc");
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 2);
    EXPECT_TRUE(result.maximized);
    EXPECT_TRUE(state.settings.setup.StartMaximized);
    EXPECT_TRUE(fs::equivalent(fs::current_path(), folder / "data"));
}

TEST_F(StartUpTest, ADataFolderThatIsGoneLeavesTheCurrentOne) {
    fs::current_path(folder.path());
    store.values["Tavex2/Startup/Datadir"] = (folder / "gone").string();
    start();
    EXPECT_TRUE(fs::equivalent(fs::current_path(), folder.path()));
}

TEST_F(StartUpTest, AnEmptyDataFolderIsTheCurrentOne) {
    fs::current_path(folder.path());
    store.values["Tavex2/Startup/Datadir"] = "";
    start();
    EXPECT_EQ(fs::path(state.paths.DataDir), fs::current_path());
}

TEST_F(StartUpTest, AnEmptyViewerIsTheOneOfTheWindowsFolder) {
    windir = "C:\\WINDOWS";
    store.values["Orvanta/Startup/Viewer"] = "";
    start();
    EXPECT_EQ(state.paths.WindowsDir, "C:\\WINDOWS\\");
    EXPECT_EQ(state.paths.ViewerProgram, "C:\\WINDOWS\\Notepad.exe");
}

TEST_F(StartUpTest, ChecksTheSpreadsheetItemOfTheStoredProgram) {
    store.values["Orvanta/Startup/Spreadsheet"] = "";
    start();
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 0);
    EXPECT_EQ(state.paths.SpreadsheetProgram, "Excel.exe");
    store.values["Orvanta/Startup/Spreadsheet"] = "QPW.exe";
    start();
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 1);
    store.values["Orvanta/Startup/Spreadsheet"] = "D:\\other.exe";
    start();
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 2);
}

TEST_F(StartUpTest, WithASoundDeviceTheToneIsWrittenAndItsDefaultsAreSet) {
    sound.devices = 2;
    const StartUpResult result = start();
    EXPECT_EQ(result.waveDevices, 2);
    EXPECT_TRUE(state.settings.sound.SoundAvailable);
    EXPECT_FALSE(state.settings.sound.SoundBefore);
    EXPECT_FALSE(state.settings.sound.SoundAfter);
    EXPECT_EQ(state.settings.sound.SoundFreq, 500.0);
    EXPECT_EQ(state.settings.sound.SoundDuration, 1.0);
    EXPECT_EQ(bytesOf(folder / "tone.wav").size(), 11069U);
}

TEST_F(StartUpTest, WithoutASoundDeviceAllFiveFieldsStayZeroAndNoFileIsWritten) {
    start();
    EXPECT_TRUE(state.settings.sound == SoundSettings{});
    EXPECT_FALSE(fs::exists(folder / "tone.wav"));
}

TEST_F(StartUpTest, PutsTheStimulusLinesLowWhenThereAreAny) {
    start();
    EXPECT_THAT(dio.writes, ElementsAre(Pair(0, 0)));
    dio.lineCount = 0;
    start();
    EXPECT_EQ(dio.writes.size(), 1U);
}

TEST_F(StartUpTest, TidiesUpInTheDataFolderAndBesideTheTone) {
    // Of a process whose number no system gives.
    const std::string left = ".tavex2-2147483647-0";
    fs::create_directory(folder / "data");
    store.values["Tavex2/Startup/Datadir"] = (folder / "data").string();
    for (const fs::path& where : {folder.path(), folder / "data"})
        std::ofstream(where / left) << "half a trial";
    start();
    EXPECT_FALSE(fs::exists(folder / left));
    EXPECT_FALSE(fs::exists(folder.path() / "data" / left));
}

TEST(ToneFileTest, LiesBesideTheProgramOrInTheUsersFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(toneFileIn(folder.path(), folder / "user"), folder / "tone.wav");
    EXPECT_TRUE(fs::is_empty(folder.path())) << "looking must leave nothing behind";
    EXPECT_EQ(toneFileIn(folder / "missing", folder / "user"), folder / "user" / "tone.wav");
    EXPECT_TRUE(fs::is_directory(folder / "user"));
}

} // namespace
} // namespace tavex2::test
