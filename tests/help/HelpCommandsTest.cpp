#include "help/HelpCommands.h"

#include "help/SmallManual.h"
#include "support/Fakes.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Notes what it is asked to show.
class FakeViewer final : public HelpViewer {
  public:
    Result<void> showContents(const Manual&) override { return note("contents"); }
    Result<void> showSearch(const Manual&) override { return note("search"); }
    Result<void> showPage(const Manual&, const std::string& address) override { return note(address); }

    std::vector<std::string> shown;
    Result<void> answer;

  private:
    Result<void> note(const std::string& what) {
        shown.push_back(what);
        return answer;
    }
};

class HelpCommandsTest : public testing::Test {
  protected:
    void useAll(HelpCommands& help) {
        help.mnuContents_Click();
        help.mnuSearch_Click();
        help.helpAbout({"cwnRate", "frmProperties"});
    }

    SmallManual folder;
    FakeViewer viewer;
    FakeMessages messages;
};

TEST_F(HelpCommandsTest, ContentsSearchAndPagesAreShown) {
    HelpCommands help(folder.path(), viewer, messages);
    useAll(help);
    EXPECT_THAT(viewer.shown, ElementsAre("contents", "search", "setup.html#cwnRate"));
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(HelpCommandsTest, WithoutAManualTheUserIsToldAndNothingIsShown) {
    HelpCommands help({}, viewer, messages);
    useAll(help);
    EXPECT_THAT(viewer.shown, IsEmpty());
    ASSERT_EQ(messages.shown.size(), 3U);
    for (const Message& message : messages.shown) {
        EXPECT_EQ(message.text, "Unable to display Help Contents. There is no Help associated with this project.");
        EXPECT_EQ(message.icon, MessageIcon::Information);
    }
    EXPECT_EQ(help.whatsThis("frmProperties", "cwnRate"), "");
}

TEST_F(HelpCommandsTest, AnErrorIsTold) {
    HelpCommands help(folder.path(), viewer, messages);
    viewer.answer = Error{ErrorKind::NotFound, "The page is missing."};
    help.mnuContents_Click();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "The page is missing.");

    folder.write("no description");
    HelpCommands damaged(folder.path(), viewer, messages);
    damaged.mnuSearch_Click();
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_THAT(messages.shown[1].text, HasSubstr("is damaged"));
    EXPECT_EQ(damaged.whatsThis("frmProperties", "cwnRate"), "") << "and nothing more is told";
    EXPECT_EQ(messages.shown.size(), 2U);
}

TEST_F(HelpCommandsTest, TellsWhatAControlOfAWindowIsFor) {
    HelpCommands help(folder.path(), viewer, messages);
    EXPECT_EQ(help.whatsThis("frmProperties", "cwnRate"), "Samples a second.");
    EXPECT_EQ(help.whatsThis("frmScale", "cmdOK"), "Sets the limits.");
    EXPECT_EQ(help.whatsThis("frmScale", "cwnRate"), "");
    EXPECT_EQ(help.whatsThis("frmUnknown", "cmdOK"), "");
}

TEST_F(HelpCommandsTest, TheManualLiesBesideTheProgram) {
    const TemporaryFolder root;
    std::filesystem::create_directories(root / "bin");
    EXPECT_EQ(helpFolder(root / "bin"), "");
    for (const std::filesystem::path& place : {root / "bin" / "help", root / "share" / "tavex2" / "help"}) {
        std::filesystem::create_directories(place);
        EXPECT_NE(helpFolder(root / "bin"), place) << "an empty folder is no manual";
        std::filesystem::copy_file(folder.path() / Manual::descriptionFile, place / Manual::descriptionFile);
        EXPECT_EQ(helpFolder(root / "bin"), place);
    }
}

} // namespace
} // namespace tavex2::test
