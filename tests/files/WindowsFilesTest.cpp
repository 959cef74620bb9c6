#include "files/AtomicFileFixture.h"
#include "platform/windows/WindowsHeader.h"

/// What files have on Windows alone.

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(AtomicFileTest, RespectsWriteProtection) {
    ASSERT_TRUE(save(m_path, "old"));
    ASSERT_NE(::SetFileAttributesW(m_path.c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_THAT(save(m_path, "new").error().text, HasSubstr("no permission"));
    EXPECT_EQ(bytesOf(m_path), "old");
    ::SetFileAttributesW(m_path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(AtomicFileTest, AFileThatAnotherProgramHoldsStaysAsItIs) {
    ASSERT_TRUE(save(m_path, "old"));
    HANDLE other =
        ::CreateFileW(m_path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    const auto result = save(m_path, "new");
    ::CloseHandle(other);
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("no permission"));
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

} // namespace
} // namespace tavex2::test
