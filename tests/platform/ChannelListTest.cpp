#include "platform/ChannelList.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

namespace tavex2::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<int> expanded(std::string_view text) {
    auto result = parseChannelList(text, 64);
    EXPECT_TRUE(result) << text;
    return result ? result.value() : std::vector<int>{};
}

std::string refusal(std::string_view text, int inputs = 64) {
    const auto result = parseChannelList(text, inputs);
    return result ? "accepted" : result.error().text;
}

TEST(ChannelListTest, ExpandsNumbersAndRangesInTheirOrder) {
    EXPECT_THAT(expanded("0:1"), ElementsAre(0, 1));
    EXPECT_THAT(expanded("7,3,5:6"), ElementsAre(7, 3, 5, 6));
    EXPECT_THAT(expanded(" 2 : 5 , 0 "), ElementsAre(2, 3, 4, 5, 0));
    EXPECT_THAT(expanded("4:4"), ElementsAre(4));
    EXPECT_THAT(expanded("1,1,0:1"), ElementsAre(1, 1, 0, 1)) << "a channel may be listed twice";
    EXPECT_EQ(expanded("0:63").size(), 64U);
}

TEST(ChannelListTest, SaysWhereAndWhyItRefuses) {
    EXPECT_THAT(refusal("0,7:3"), AllOf(HasSubstr("Item 2"), HasSubstr("\"7:3\""), HasSubstr("3:7")));
    EXPECT_THAT(refusal("0,,2"), AllOf(HasSubstr("Item 2"), HasSubstr("empty")));
    EXPECT_THAT(refusal("0,"), AllOf(HasSubstr("Item 2"), HasSubstr("empty")));
    EXPECT_THAT(refusal(""), HasSubstr("empty"));
    EXPECT_THAT(refusal("0,x"), AllOf(HasSubstr("Item 2"), HasSubstr("\"x\"")));
    EXPECT_THAT(refusal("0:1:2"), AllOf(HasSubstr("Item 1"), HasSubstr("\"0:1:2\"")));
    EXPECT_THAT(refusal("-1"), HasSubstr("\"-1\""));
    EXPECT_THAT(refusal("1.5"), HasSubstr("\"1.5\""));
    EXPECT_THAT(refusal("2:"), HasSubstr("\"2:\""));
    EXPECT_THAT(refusal("0,16", 16), AllOf(HasSubstr("Item 2"), HasSubstr("0 to 15")));
    EXPECT_THAT(refusal("99999999999999999999"), HasSubstr("99999999999999999999"));
    EXPECT_THAT(refusal("0:63,0"), HasSubstr("64"));
    EXPECT_THAT(refusal("0:2147483647", 2147483647), HasSubstr("64")) << "and quickly";
}

RC_GTEST_PROP(ChannelListProperty, AnyTextIsExpandedOrRefusedWithASentence, ()) {
    const auto text = *rc::gen::container<std::string>(rc::gen::element('0', '1', '9', ':', ',', ' ', 'a', '-'));
    const auto result = parseChannelList(text, 16);
    if (result) {
        RC_ASSERT(!result.value().empty());
        for (const int channel : result.value())
            RC_ASSERT(channel >= 0 && channel < 16);
    } else {
        RC_ASSERT(result.error().text.ends_with("."));
    }
}

} // namespace
} // namespace tavex2::test
