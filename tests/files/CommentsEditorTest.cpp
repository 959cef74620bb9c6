#include "files/CommentsEditor.h"

#include <gtest/gtest.h>

namespace tavex2 {
namespace {

std::string storedLine(const TrialComments& comments, std::size_t row) {
    return {comments[row].bytes().data(), comments[row].bytes().size()};
}

TEST(CommentsEditor, LinesNeverSetAreEmptyAndDoneMakesThemBlank) {
    TrialComments comments{};
    CommentsEditor editor(comments);
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(editor.line(row), "");
    editor.cmdSave_Click();
    for (std::size_t row = 0; row < 4; ++row)
        EXPECT_EQ(storedLine(comments, row), std::string(61, ' '));
}

TEST(CommentsEditor, ShowsLinesAsTheyAreStoredAndProposesThemTrimmed) {
    TrialComments comments{};
    comments[1].assign("  left leg  ");
    comments[2].assign(std::string(61, 'x'));
    const CommentsEditor editor(comments);
    EXPECT_EQ(editor.line(1), "  left leg  " + std::string(49, ' '));
    EXPECT_EQ(editor.proposal(1), "left leg");
    EXPECT_EQ(editor.proposal(2), std::string(60, 'x'));
}

TEST(CommentsEditor, CutsAnswersAtSixtyCharactersAndIgnoresEmptyOnes) {
    TrialComments comments{};
    CommentsEditor editor(comments);
    editor.enter(0, std::string(75, 'a'));
    EXPECT_EQ(editor.line(0), std::string(60, 'a'));
    editor.enter(0, "");
    EXPECT_EQ(editor.line(0), std::string(60, 'a'));
    editor.cmdSave_Click();
    EXPECT_EQ(storedLine(comments, 0), std::string(60, 'a') + " ");
}

TEST(CommentsEditor, EraseIsStoredByDoneOnly) {
    TrialComments comments{};
    comments[0].assign("old");
    const TrialComments before = comments;
    CommentsEditor editor(comments);
    editor.cmdClear_Click();
    EXPECT_EQ(editor.line(0), "");
    EXPECT_EQ(comments, before);
    editor.cmdSave_Click();
    EXPECT_EQ(storedLine(comments, 0), std::string(61, ' '));
}

TEST(CommentsEditor, DateAndTimeRunTogetherInTheLastLine) {
    TrialComments comments{};
    CommentsEditor editor(comments);
    editor.cmdDateTime_Click("5/3/24", "14:07", 7);
    EXPECT_EQ(editor.line(3), "Date & time:   5/3/2414:07 for trial 0007");
    editor.cmdDateTime_Click("5/3/24", "14:07", 12345);
    EXPECT_TRUE(editor.line(3).ends_with(" for trial 12345"));
    editor.cmdDateTime_Click(std::string(80, '1'), "2", 7);
    editor.cmdSave_Click();
    EXPECT_EQ(storedLine(comments, 3), "Date & time:   " + std::string(46, '1'));
}

} // namespace
} // namespace tavex2
