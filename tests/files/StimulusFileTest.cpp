#include "files/StimulusFile.h"

#include "base/FileNames.h"
#include "base/LittleEndian.h"
#include "base/PathText.h"
#include "files/StimulusCommands.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

#include <sstream>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

template <class T>
std::string bytes(T value) {
    const auto field = littleEndianBytes(value);
    return {reinterpret_cast<const char*>(field.data()), field.size()};
}

/// A file of these data behind the default settings.
std::string plv(const std::string& data, std::int16_t version = 256) {
    ProgramState state;
    std::string settings(1, '\x01');
    for (int i = 0; i < 8; ++i)
        settings += bytes(std::int16_t{5});
    for (int i = 0; i < 8; ++i)
        settings += bytes(std::int16_t{1});
    settings += "0:1" + std::string(47, ' ') + bytes(std::int32_t{1000}) + bytes(2.0F) + bytes(10.0F) + bytes(-10.0F) +
                bytes(std::int16_t{2}) + bytes(std::int32_t{3}) + bytes(std::int16_t{1});
    EXPECT_EQ(settings.size(), 107U);
    return "PLV" + bytes(version) + settings + data;
}

template <class T>
std::string grid(std::uint16_t code, std::vector<std::vector<T>> rows, std::int32_t lowerBound = 0) {
    std::string data = bytes(code) + bytes(std::uint16_t{2}) + bytes(static_cast<std::int32_t>(rows.size())) +
                       bytes(lowerBound) + bytes(static_cast<std::int32_t>(rows.front().size())) + bytes(lowerBound);
    for (const auto& row : rows)
        for (const T value : row)
            data += bytes(value);
    return data;
}

class StimulusFileTest : public testing::Test {
  protected:
    StimulusFileTest() {
        m_state.rename("Trial0001");
        m_state.paths.DataDir = m_folder.path().string();
        m_view.whileRefreshing = [this] { m_works.push_back(m_state.fileWork); };
    }
    fs::path write(const std::string& name, const std::string& content) {
        std::ofstream(m_folder / name, std::ios::binary) << content;
        return m_folder / name;
    }
    static Result<StimulusFile> read(const std::string& content) {
        std::istringstream in(content);
        return readPlv(in, content.size(), "some.plv");
    }

    TemporaryFolder m_folder;
    ProgramState m_state;
    FakeDialogs m_dialogs;
    FakeMessages m_messages;
    FakeFileView m_view;
    std::vector<std::string> m_works; ///< the work on a file that each refresh showed
    StimulusCommands m_commands{m_state, m_dialogs, m_messages, m_view, [] { return true; }};
};

TEST_F(StimulusFileTest, HoldsSettingsAndDataByteForByte) {
    const auto trial = collectedTrial(m_state, trialOf({{1, 2, 3}, {4, 5, 6}}));
    trial->sampling.Duration = 2.0F;
    ASSERT_TRUE(WritePlv(m_folder / "t.plv", *trial));
    EXPECT_EQ(bytesOf(m_folder / "t.plv"), plv(grid<double>(0x2005, {{1, 2, 3}, {4, 5, 6}})));
}

TEST_F(StimulusFileTest, OpenedTrialsAreFloatsAndOneChannelIsOneDimension) {
    ASSERT_TRUE(WritePlv(m_folder / "t.plv", *collectedTrial(m_state, trialOf({{1, 2, 3}}, ElementType::Float32, 1))));
    EXPECT_EQ(bytesOf(m_folder / "t.plv").substr(112), bytes(std::uint16_t{0x2004}) + bytes(std::uint16_t{1}) +
                                                           bytes(std::int32_t{3}) + bytes(std::int32_t{0}) +
                                                           bytes(1.0F) + bytes(2.0F) + bytes(3.0F));
    const auto back = readPlvFile(m_folder / "t.plv");
    ASSERT_TRUE(back) << back.error().text;
    EXPECT_EQ(back.value().samples.rank(), 1);
    EXPECT_THAT(back.value().samples.floats(0), ElementsAre(1, 2, 3));
}

TEST_F(StimulusFileTest, AnOldFileKeepsItsTailBehindTheNewDataWhichReadersIgnore) {
    const fs::path file = write("t.plv", std::string(5000, 'x'));
    ASSERT_TRUE(WritePlv(file, *collectedTrial(m_state, trialOf({{1, 2}, {3, 4}}))));
    const std::string data = plv(grid<double>(0x2005, {{1, 2}, {3, 4}}));
    EXPECT_EQ(bytesOf(file).substr(112), data.substr(112) + std::string(5000 - data.size(), 'x'));
    const auto back = readPlvFile(file);
    ASSERT_TRUE(back) << back.error().text;
    EXPECT_THAT(back.value().samples.doubles(1), ElementsAre(3, 4));
}

TEST_F(StimulusFileTest, AnExportThatIsCancelledOrFailsLeavesTheOldFile) {
    const fs::path file = write("t.plv", "old");
    const auto trial = collectedTrial(m_state, trialOf({{1, 2}, {3, 4}}));
    const auto cancelled = WritePlv(file, *trial, {IfExists::Replace, [](int, int) { return false; }});
    ASSERT_FALSE(cancelled);
    EXPECT_EQ(cancelled.error().kind, ErrorKind::Cancelled);
    EXPECT_EQ(WritePlv(file, *trial, {IfExists::Refuse, {}}).error().kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(bytesOf(file), "old");
}

TEST_F(StimulusFileTest, TakesEveryElementTypeAndLowerBound) {
    const auto whole = read(plv(grid<std::int16_t>(0x2002, {{1, -2}, {3, 4}}, 1)));
    ASSERT_TRUE(whole) << whole.error().text;
    EXPECT_THAT(whole.value().samples.doubles(0), ElementsAre(1, -2));
    const auto wide = read(plv(grid<std::int32_t>(0x2003, {{70000, -2}}, -5)));
    ASSERT_TRUE(wide);
    EXPECT_THAT(wide.value().samples.doubles(0), ElementsAre(70000, -2));
    EXPECT_EQ(wide.value().samples.rank(), 2);
    const auto floats = read(plv(grid<float>(0x2004, {{0.5F}, {1.5F}})));
    ASSERT_TRUE(floats);
    EXPECT_EQ(floats.value().samples.elementType(), ElementType::Float32);
}

TEST_F(StimulusFileTest, RefusesWhatIsNoneOrNewerAndTakesNegativeVersions) {
    const std::string data = grid<double>(0x2005, {{1}});
    EXPECT_EQ(read("PLX").error().kind, ErrorKind::BadFormat);
    EXPECT_EQ(read("").error().kind, ErrorKind::BadFormat);
    EXPECT_EQ(read(plv(data, 257)).error().kind, ErrorKind::WrongVersion);
    EXPECT_TRUE(read(plv(data, 256)));
    EXPECT_TRUE(read(plv(data, -1)));
}

TEST_F(StimulusFileTest, DamageCostsNeitherMemoryNorACrash) {
    const std::string good = plv(grid<double>(0x2005, {{1, 2}, {3, 4}}));
    for (std::size_t length = 5; length < good.size(); ++length)
        EXPECT_EQ(read(good.substr(0, length)).error().kind, ErrorKind::ReadFailed) << length;
    const auto shape = [](std::int32_t channels, std::int32_t samples) {
        return plv(bytes(std::uint16_t{0x2005}) + bytes(std::uint16_t{2}) + bytes(channels) + bytes(std::int32_t{0}) +
                   bytes(samples) + bytes(std::int32_t{0}) + std::string(64, '\0'));
    };
    for (const auto& content : {shape(2, 2'000'000'000), shape(-1, 3), shape(3, 0), shape(65, 1)})
        EXPECT_EQ(read(content).error().kind, ErrorKind::ReadFailed);
    EXPECT_FALSE(read(plv(bytes(std::uint16_t{0x2008}) + std::string(40, '\0'))));
    EXPECT_FALSE(read(plv(bytes(std::uint16_t{0x2005}) + bytes(std::uint16_t{3}) + std::string(40, '\0'))));
}

// Commands ------------------------------------------------------------------------------------------------------------

TEST_F(StimulusFileTest, AnExportedTrialCountsAsSavedAndEntersTheAverageOnce) {
    collect(m_state, trialOf({{1, 2}, {3, 4}}));
    m_dialogs.answers = {m_folder / "a.plv", m_folder / "b.plv"};
    m_commands.mnuPulvo_Click();
    const FileDialogRequest& asked = m_dialogs.asked.at(0);
    EXPECT_EQ(asked.title, "Export to Pulvo (.plv) file");
    EXPECT_EQ(asked.defaultExtension, "plv");
    EXPECT_EQ(asked.filter, "Pulvo Files (*.plv)|*.plv|All Files (*.*)|*.*");
    EXPECT_EQ(asked.initialName, "Trial0001.plv");
    EXPECT_EQ(asked.folder, m_folder.path());
    EXPECT_FALSE(m_state.TrialNotSaved());
    EXPECT_FALSE(m_state.Unsaved());
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
    EXPECT_EQ(m_state.paths.LastFile, (m_folder / "a.plv").string());
    EXPECT_THAT(m_view.log, ElementsAre("refresh", "pending", "pending", "refresh", "redraw", "refresh"));
    EXPECT_THAT(m_works, ElementsAre("Exporting to a.plv ...", "", ""));
    EXPECT_EQ(m_state.notice, "Exported to " + (m_folder / "a.plv").string());
    m_commands.mnuPulvo_Click();
    EXPECT_EQ(m_state.trials.average.AverageCount, 1);
}

TEST_F(StimulusFileTest, ATypedNameWithAPointGetsItsExtension) {
    collect(m_state, trialOf({{1, 2}, {3, 4}}));
    m_dialogs.answers = {m_folder / "Pilot1.5"};
    m_commands.mnuPulvo_Click();
    EXPECT_EQ(m_state.paths.LastFile, (m_folder / "Pilot1.5.plv").string());
    EXPECT_EQ(readPlvFile(m_folder / "Pilot1.5.plv").value().samples.at(1, 1), 4);
    EXPECT_FALSE(fs::exists(m_folder / "Pilot1.5"));
}

TEST_F(StimulusFileTest, AFailedExportIsTold) {
    collect(m_state, trialOf({{1, 2}}));
    m_dialogs.answers = {fs::path("/proc/t.plv")};
    m_commands.mnuPulvo_Click();
    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_THAT(m_messages.shown[0].text, testing::StartsWith("Error saving " + pathText(wholePath("/proc/t.plv"))));
    EXPECT_EQ(m_messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_TRUE(m_state.TrialNotSaved());
    EXPECT_EQ(m_state.trials.average.AverageCount, 0);
}

TEST_F(StimulusFileTest, AnImportedTrialIsTheCurrentOneInThousandths) {
    m_state.settings.setup.StartDelay = 9;
    m_state.header.Labels[2].assign("Force");
    m_state.comments[0].assign("left leg");
    m_dialogs.answers = {write("Trial1.plv", plv(grid<double>(0x2005, {{1, 2, 3}, {4, 5, 6}})))};
    m_commands.mnuOpen_Click();
    const FileDialogRequest& asked = m_dialogs.asked.at(0);
    EXPECT_EQ(asked.title, "Open");
    EXPECT_EQ(asked.filter, "All Files (*.*)|*.*|Pulvo Files (*.plv)|*.plv");
    EXPECT_EQ(asked.filterIndex, 1);
    EXPECT_EQ(m_state.TrialName(), "Trial1");
    EXPECT_EQ(m_state.trials.CurrentTrial->savedName, "Trial1.plv");
    EXPECT_EQ(m_state.paths.DataDir, (m_folder.path() / "").string()) << "with its separator";
    EXPECT_EQ(m_state.trials.CurrentTrial->samples->at(1, 2), 6);
    EXPECT_EQ(m_state.settings.sampling.Rate, 1000);
    EXPECT_EQ(m_state.settings.setup.StartDelay, 9) << "only the sampling settings are in the file";
    EXPECT_TRUE(m_state.DataPresent());
    EXPECT_FALSE(m_state.Unsaved());
    EXPECT_FALSE(m_state.TrialNotSaved());
    EXPECT_FALSE(m_state.settings.setup.DisplayInVolts);
    EXPECT_FALSE(m_state.settings.setup.DisplayInSeconds);
    EXPECT_EQ(m_state.trials.CurrentTrial->header.Labels[2].trimmed(), "Force") << "the file names no channels";
    EXPECT_EQ(m_state.trials.CurrentTrial->comments[0].trimmed(), "left leg");
    EXPECT_TRUE(m_state.trials.CurrentTrial->imported) << "the caption says so";
    EXPECT_EQ(m_state.trials.CurrentTrial->record.source, (m_folder / "Trial1.plv").string());
    EXPECT_THAT(m_view.log, ElementsAre("refresh", "pending", "pending", "refresh", "units", "refresh"));
    EXPECT_THAT(m_works, ElementsAre("Opening Trial1.plv ...", "", ""));
    EXPECT_EQ(m_state.notice, "Opened file: Trial1");
}

TEST_F(StimulusFileTest, AnImportCanBeCancelledAndChangesNothing) {
    m_view.goesOn = false;
    m_commands.importPlv(write("t.plv", plv(grid<double>(0x2005, {{1, 2}, {3, 4}}))));
    EXPECT_TRUE(m_messages.shown.empty());
    EXPECT_THAT(m_state.notice, HasSubstr("cancelled"));
    EXPECT_FALSE(m_state.trials.CurrentTrial);
    EXPECT_EQ(m_state.TrialName(), "Trial0001");
}

TEST_F(StimulusFileTest, ACancelledExportWritesNothingAndShowsNoBox) {
    m_view.goesOn = false;
    collect(m_state, trialOf({{1, 2}, {3, 4}}));
    m_dialogs.answers = {m_folder / "a.plv"};
    m_commands.mnuPulvo_Click();
    EXPECT_TRUE(m_messages.shown.empty());
    EXPECT_THAT(m_state.notice, HasSubstr("cancelled"));
    EXPECT_TRUE(fs::is_empty(m_folder.path()));
    EXPECT_TRUE(m_state.trials.CurrentTrial->TrialNotSaved);
}

TEST_F(StimulusFileTest, WhatCannotBeImportedIsToldAndChangesNothing) {
    const AcqSettings before = m_state.settings;
    const std::string data = grid<double>(0x2005, {{1}});
    const fs::path foreign = write("foreign.plv", "hello");
    m_commands.importPlv(foreign);
    m_commands.importPlv(write("newer.plv", plv(data, 257)));
    m_commands.importPlv(write("short.plv", plv(data).substr(0, 118)));
    m_commands.importPlv(m_folder / "missing.plv");
    ASSERT_EQ(m_messages.shown.size(), 4U);
    EXPECT_EQ(m_messages.shown[0].text, "The file\r\n" + foreign.string() + "\r\nis not a Pulvo file!");
    EXPECT_EQ(m_messages.shown[0].title, "Error");
    EXPECT_EQ(m_messages.shown[1].text,
              "The file \r\n" + (m_folder / "newer.plv").string() +
                  "\r\nappears to be a newer version!  Use the most recent Tavex application.");
    EXPECT_EQ(m_messages.shown[2].title, "File read error");
    EXPECT_EQ(m_messages.shown[3].title, "File read error");
    EXPECT_EQ(m_state.settings, before);
    EXPECT_EQ(m_state.TrialName(), "Trial0001");
    EXPECT_FALSE(m_state.trials.CurrentTrial);
    EXPECT_THAT(m_state.notice, HasSubstr("missing.plv"));
}

} // namespace
} // namespace tavex2::test
