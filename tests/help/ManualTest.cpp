#include "help/Manual.h"

#include "help/SmallManual.h"

#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ManualTest : public testing::Test {
  protected:
    static std::vector<std::string> files(const std::vector<ManualHit>& hits) {
        std::vector<std::string> found;
        found.reserve(hits.size());
        for (const ManualHit& hit : hits)
            found.push_back(hit.page->file);
        return found;
    }

    SmallManual folder;
    Manual manual = Manual::load(folder.path()).value();
};

TEST_F(ManualTest, ThePageAboutAWindowIsFoundFromAnyControlInIt) {
    EXPECT_EQ(manual.addressFor({"qt_spinbox_lineedit", "cwnRate", "fraSampling", "frmProperties", "frmMain"}),
              "setup.html#cwnRate");
    EXPECT_EQ(manual.addressFor({"txtUnknown", "frmProperties", "frmMain"}), "setup.html");
    EXPECT_EQ(manual.addressFor({"MessageBox", "frmMain"}), "collecting.html");
    EXPECT_EQ(manual.addressFor({"cmdOK", "frmScale", "frmProperties"}), "scale.html#cmdOK")
        << "of the innermost window";
    EXPECT_EQ(manual.addressFor({"", "elsewhere"}), "index.html");
    EXPECT_EQ(manual.addressFor({}), "index.html");
}

TEST_F(ManualTest, ASearchFindsPagesThatHoldEveryWordTheBestFirst) {
    EXPECT_THAT(files(manual.search("trigger")), ElementsAre("scale.html", "setup.html", "collecting.html"))
        << "in the title, among the keywords, in the text; never the contents";
    EXPECT_THAT(files(manual.search("  TRIAL starts ")), ElementsAre("collecting.html", "setup.html"))
        << "more often goes before sooner";
    EXPECT_THAT(files(manual.search("starts")), ElementsAre("setup.html", "collecting.html"))
        << "else in reading order";
    EXPECT_THAT(files(manual.search("trial limits")), IsEmpty());
    EXPECT_THAT(manual.search("  "), IsEmpty());
    EXPECT_THAT(manual.search(""), IsEmpty());
}

TEST_F(ManualTest, AHitShowsTheTextAboutTheFirstWord) {
    EXPECT_EQ(manual.search("applies")[0].excerpt,
              "The setup Rate Samples a second. OK Applies. The trigger starts a trial.");
    const std::string filler =
        "word word word word word word word word word word word word word word word word word word ";
    folder.write(R"({"pages": [{"file": "i", "title": "i", "windows": [], "keywords": [], "controls": {}, "text": ""},
        {"file": "a", "title": "a", "windows": [], "keywords": [], "controls": {}, "text": ")" +
                 filler + "needle " + filler + filler + "\"}]}");
    const Manual read = Manual::load(folder.path()).value();
    const std::string excerpt = read.search("NEEDLE").at(0).excerpt;
    EXPECT_THAT(excerpt, HasSubstr("needle"));
    EXPECT_TRUE(excerpt.starts_with("... word ") && excerpt.ends_with(" word ...")) << excerpt;
    EXPECT_LT(excerpt.size(), 160U);
}

TEST_F(ManualTest, TheIndexIsAlphabetical) {
    std::vector<std::string> lines;
    for (const IndexLine& line : manual.index())
        lines.push_back(line.keyword + " " + line.page->file);
    EXPECT_THAT(lines,
                ElementsAre("contents index.html", "Rate setup.html", "stop collecting.html", "trigger setup.html"));
}

TEST_F(ManualTest, ADamagedDescriptionIsAnErrorThatSaysWhatToDo) {
    for (const char* damaged : {"", "{", "[]", "{\"pages\": []}", "{\"pages\": [{\"file\": 3}]}", "{\"pages\": 7}"}) {
        folder.write(damaged);
        const Result<Manual> read = Manual::load(folder.path());
        ASSERT_FALSE(read) << damaged;
        EXPECT_EQ(read.error().kind, ErrorKind::BadFormat);
        EXPECT_THAT(read.error().text, HasSubstr("Install the program anew."));
    }
    const Result<Manual> none = Manual::load(folder.path() / "nowhere");
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().kind, ErrorKind::NotFound);
}

} // namespace
} // namespace tavex2::test
