#include "app/OutsidePrograms.h"

#include "app/AboutCommands.h"
#include "app/SystemInformation.h"
#include "app/SystemInformationViewer.h"
#include "app/Version.h"
#include "support/Fakes.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A computer on which nothing can be started.
class BareComputer final : public Shell {
  public:
    bool canRead(const std::string&, const std::string&) const override { return false; }
    std::string pathOf(const std::string& folder, const std::string& name) const override {
        return folder + "/" + name;
    }

  private:
    int open(const ShellRequest&) override { return fileNotFound; }
    int start(const std::string&) override { return fileNotFound; }
};

class OutsideProgramsTest : public testing::Test {
  protected:
    OutsideProgramsTest() {
        state.paths.DataDir = "/my data";
        state.paths.SiblingProgramDir = "/lab";
        store.values["Lumidor2/Startup/Progdir"] = "/sibling";
    }

    void savedAs(const std::string& name) {
        auto trial = std::make_shared<Trial>();
        trial->savedName = name;
        trial->Unsaved = trial->TrialNotSaved = false;
        state.trials.CurrentTrial = trial;
    }
    void unsaved() { state.trials.CurrentTrial = std::make_shared<Trial>(); }
    void expectSaveFirst(const std::string& text) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].title, "Save Data First");
        EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
        EXPECT_THAT(shell.requests, IsEmpty());
    }

    ProgramState state;
    FakeSettingsStore store;
    FakeMessages messages;
    FakeDialogs dialogs;
    FakeShell shell;
    OutsidePrograms programs{state, {.store = store, .messages = messages, .dialogs = dialogs, .shell = shell}};
};

TEST_F(OutsideProgramsTest, TheSiblingOpensTheLastTableInTheDataFolder) {
    state.LastTabExport = "/my data/a b.tab";
    savedAs("Trial0001.lmb");
    programs.mnuProgram_Click(0);
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"/sibling|Lumidor2.exe", "\"/my data/a b.tab\"", "/my data",
                                                         ShowMode::Normal, true}));
    EXPECT_EQ(store.values["Lumidor2/Startup/Datadir"], "/my data");
}

TEST_F(OutsideProgramsTest, WithoutATableTheSiblingOpensTheSavedFileUnquoted) {
    savedAs("Trial 1.lmb");
    programs.mnuProgram_Click(0);
    EXPECT_THAT(shell.requests,
                ElementsAre(ShellRequest{"/sibling|Lumidor2.exe", "Trial 1.lmb", "/my data", ShowMode::Normal, true}));
}

TEST_F(OutsideProgramsTest, WithoutAnyFileTheSiblingIsFoundThroughTheSearchPath) {
    programs.mnuProgram_Click(0);
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"Lumidor2.exe", "", "/my data", ShowMode::Normal, true}));
}

TEST_F(OutsideProgramsTest, AnUnsavedTrialKeepsTheSiblingFromStarting) {
    unsaved();
    state.LastTabExport = "/my data/a.tab";
    programs.mnuProgram_Click(0);
    expectSaveFirst("You must save your current data first to a file before starting Lumidor2.");
    EXPECT_FALSE(store.values.contains("Lumidor2/Startup/Datadir"));
}

TEST_F(OutsideProgramsTest, TheSiblingIsLookedForInItsOwnFolderElseInTheLaboratorys) {
    EXPECT_FALSE(programs.siblingFound());
    shell.readable = {"/lab|Lumidor2.exe"};
    EXPECT_FALSE(programs.siblingFound()) << "its own setting comes first";
    store.values["Lumidor2/Startup/Progdir"] = "";
    EXPECT_TRUE(programs.siblingFound());
    programs.mnuProgram_Click(0);
    savedAs("a.lmb");
    programs.mnuProgram_Click(0);
    EXPECT_EQ(shell.requests.at(1).file, "/lab|Lumidor2.exe");
    state.paths.SiblingProgramDir.clear();
    EXPECT_FALSE(programs.siblingFound());
    shell.readable = {"Lumidor2.exe"};
    EXPECT_TRUE(programs.siblingFound()) << "in the current folder";
}

TEST_F(OutsideProgramsTest, TheAnalyzeMenusSpreadsheetsOpenTheLastTable) {
    state.LastTabExport = "/d/a.tab";
    unsaved(); // the table is what counts
    programs.mnuProgram_Click(1);
    programs.mnuProgram_Click(2);
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"QPW.exe", "\"/d/a.tab\"", "", ShowMode::Normal},
                                            ShellRequest{"Excel.exe", "\"/d/a.tab\"", "", ShowMode::Normal}));
}

TEST_F(OutsideProgramsTest, TheLastTableGoesToTheChosenSpreadsheet) {
    state.paths.SpreadsheetProgram = "calc.exe";
    state.LastTabExport = "/d/my trials/a.tab";
    programs.mnuDigital_Click();
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"calc.exe", "\"/d/my trials/a.tab\"", "", ShowMode::Normal}));
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(OutsideProgramsTest, WithoutATableTheUserIsAskedToExportFirst) {
    const std::string text = "You must Export your current data first to a tab-delimited file.";
    for (const int index : {1, 2}) {
        programs.mnuProgram_Click(index);
        expectSaveFirst(text);
        messages.shown.clear();
    }
    programs.mnuDigital_Click();
    expectSaveFirst(text);
}

TEST_F(OutsideProgramsTest, ASpreadsheetIsChosen) {
    programs.mnuSpreadsheet_Click(1);
    EXPECT_EQ(state.paths.SpreadsheetProgram, "QPW.exe");
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 1);
    programs.mnuSpreadsheet_Click(2);
    EXPECT_EQ(state.paths.SpreadsheetProgram, "QPW.exe") << "cancelled";
    const FileDialogRequest& asked = dialogs.asked.at(0);
    EXPECT_EQ(asked.title, "Select a spreadsheet.");
    EXPECT_EQ(asked.initialName, "*.exe");
    EXPECT_EQ(asked.filter, "Programs|*.exe|All files|*.*");
    dialogs.answers = {std::filesystem::path("/opt/calc/calc.exe")};
    programs.mnuSpreadsheet_Click(2);
    EXPECT_EQ(state.paths.SpreadsheetProgram, "calc.exe");
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 2);
    programs.mnuSpreadsheet_Click(2);
    EXPECT_EQ(dialogs.asked.at(2).folder, "/opt/calc");
    programs.mnuSpreadsheet_Click(0);
    EXPECT_EQ(state.paths.SpreadsheetProgram, "Excel.exe");
    EXPECT_EQ(spreadsheetItem(state.paths.SpreadsheetProgram), 0);
}

TEST_F(OutsideProgramsTest, FileManagerAndEditorAreStartedByTheirCommandLines) {
    programs.mnuExplorer_Click();
    programs.mnuNotepad_Click();
    EXPECT_THAT(shell.commandLines, ElementsAre("Explorer.exe /my data", "notepad.exe"));
}

TEST_F(OutsideProgramsTest, AProgramThatIsMissingIsToldWithWhereItBelongs) {
    BareComputer bare;
    OutsidePrograms onBare{state, {.store = store, .messages = messages, .dialogs = dialogs, .shell = bare}};
    onBare.mnuProgram_Click(0);
    savedAs("Trial0001.lmb");
    onBare.mnuProgram_Click(0);
    onBare.mnuNotepad_Click();
    ASSERT_EQ(messages.shown.size(), 3U);
    EXPECT_THAT(messages.shown[0].text, HasSubstr("there is no Lumidor2.exe on the search path. Install it"));
    EXPECT_THAT(messages.shown[1].text, HasSubstr("there is no /sibling/Lumidor2.exe. Install it"));
    EXPECT_THAT(messages.shown[2].text, HasSubstr("No text editor was found"));
}

class AboutCommandsTest : public testing::Test {
  protected:
    FakeSettingsStore store;
    FakeMessages messages;
    FakeShell shell;
    int ends = 0;
    AboutCommands about{store, messages, shell, [this] { ++ends; }};
};

TEST_F(AboutCommandsTest, AComputerWithoutHelpOfItsOwnIsTold) {
    BareComputer bare;
    AboutCommands onBare{store, messages, bare, [] {}};
    onBare.mnuAbout_Click(1);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, HasSubstr("Help > Contents"));
}

TEST_F(AboutCommandsTest, WebPagesOpenWithoutActivation) {
    store.values["Tavex2/Startup/Website"] = "https://tavex2.test/";
    about.mnuAbout_Click(3);
    about.mnuAbout_Click(4);
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"https://tavex2.test/", "", "", ShowMode::WithoutActivation},
                                            ShellRequest{"https://www.ni.com/", "", "", ShowMode::WithoutActivation}));
    about.mnuAbout_Click(1);
    EXPECT_THAT(shell.commandLines, ElementsAre("WinHlp32.EXE"));
}

TEST_F(AboutCommandsTest, APageThatWasNeverSetIsTold) {
    about.mnuAbout_Click(3);
    EXPECT_THAT(shell.requests, IsEmpty());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, HasSubstr("\"Website\""));
}

TEST_F(AboutCommandsTest, TheUpdateDialogAsksTwiceAndOpensThePage) {
    store.values["Tavex2/Startup/Website"] = "https://tavex2.test/";
    messages.answers = {MessageAnswer::No};
    about.mnuAbout_Click(2);
    EXPECT_THAT(shell.requests, IsEmpty());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "Update Tavex2 Yes/No?");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Question);
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::YesNo);
    EXPECT_EQ(
        messages.shown[0].text,
        std::string("Do you want download a new version of Tavex2 from the web?\n\nPress Yes to download now or No "
                    "to continue using this version [") +
            versionText + "].");

    messages.answers = {MessageAnswer::Yes, MessageAnswer::No};
    about.mnuAbout_Click(2);
    EXPECT_EQ(messages.shown[2].title, "Exit?");
    EXPECT_EQ(messages.shown[2].text,
              "To use the new version you must exit and reload Tavex2.\n\nDo you want to exit now?");
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"https://tavex2.test/", "", "", ShowMode::Normal}))
        << "also after No";
    EXPECT_EQ(ends, 0);

    messages.answers = {MessageAnswer::Yes, MessageAnswer::Yes};
    about.mnuAbout_Click(2);
    EXPECT_EQ(shell.requests.size(), 2U);
    EXPECT_EQ(ends, 1);
}

TEST(SystemInformationTest, TellsVersionsBoardsAndSettings) {
    const std::string text = systemInformation({.operatingSystem = "Some System 12",
                                                .toolkit = "Qt 6",
                                                .boards = {"Simulated board", "Another"},
                                                .settingsFile = "/home/u/.config/Tavex2.ini"});
    EXPECT_THAT(text, testing::StartsWith("Tavex2 "));
    EXPECT_THAT(text, HasSubstr("\nSystem: Some System 12\nToolkit: Qt 6\nProcessors: "));
    EXPECT_THAT(text, HasSubstr(" MiB\nDevice 1: Simulated board\nDevice 2: Another\nSettings: "
                                "/home/u/.config/Tavex2.ini\n"));
}

/// A registry in memory: "key|name" -> value.
class FakeRegistry final : public Registry {
  public:
    explicit FakeRegistry(std::map<std::string, RegistryValue> values) : m_values(std::move(values)) {}
    std::optional<RegistryValue> query(const std::string& key, const std::string& name) const override {
        const auto found = m_values.find(key + "|" + name);
        return found == m_values.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    std::map<std::string, RegistryValue> m_values;
};

TEST(RegistryTextTest, TextsEndAtTheirNulAndNumbersHaveEightDigits) {
    using enum RegistryValue::Kind;
    const FakeRegistry registry({{"k|text", {Text, std::string("C:\\x\0rest", 10)}},
                                 {"k|bare", {Text, "no end"}},
                                 {"k|number", {Number32, std::string("\x0f\xa0\x00\x1e", 4)}},
                                 {"k|other", {Other, std::string("a\0b", 3)}}});
    EXPECT_EQ(GetKeyValue(registry, "k", "text"), "C:\\x");
    EXPECT_EQ(GetKeyValue(registry, "k", "bare"), "no end");
    EXPECT_EQ(GetKeyValue(registry, "k", "number"), "&h1E00A00F");
    EXPECT_EQ(GetKeyValue(registry, "k", "other"), std::string("a\0b", 3));
    EXPECT_EQ(GetKeyValue(registry, "k", "none"), std::nullopt);
    EXPECT_EQ(GetKeyValue(registry, "", "text"), std::nullopt);
}

class SystemInformationViewerTest : public testing::Test {
  protected:
    bool startWith(std::map<std::string, RegistryValue> values) {
        return SystemInformationViewer(std::make_unique<FakeRegistry>(std::move(values)), shell, messages)
            .StartSysInfo();
    }
    static RegistryValue text(const std::string& value) { return {RegistryValue::Kind::Text, value + '\0'}; }

    const std::string viewer = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO|PATH";
    const std::string folder = "SOFTWARE\\Microsoft\\Shared Tools Location|MSINFO";
    FakeShell shell;
    FakeMessages messages;
};

TEST_F(SystemInformationViewerTest, TheViewerThatTheRegistryNamesIsStarted) {
    EXPECT_TRUE(startWith({{viewer, text("C:\\Info\\info.exe")}, {folder, text("C:\\Tools")}}));
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"C:\\Info\\info.exe", "", "", ShowMode::Normal}));
}

TEST_F(SystemInformationViewerTest, ElseTheOneInTheToolsFolderWhenItIsThere) {
    shell.readable = {"C:\\Tools|MSINFO32.EXE"};
    EXPECT_TRUE(startWith({{folder, text("C:\\Tools")}}));
    EXPECT_THAT(shell.requests, ElementsAre(ShellRequest{"C:\\Tools|MSINFO32.EXE", "", "", ShowMode::Normal}));
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(SystemInformationViewerTest, WithoutAnyTheUserIsTold) {
    EXPECT_TRUE(startWith({}));
    EXPECT_TRUE(startWith({{folder, text("C:\\Tools")}})) << "the file is missing";
    EXPECT_THAT(shell.requests, IsEmpty());
    ASSERT_EQ(messages.shown.size(), 2U);
    for (const Message& message : messages.shown)
        EXPECT_EQ(message.text, "System information is unavailable at this time.");
}

TEST_F(SystemInformationViewerTest, ASystemWithoutARegistryHasNoSuchCall) {
    EXPECT_FALSE(SystemInformationViewer(nullptr, shell, messages).StartSysInfo());
    EXPECT_THAT(messages.shown, IsEmpty());
}

} // namespace
} // namespace tavex2::test
