#include "files/AtomicFileFixture.h"
#include "files/FileIO.h"
#include "files/FreeName.h"
#include "files/Import.h"
#include "files/SaveCommands.h"
#include "files/WriteLimit.h"
#include "support/Fakes.h"
#include "support/Trials.h"

#include <sys/stat.h>
#include <unistd.h>

/// Links, permissions, pipes and limits as only POSIX systems have them.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

unsigned modeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions());
}

/// Sets the mask of new files while it lives.
class FileMask {
  public:
    explicit FileMask(mode_t mask) : m_old(::umask(mask)) {}
    ~FileMask() { ::umask(m_old); }
    FileMask(const FileMask&) = delete;
    FileMask& operator=(const FileMask&) = delete;

  private:
    mode_t m_old;
};

TEST_F(AtomicFileTest, LeavesTheOldFileWhenTheDiskTakesNoMore) {
    ASSERT_TRUE(save(m_path, "old"));
    {
        const WriteLimit limit(100000);
        AtomicFile file = AtomicFile::create(m_path).value();
        const auto written = put(file, std::string(200000, 'x'));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, ErrorKind::WriteFailed);
        EXPECT_THAT(written.error().text, HasSubstr("size"));
        EXPECT_FALSE(put(file, "more")) << "an error stays";
        EXPECT_FALSE(file.commit());
    }
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, ReportsAtCommitWhatTheLastPieceRanInto) {
    const WriteLimit limit(10);
    {
        AtomicFile file = AtomicFile::create(m_path).value();
        ASSERT_TRUE(put(file, "more than ten bytes")) << "still collected";
        EXPECT_FALSE(file.commit());
    }
    EXPECT_THAT(namesIn(m_folder.path()), IsEmpty());
}

TEST_F(AtomicFileTest, GivesANewFileThePermissionsOfAnyNewFile) {
    const FileMask mask(027);
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(modeOf(m_path), 0640U);
}

TEST_F(AtomicFileTest, KeepsThePermissionsOfTheFileItReplaces) {
    const FileMask mask(077);
    ASSERT_TRUE(save(m_path, "old"));
    fs::permissions(m_path, fs::perms{0664});
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(modeOf(m_path), 0664U);
}

TEST_F(AtomicFileTest, FollowsASymbolicLink) {
    fs::create_directory(m_folder / "elsewhere");
    const fs::path real = m_folder.path() / "elsewhere" / "real.lmb";
    ASSERT_TRUE(save(real, "old"));
    fs::create_symlink("elsewhere/real.lmb", m_folder / "middle");
    fs::create_symlink(m_folder / "middle", m_path);
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_TRUE(fs::is_symlink(m_path));
    EXPECT_FALSE(fs::is_symlink(real));
    EXPECT_EQ(bytesOf(real), "new");
    EXPECT_THAT(namesIn(m_folder / "elsewhere"), ElementsAre("real.lmb"));
}

TEST_F(AtomicFileTest, MakesTheFileThatADanglingLinkNames) {
    fs::create_symlink("real.lmb", m_path);
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(bytesOf(m_folder / "real.lmb"), "new");
    EXPECT_TRUE(fs::is_symlink(m_path));
}

TEST_F(AtomicFileTest, RefusesLinksThatLeadInACircle) {
    fs::create_symlink("b.lmb", m_path);
    fs::create_symlink("a.lmb", m_folder / "b.lmb");
    EXPECT_FALSE(save(m_path, "new"));
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb", "b.lmb"));
}

TEST_F(AtomicFileTest, ReplacesNoDeviceOrPipe) {
    ASSERT_EQ(::mkfifo(m_path.c_str(), 0666), 0);
    const auto result = save(m_path, "new");
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("not an ordinary file"));
    EXPECT_TRUE(fs::is_fifo(m_path));
}

TEST_F(AtomicFileTest, RespectsWriteProtection) {
    if (::geteuid() == 0) GTEST_SKIP() << "nothing is protected from this user";
    ASSERT_TRUE(save(m_path, "old"));
    fs::permissions(m_path, fs::perms{0444});
    EXPECT_THAT(save(m_path, "new").error().text, HasSubstr("no permission"));
    EXPECT_EQ(bytesOf(m_path), "old");

    fs::permissions(m_folder.path(), fs::perms{0555});
    EXPECT_THAT(save(m_folder / "b.lmb", "new").error().text, HasSubstr("no permission"));
    fs::permissions(m_folder.path(), fs::perms{0755});
}

TEST_F(AtomicFileTest, RefusesADanglingLinkToo) {
    fs::create_symlink("nowhere", m_path);
    EXPECT_EQ(save(m_path, "new", IfExists::Refuse).error().kind, ErrorKind::AlreadyExists);
    EXPECT_FALSE(fs::exists(m_folder / "nowhere"));
}

TEST_F(AtomicFileTest, TakesANameAsLongAsTheDiskDoes) {
    const std::string longest(255, 'a');
    ASSERT_TRUE(save(m_folder / longest, "new"));
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre(longest));
}

TEST_F(AtomicFileTest, ReportsAFolderThatVanishes) {
    const fs::path folder = m_folder / "going";
    fs::create_directory(folder);
    AtomicFile file = AtomicFile::create(folder / "a.lmb").value();
    ASSERT_TRUE(put(file, "new"));
    fs::remove_all(folder);
    const auto result = file.commit();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, ErrorKind::NotFound);
}

TEST_F(AtomicFileTest, AFailedSaveOfATrialLeavesTheOldFile) {
    ASSERT_TRUE(save(m_path, "old"));
    ProgramState state;
    collect(state, trialOf({std::vector<double>(400000, 1.0)}));
    FakeDialogs dialogs;
    FakeMessages messages;
    FakeFileView view;
    SaveCommands commands(state, dialogs, messages, view);
    dialogs.answers = {m_path};
    {
        const WriteLimit limit(1000000);
        const auto written = WriteLmb(m_path, *state.trials.CurrentTrial, "title");
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, ErrorKind::WriteFailed);
        EXPECT_FALSE(commands.mnuSave_Click());
    }
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, HasSubstr("a.lmb"));
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb")) << "nothing is left lying about";
    EXPECT_TRUE(state.Unsaved());
    EXPECT_TRUE(state.TrialNotSaved());
}

TEST(FreeNameTest, CountsDanglingLinksAsTaken) {
    const TemporaryFolder folder;
    fs::create_symlink(folder / "nowhere", folder / "a.lmb");
    EXPECT_EQ(freeName(folder.path(), "a", ".lmb"), folder / "a (2).lmb");
}

TEST(ReadLmbFileTest, ReadsNoPipe) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe.lmb").c_str(), 0666), 0);
    EXPECT_THAT(readLmbFile(folder / "pipe.lmb").error().text, HasSubstr("not an ordinary file"));
}

TEST(ReadLmbFileTest, SaysThatAFileMayNotBeRead) {
    if (::geteuid() == 0) GTEST_SKIP() << "nothing is hidden from this user";
    const TemporaryFolder folder;
    std::ofstream(folder / "secret.lmb") << "x";
    fs::permissions(folder / "secret.lmb", fs::perms::none);
    EXPECT_THAT(readLmbFile(folder / "secret.lmb").error().text, HasSubstr("no permission"));
}

} // namespace
} // namespace tavex2::test
