#include "base/FileErrors.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

const std::filesystem::path file = "/data/Trial0001.lmb";

Error writing(std::errc reason) {
    return writeError(file, std::make_error_code(reason));
}
Error reading(std::errc reason) {
    return readError(file, std::make_error_code(reason));
}

TEST(FileErrorsTest, SaysInPlainWordsWhyAFileCannotBeWritten) {
    EXPECT_THAT(writing(std::errc::no_such_file_or_directory).text, HasSubstr("folder /data does not exist"));
    EXPECT_THAT(writing(std::errc::not_a_directory).text, HasSubstr("no folder /data"));
    EXPECT_THAT(writing(std::errc::is_a_directory).text, HasSubstr("Trial0001.lmb is a folder"));
    EXPECT_THAT(writing(std::errc::permission_denied).text, HasSubstr("no permission to write /data/Trial0001.lmb"));
    EXPECT_THAT(writing(std::errc::operation_not_permitted).text, HasSubstr("no permission"));
    EXPECT_THAT(writing(std::errc::read_only_file_system).text, AllOf(HasSubstr("/data"), HasSubstr("read-only")));
    EXPECT_THAT(writing(std::errc::no_space_on_device).text, AllOf(HasSubstr("/data"), HasSubstr("full")));
    EXPECT_THAT(writing(std::errc::file_too_large).text, HasSubstr("file of that size"));
    EXPECT_THAT(writing(std::errc::filename_too_long).text, HasSubstr("too long"));
    EXPECT_THAT(writing(std::errc::file_exists).text, HasSubstr("already exists"));
    EXPECT_THAT(writing(std::errc::io_error).text, HasSubstr(std::make_error_code(std::errc::io_error).message()));
}

TEST(FileErrorsTest, SaysWhatToDoAfterEveryReason) {
    for (const auto reason :
         {std::errc::no_such_file_or_directory, std::errc::not_a_directory, std::errc::is_a_directory,
          std::errc::permission_denied, std::errc::read_only_file_system, std::errc::no_space_on_device,
          std::errc::file_too_large, std::errc::filename_too_long, std::errc::file_exists, std::errc::io_error})
        EXPECT_THAT(writing(reason).text, testing::ContainsRegex("hoose a")) << writing(reason).text;
}

TEST(FileErrorsTest, TellsKindsApart) {
    EXPECT_EQ(writing(std::errc::no_such_file_or_directory).kind, ErrorKind::NotFound);
    EXPECT_EQ(writing(std::errc::file_exists).kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(writing(std::errc::no_space_on_device).kind, ErrorKind::WriteFailed);
    EXPECT_EQ(reading(std::errc::no_such_file_or_directory).kind, ErrorKind::NotFound);
    EXPECT_EQ(reading(std::errc::permission_denied).kind, ErrorKind::ReadFailed);
}

TEST(FileErrorsTest, SaysInPlainWordsWhyAFileCannotBeRead) {
    EXPECT_THAT(reading(std::errc::no_such_file_or_directory).text, HasSubstr("/data/Trial0001.lmb does not exist"));
    EXPECT_THAT(reading(std::errc::is_a_directory).text, HasSubstr("is a folder"));
    EXPECT_THAT(reading(std::errc::permission_denied).text, HasSubstr("no permission to read"));
    EXPECT_THAT(reading(std::errc::io_error).text, HasSubstr("could not be read"));
}

TEST(FileErrorsTest, NamesTheCurrentFolderOfABareName) {
    EXPECT_THAT(writeError("a.lmb", std::make_error_code(std::errc::no_space_on_device)).text,
                HasSubstr("the current folder is full"));
}

} // namespace
} // namespace tavex2::test
