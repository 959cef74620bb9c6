#include "platform/AtomicFile.h"

#include "files/WriteLimit.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Result<void> put(AtomicFile& file, std::string_view text) {
    return file.write(std::as_bytes(std::span(text)));
}

/// Writes a whole file.
Result<void> save(const fs::path& path, std::string_view text, IfExists ifExists = IfExists::Replace) {
    Result<AtomicFile> file = AtomicFile::create(path, ifExists);
    if (!file) return file.error();
    if (auto written = put(file.value(), text); !written) return written;
    return file.value().commit();
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

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

class AtomicFileTest : public testing::Test {
  protected:
    TemporaryFolder m_folder;
    fs::path m_path = m_folder / "a.lmb";
};

TEST_F(AtomicFileTest, WritesANewFileAndNothingElse) {
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(bytesOf(m_path), "new");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, WritesAnEmptyFile) {
    ASSERT_TRUE(AtomicFile::create(m_path).value().commit());
    EXPECT_TRUE(fs::exists(m_path));
    EXPECT_EQ(fs::file_size(m_path), 0U);
}

TEST_F(AtomicFileTest, KeepsSmallAndLargePiecesInOrder) {
    AtomicFile file = AtomicFile::create(m_path).value();
    std::string expected;
    for (const std::size_t size : {1U, 65535U, 65536U, 65537U, 3U, 0U, 5000000U, 64U}) {
        const std::string piece(size, static_cast<char>('a' + size % 26));
        ASSERT_TRUE(put(file, piece));
        expected += piece;
    }
    ASSERT_TRUE(file.commit());
    EXPECT_TRUE(bytesOf(m_path) == expected);
}

TEST_F(AtomicFileTest, ShowsTheFileOnlyAfterCommit) {
    AtomicFile file = AtomicFile::create(m_path).value();
    ASSERT_TRUE(put(file, "new"));
    EXPECT_FALSE(fs::exists(m_path));
    ASSERT_THAT(namesIn(m_folder.path()), testing::SizeIs(1));
    EXPECT_EQ(namesIn(m_folder.path()).front().front(), '.') << "the temporary file is hidden";
    ASSERT_TRUE(file.commit());
    EXPECT_TRUE(fs::exists(m_path));
}

TEST_F(AtomicFileTest, ReplacesAnOldFile) {
    ASSERT_TRUE(save(m_path, "a longer old text"));
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(bytesOf(m_path), "new");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, LeavesTheOldFileAndNoTraceWithoutCommit) {
    ASSERT_TRUE(save(m_path, "old"));
    {
        AtomicFile file = AtomicFile::create(m_path).value();
        ASSERT_TRUE(put(file, std::string(200000, 'x')));
    }
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, TwoWritersOfOneNameDoNotMix) {
    AtomicFile first = AtomicFile::create(m_path).value();
    AtomicFile second = AtomicFile::create(m_path).value();
    ASSERT_TRUE(put(first, "first"));
    ASSERT_TRUE(put(second, "second"));
    ASSERT_TRUE(second.commit());
    ASSERT_TRUE(first.commit());
    EXPECT_EQ(bytesOf(m_path), "first");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

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

TEST_F(AtomicFileTest, SaysThatAFolderIsMissing) {
    const auto result = save(m_folder.path() / "none" / "a.lmb", "new");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, ErrorKind::NotFound);
    EXPECT_THAT(result.error().text, HasSubstr((m_folder / "none").string() + " does not exist"));
}

TEST_F(AtomicFileTest, SaysThatTheFolderIsAFile) {
    ASSERT_TRUE(save(m_path, "a file"));
    const auto result = save(m_path / "b.lmb", "new");
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("is a file"));
}

TEST_F(AtomicFileTest, SaysThatTheNameIsAFolder) {
    fs::create_directory(m_path);
    for (const auto ifExists : {IfExists::Replace, IfExists::Refuse}) {
        const auto result = save(m_path, "new", ifExists);
        ASSERT_FALSE(result);
        EXPECT_THAT(result.error().text, HasSubstr("is a folder"));
    }
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, ReplacesNoDeviceOrPipe) {
    ASSERT_EQ(::mkfifo(m_path.c_str(), 0666), 0);
    const auto result = save(m_path, "new");
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("not an ordinary file"));
    EXPECT_TRUE(fs::is_fifo(m_path));
}

TEST_F(AtomicFileTest, RefusesANameThatIsEmptyOrTooLong) {
    EXPECT_EQ(save("", "new").error().kind, ErrorKind::InvalidValue);
    EXPECT_EQ(save(m_folder.path() / "", "new").error().kind, ErrorKind::InvalidValue);
    const auto result = save(m_folder / std::string(300, 'a'), "new");
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("too long"));
    EXPECT_THAT(namesIn(m_folder.path()), IsEmpty());
}

TEST_F(AtomicFileTest, TakesANameAsLongAsTheDiskDoes) {
    const std::string longest(255, 'a');
    ASSERT_TRUE(save(m_folder / longest, "new"));
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre(longest));
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

TEST_F(AtomicFileTest, RefusesAnExistingFileWhenAskedTo) {
    ASSERT_TRUE(save(m_path, "new", IfExists::Refuse));
    const auto result = save(m_path, "newer", IfExists::Refuse);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(bytesOf(m_path), "new");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, RefusesAFileThatAppearsWhileItWrites) {
    {
        AtomicFile file = AtomicFile::create(m_path, IfExists::Refuse).value();
        ASSERT_TRUE(put(file, "ours"));
        ASSERT_TRUE(save(m_path, "theirs"));
        const auto result = file.commit();
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().kind, ErrorKind::AlreadyExists);
    }
    EXPECT_EQ(bytesOf(m_path), "theirs");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, RefusesADanglingLinkToo) {
    fs::create_symlink("nowhere", m_path);
    EXPECT_EQ(save(m_path, "new", IfExists::Refuse).error().kind, ErrorKind::AlreadyExists);
    EXPECT_FALSE(fs::exists(m_folder / "nowhere"));
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

TEST_F(AtomicFileTest, CanBeHandedOn) {
    AtomicFile first = AtomicFile::create(m_path).value();
    ASSERT_TRUE(put(first, "moved"));
    AtomicFile second = std::move(first);
    ASSERT_TRUE(second.commit());
    EXPECT_EQ(bytesOf(m_path), "moved");
}

} // namespace
} // namespace tavex2::test
