#include "files/OpenCommands.h"

#include "base/LittleEndian.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"
#include "support/Trials.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OpenCommandsTest : public testing::Test {
  protected:
    OpenCommandsTest() {
        m_state.rename("Trial0007");
        m_state.paths.DataDir = m_folder.path().string();
        m_state.settings.sampling.Repeat = 4;
        m_state.settings.sampling.Channels.assign("5,7");
    }

    static fs::path knownCase(const char* name, const char* file = "expected.lmb") {
        return fs::path(TAVEX2_FILE_CASES) / name / file;
    }
    fs::path copyOf(const char* name, const char* as) {
        fs::copy_file(knownCase(name), m_folder / as);
        return m_folder / as;
    }
    fs::path write(const char* name, const std::string& bytes) {
        std::ofstream(m_folder / name, std::ios::binary) << bytes;
        return m_folder / name;
    }
    std::vector<std::string> titles() const {
        std::vector<std::string> all;
        for (const Message& message : m_messages.shown)
            all.push_back(message.title);
        return all;
    }
    void expectUntouched(const ProgramState& before) {
        EXPECT_EQ(m_state.trials.CurrentTrial, before.trials.CurrentTrial);
        EXPECT_EQ(m_state.settings, before.settings);
        EXPECT_EQ(m_state.header, before.header);
        EXPECT_EQ(m_state.comments, before.comments);
        EXPECT_EQ(m_state.TrialName(), before.TrialName());
        EXPECT_EQ(m_state.paths.LastFile, before.paths.LastFile);
        EXPECT_EQ(m_state.DataPresent(), before.DataPresent());
    }

    TemporaryFolder m_folder;
    ProgramState m_state;
    FakeDialogs m_dialogs;
    FakeMessages m_messages;
    FakeFileView m_view;
    std::vector<std::string> m_works; ///< the work on a file that each refresh showed
    int m_saves = 0;
    bool m_saveWorks = true;
    OpenCommands m_open{m_state, m_dialogs, m_messages, m_view, [this] {
                            ++m_saves;
                            return m_saveWorks;
                        }};
};

TEST_F(OpenCommandsTest, AsksForATrialFileWithItsFilters) {
    m_open.mnuOpenLumidor2_Click();
    ASSERT_EQ(m_dialogs.asked.size(), 1U);
    EXPECT_EQ(m_dialogs.asked[0].title, "Open");
    EXPECT_EQ(m_dialogs.asked[0].defaultExtension, ".lmb");
    EXPECT_EQ(m_dialogs.asked[0].filter, "Tavex/Lumidor binary Files (*.lmb)|*.lmb|All Files (*.*)|*.*");
    EXPECT_EQ(m_dialogs.asked[0].folder, m_folder.path());
    EXPECT_THAT(m_messages.shown, IsEmpty());
}

TEST_F(OpenCommandsTest, AnOpenedTrialIsTheCurrentOneAndCountsAsSaved) {
    collect(m_state, trialOf({{1, 2, 3}}));
    m_state.changeCurrent([](Trial& trial) {
        trial.TrialNotSaved = false;
        trial.AddedToAverage = trial.AddedToOverlays = true;
    });
    m_view.whileRefreshing = [this] { m_works.push_back(m_state.fileWork); };
    m_dialogs.answers = {copyOf("three_channels_labels_comments", "Arm.lmb")};
    m_open.mnuOpenLumidor2_Click();

    ASSERT_TRUE(hasCurrentTrial(m_state));
    EXPECT_EQ(m_state.trials.CurrentTrial->samples->channels(), 3);
    EXPECT_EQ(m_state.trials.CurrentTrial->samples->elementType(), ElementType::Float32);
    EXPECT_EQ(m_state.trials.CurrentTrial->samples->at(2, 1), 6.0);
    EXPECT_EQ(m_state.header.Labels[3].trimmed(), "Channel 02");
    EXPECT_EQ(m_state.comments[2].trimmed(), std::string(61, 'x'));
    EXPECT_EQ(m_state.trials.CurrentTrial->header, m_state.header);
    EXPECT_EQ(m_state.trials.CurrentTrial->comments, m_state.comments);
    EXPECT_EQ(m_state.trials.CurrentTrial->record.source, (m_folder / "Arm.lmb").string());
    EXPECT_EQ(m_state.settings.sampling.NumChannels, 3);
    EXPECT_EQ(m_state.settings.sampling.NumSamples, 2);
    EXPECT_EQ(m_state.settings.sampling.Rate, 3);
    EXPECT_EQ(m_state.settings.sampling.Repeat, 1);
    EXPECT_EQ(m_state.settings.sampling.Channels.trimmed(), "5,7") << "the list is the board's";
    EXPECT_EQ(m_state.trials.CurrentTrial->sampling.Channels.trimmed(), "0:2");
    EXPECT_EQ(m_state.trials.CurrentTrial->sampling.Rate, 3);
    EXPECT_EQ(m_state.TrialName(), "Arm");
    EXPECT_EQ(m_state.trials.CurrentTrial->savedName, "Arm.lmb");
    EXPECT_EQ(m_state.paths.LastFile, (m_folder / "Arm.lmb").string());
    EXPECT_EQ(m_state.paths.DataDir, m_folder.path().string());
    EXPECT_TRUE(m_state.DataPresent());
    EXPECT_FALSE(m_state.Unsaved());
    EXPECT_FALSE(m_state.TrialNotSaved());
    EXPECT_FALSE(m_state.trials.CurrentTrial->AddedToOverlays);
    EXPECT_FALSE(m_state.trials.CurrentTrial->AddedToAverage);

    ASSERT_EQ(m_messages.shown.size(), 1U);
    EXPECT_EQ(m_messages.shown[0].text, "File read successfully.  # channels = 3,  samples/channel = 2");
    EXPECT_EQ(m_messages.shown[0].icon, MessageIcon::None);
    EXPECT_THAT(m_view.log, ElementsAre("refresh", "pending", "pending", "pending", "refresh", "redraw", "refresh"));
    EXPECT_THAT(m_works, ElementsAre("Opening Arm.lmb ...", "", ""));
    EXPECT_EQ(m_state.notice, "Opened file: Arm.lmb");
}

TEST_F(OpenCommandsTest, CarriesTheSiblingsRecordsByteForByte) {
    m_open.openLmb(knownCase("opened_and_saved", "loaded.lmb"));
    const std::string bytes = bytesOf(knownCase("opened_and_saved", "loaded.lmb"));
    EXPECT_EQ(std::string(m_state.infoA.data(), m_state.infoA.size()), bytes.substr(3582, 224));
    EXPECT_EQ(std::string(m_state.infoB.data(), m_state.infoB.size()), bytes.substr(3806, 324));
    EXPECT_EQ(m_state.trials.CurrentTrial->infoA, m_state.infoA);
    EXPECT_EQ(m_state.trials.CurrentTrial->infoB, m_state.infoB);
}

TEST_F(OpenCommandsTest, OneOfSeveralFilesIsOpenedWithoutABox) {
    m_open.openLmb(copyOf("two_channels", "first.lmb"), false);
    EXPECT_THAT(m_messages.shown, IsEmpty());
    EXPECT_EQ(m_state.TrialName(), "first");
    EXPECT_EQ(m_state.notice, "Opened file: first.lmb");
}

TEST_F(OpenCommandsTest, RoundsTheRateHalvesToEven) {
    for (const auto& [rate, expected] : {std::pair{999.5, 1000}, {1000.5, 1000}, {999.6, 1000}}) {
        std::string bytes = bytesOf(knownCase("two_channels"));
        const auto field = littleEndianBytes(rate);
        bytes.replace(186, 8, reinterpret_cast<const char*>(field.data()), 8);
        m_open.openLmb(write("rate.lmb", bytes));
        EXPECT_EQ(m_state.settings.sampling.Rate, expected) << rate;
    }
}

TEST_F(OpenCommandsTest, AFileWithoutIdentificationIsToldAndReadAllTheSame) {
    m_open.openLmb(write("bare.lmb", bytesOf(knownCase("two_channels")).substr(80)));
    EXPECT_THAT(titles(), ElementsAre("File Type Error", "Tavex2"));
    EXPECT_EQ(m_messages.shown[0].text, "File format was not a Lumidor2 binary file (.LMB) or file is corrupt.");
    EXPECT_EQ(m_messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(m_state.TrialName(), "bare");
    EXPECT_TRUE(hasCurrentTrial(m_state));
}

TEST_F(OpenCommandsTest, WhatCannotBeReadIsToldAndChangesNothing) {
    m_open.openLmb(copyOf("two_channels", "good.lmb"));
    const ProgramState before = m_state;
    const std::string good = bytesOf(knownCase("two_channels"));
    m_messages.shown.clear();

    m_open.openLmb(write("foreign.lmb", std::string(9000, 'x')));
    EXPECT_THAT(titles(), ElementsAre("File Type Error", "File read error"));
    EXPECT_EQ(m_messages.shown[1].text, "Error reading file.  File may be empty, corrupt or of wrong format.");
    expectUntouched(before);
    m_messages.shown.clear();

    m_open.openLmb(write("empty.lmb", ""));
    EXPECT_THAT(titles(), ElementsAre("File Type Error", "File read error"));
    m_messages.shown.clear();

    for (const auto& path :
         {write("short.lmb", good.substr(0, good.size() - 1)), m_folder.path(), m_folder / "missing.lmb"}) {
        m_open.openLmb(path);
        EXPECT_THAT(titles(), ElementsAre("File read error")) << path;
        expectUntouched(before);
        m_messages.shown.clear();
    }
    EXPECT_THAT(m_state.notice, HasSubstr("missing.lmb")) << "the status bar gives the reason";
}

TEST_F(OpenCommandsTest, AnUnsavedTrialIsAskedAboutFirst) {
    collect(m_state, trialOf({{1, 2, 3}}));
    const ProgramState before = m_state;
    const fs::path file = copyOf("two_channels", "next.lmb");
    m_messages.answers = {MessageAnswer::Cancel};
    m_open.openLmb(file);
    EXPECT_THAT(titles(), ElementsAre("Last Trial Saved"));
    expectUntouched(before);

    m_saveWorks = false; // cancelled in the save dialog
    m_messages.answers = {MessageAnswer::Yes};
    m_open.openLmb(file);
    EXPECT_EQ(m_saves, 1);
    expectUntouched(before);

    m_messages.answers = {MessageAnswer::No};
    m_open.openLmb(file);
    EXPECT_EQ(m_saves, 1);
    EXPECT_EQ(m_state.TrialName(), "next");

    m_open.openLmb(file); // saved: nothing is asked
    EXPECT_EQ(m_messages.shown.back().title, "Tavex2");
}

TEST_F(OpenCommandsTest, CancellingLeavesEverythingAsItWas) {
    const ProgramState before = m_state;
    m_view.goesOn = false;
    m_open.openLmb(copyOf("three_channels_labels_comments", "long.lmb"));
    EXPECT_THAT(m_messages.shown, IsEmpty());
    EXPECT_THAT(m_state.notice, HasSubstr("cancelled"));
    expectUntouched(before);
}

} // namespace
} // namespace tavex2::test
