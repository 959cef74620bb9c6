#include "app/CommandLineFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

/// Labels, units and comments that a collection without a window is given.

namespace tavex2::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Json = nlohmann::json;

TEST_F(CommandLineTest, LabelsUnitsAndCommentsAreStoredWithEveryTrialThatIsCollected) {
    ASSERT_EQ(collect({"--trials", "2", "--label", "2=V=2", "--unit", "0=N", "--comment", "left leg", "--comment",
                       "after rest"}),
              0)
        << stdErr.str();
    for (const char* name : {"Trial0001.lmb", "Trial0002.lmb"}) {
        ASSERT_EQ(run({"show", (out / name).string(), "--json"}), 0) << stdErr.str();
        const Json shown = Json::parse(stdOut.str());
        EXPECT_THAT(shown.at("Labels"), ElementsAre("Time", "Channel 00", "Channel 01", "V=2"));
        EXPECT_THAT(shown.at("Units"), ElementsAre("s", "N", "V", "V"));
        EXPECT_THAT(shown.at("TrialComments"), ElementsAre("left leg", "after rest", "", ""));
    }
}

TEST_F(CommandLineTest, TextsThatATrialHasNoPlaceForAreRefusedBeforeAnythingIsCollected) {
    const auto refused = [&](const std::vector<std::string>& arguments) {
        EXPECT_EQ(collect(arguments), 2) << arguments.back();
        EXPECT_THAT(filesWritten(), IsEmpty());
        return errorLine();
    };
    EXPECT_THAT(refused({"--label", "3=V3"}), AllOf(HasSubstr("0 to 2"), HasSubstr("\"3=V3\"")));
    EXPECT_THAT(refused({"--unit", "3=mV"}), AllOf(HasSubstr("--unit"), HasSubstr("0 to 2")));
    EXPECT_THAT(refused({"--label", "-1=V"}), HasSubstr("\"-1=V\""));
    EXPECT_THAT(refused({"--label", "Force"}), HasSubstr("K=TEXT"));
    EXPECT_THAT(refused({"--label", "0=elevencharss"}), HasSubstr("at most 10 characters"));
    EXPECT_THAT(refused({"--comment", std::string(61, 'x')}), HasSubstr("at most 60 characters"));
    EXPECT_THAT(refused({"--comment", "a", "--comment", "b", "--comment", "c", "--comment", "d", "--comment", "e"}),
                HasSubstr("four comments, not for 5"));
}

} // namespace
} // namespace tavex2::test
