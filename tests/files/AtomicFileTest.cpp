#include "platform/AtomicFile.h"

#include "files/AtomicFileFixture.h"

#include <gmock/gmock.h>

#include <utility>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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
    for (const std::string& name : namesIn(m_folder.path()))
        EXPECT_EQ(name.front(), '.') << "a temporary file is hidden";
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

TEST_F(AtomicFileTest, RefusesANameThatIsEmptyOrTooLong) {
    EXPECT_EQ(save("", "new").error().kind, ErrorKind::InvalidValue);
    EXPECT_EQ(save(m_folder.path() / "", "new").error().kind, ErrorKind::InvalidValue);
    const auto result = save(m_folder / std::string(300, 'a'), "new");
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("too long"));
    EXPECT_THAT(namesIn(m_folder.path()), IsEmpty());
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

TEST_F(AtomicFileTest, CanBeHandedOn) {
    AtomicFile first = AtomicFile::create(m_path).value();
    ASSERT_TRUE(put(first, "moved"));
    AtomicFile second = std::move(first);
    ASSERT_TRUE(second.commit());
    EXPECT_EQ(bytesOf(m_path), "moved");
}

TEST_F(AtomicFileTest, KeepsTheTailOfALongerFileWhenAskedTo) {
    ASSERT_TRUE(save(m_path, "old and longer", IfExists::KeepTail)) << "there was none";
    ASSERT_TRUE(save(m_path, "new", IfExists::KeepTail));
    EXPECT_EQ(bytesOf(m_path), "new and longer");
    ASSERT_TRUE(save(m_path, "all of it is new", IfExists::KeepTail));
    EXPECT_EQ(bytesOf(m_path), "all of it is new");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, KeepsALongTailWhole) {
    std::string old(1000000, 'o');
    for (std::size_t i = 0; i < old.size(); i += 1000)
        old[i] = static_cast<char>('a' + i / 1000 % 26);
    ASSERT_TRUE(save(m_path, old));
    ASSERT_TRUE(save(m_path, std::string(70000, 'n'), IfExists::KeepTail));
    EXPECT_TRUE(bytesOf(m_path) == std::string(70000, 'n') + old.substr(70000));
}

TEST_F(AtomicFileTest, LeavesTheOldFileWithItsTailWithoutCommit) {
    ASSERT_TRUE(save(m_path, "old and longer"));
    {
        AtomicFile file = AtomicFile::create(m_path, IfExists::KeepTail).value();
        ASSERT_TRUE(put(file, "new"));
    }
    EXPECT_EQ(bytesOf(m_path), "old and longer");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, TriesAFolderWithoutATrace) {
    EXPECT_TRUE(checkWritable(m_folder.path()));
    EXPECT_THAT(namesIn(m_folder.path()), IsEmpty());
    EXPECT_EQ(checkWritable(m_folder / "missing").error().kind, ErrorKind::NotFound);
    ASSERT_TRUE(save(m_path, "a file"));
    EXPECT_THAT(checkWritable(m_path).error().text, HasSubstr("a.lmb"));
    EXPECT_EQ(bytesOf(m_path), "a file");
}

TEST_F(AtomicFileTest, LeavesFilesOfOtherNamesAloneWhenItTidiesUp) {
    const std::vector<std::string> names{".tavex2-",      ".tavex2-0-0",         ".tavex2-1",      ".tavex2-x-1",
                                         ".tavex2-1-1.x", ".tavex2-write-probe", "tavex2-99999-0", "a.lmb"};
    for (const std::string& name : names)
        std::ofstream(m_folder / name) << "mine";
    removeAbandonedFiles(m_folder.path());
    EXPECT_THAT(namesIn(m_folder.path()), testing::UnorderedElementsAreArray(names));
    removeAbandonedFiles(m_folder / "missing");
}

} // namespace
} // namespace tavex2::test
