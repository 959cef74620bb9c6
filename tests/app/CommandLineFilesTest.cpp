#include "acquisition/SetupFile.h"
#include "app/CommandLineFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

/// What the command line makes of the files that it is given.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(CommandLineTest, CapitalsInAnExtensionMakeNoDifference) {
    ASSERT_EQ(collect({}), 0);
    const std::string capital = (folder / "TRIAL.LMB").string();
    fs::rename(out / "Trial0001.lmb", capital);
    const std::string stimulus = (folder / "TRIAL.PLV").string();
    ASSERT_EQ(run({"convert", capital, stimulus}), 0) << stdErr.str();
    EXPECT_TRUE(bytesOf(stimulus).starts_with("PLV"));
    ASSERT_EQ(run({"show", stimulus, "--json"}), 0) << stdErr.str();
    EXPECT_EQ(nlohmann::json::parse(stdOut.str()).at("NumSamples"), 101);
    ASSERT_EQ(run({"convert", stimulus, (folder / "TRIAL.TAB").string()}), 0) << stdErr.str();
    ASSERT_EQ(run({"plot", stimulus, (folder / "p.png").string()}), 0) << stdErr.str();

    ASSERT_TRUE(writeSetupFile(folder / "PROTOCOL.SET", AcqSettings{}));
    ASSERT_EQ(run({"show", (folder / "PROTOCOL.SET").string()}), 0) << stdErr.str();
    EXPECT_THAT(stdOut.str(), HasSubstr("FilePrefix"));

    EXPECT_EQ(run({"collect", "--fast", "--out", out.string(), "--board", "recording:" + capital, "--set", "Rate=100",
                   "--set", "Duration=0.5"}),
              0)
        << stdErr.str();
}

} // namespace
} // namespace tavex2::test
