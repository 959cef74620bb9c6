#include "acquisition/OwnSettings.h"

#include "acquisition/AcqFields.h"
#include "acquisition/Protocol.h"
#include "acquisition/SetupFile.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <set>

namespace tavex2::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST(OwnSettingsTest, EachHasANameOfItsOwnAndStartsWithItsDefault) {
    ProgramState state;
    std::set<std::string_view> keys;
    std::set<std::string> names;
    const AcqSettings fields;
    forEachField(fields, [&](std::string_view name, const auto&, const FieldRange&) { names.emplace(name); });
    for (const OwnSetting& setting : ownSettings(state)) {
        EXPECT_TRUE(names.emplace(setting.name).second) << setting.name;
        EXPECT_TRUE(keys.insert(setting.storedKey).second) << setting.storedKey;
        EXPECT_NE(setting.meaning, "") << setting.name;
        EXPECT_FALSE(setting.differs()) << setting.name;
        EXPECT_TRUE(setting.set(setting.text())) << "what is written can be read";
    }
}

/// A yes/no setting and a number, as the list may hold them.
class TwoSettingsTest : public testing::Test {
  protected:
    std::string json() { return bytesOf(folder / "P.set.json"); }
    void write(const std::string& text) { std::ofstream(folder / "P.set.json", std::ios::binary) << text; }
    /// What reading says; empty when it is content.
    std::string read() {
        const Result<void> outcome = readOwnSettings(setupFile, own);
        return outcome ? "" : outcome.error().text;
    }

    TemporaryFolder folder;
    std::filesystem::path setupFile = folder / "P.set";
    AcqSettings settings;
    bool follow = true;
    double interval = 2.5;
    OwnSettings own{
        {.name = "Follow", .storedKey = "Follow", .meaning = "follows", .range = {}, .value = &follow, .initial = true},
        {.name = "Interval",
         .storedKey = "Interval",
         .meaning = "waits",
         .range = {0, 3600, "s"},
         .value = &interval,
         .initial = 2.5}};
};

TEST_F(TwoSettingsTest, TakeTextsInTheirRangeOnly) {
    EXPECT_TRUE(own[0].set("no"));
    EXPECT_FALSE(follow);
    EXPECT_EQ(own[0].text(), "False");
    EXPECT_TRUE(own[1].set("0.1"));
    EXPECT_EQ(interval, 0.1);
    EXPECT_EQ(own[1].text(), "0.1");
    EXPECT_EQ(own[0].set("perhaps").error().text, "Follow must be True or False, not \"perhaps\".");
    EXPECT_EQ(own[1].set("3601").error().text, "Interval must be a number from 0 to 3600 s, not \"3601\".");
    EXPECT_EQ(interval, 0.1) << "a refused value changes nothing";
    own[1].reset();
    EXPECT_EQ(interval, 2.5);
}

TEST_F(TwoSettingsTest, OnlyThoseThatDifferStandBesideTheSetupFile) {
    interval = 0.1;
    ASSERT_TRUE(writeProtocol(setupFile, settings, own));
    EXPECT_EQ(json(), "{\n  \"Interval\": 0.1\n}\n");
    EXPECT_EQ(bytesOf(setupFile), encodeSetup(settings)) << "which knows nothing of them";
    interval = 7;
    follow = false;
    EXPECT_EQ(read(), "");
    EXPECT_EQ(interval, 0.1);
    EXPECT_TRUE(follow) << "what is not there has its default";
}

TEST_F(TwoSettingsTest, WhereAllAreDefaultsAnOldFileGoes) {
    write(R"({"Interval": 9})");
    ASSERT_TRUE(writeProtocol(setupFile, settings, own));
    EXPECT_FALSE(std::filesystem::exists(folder / "P.set.json"));
    ASSERT_TRUE(writeProtocol(setupFile, settings, own)) << "nor is one needed";
}

TEST_F(TwoSettingsTest, ASetupThatCannotBeWrittenLeavesTheOldOwnSettings) {
    write(R"({"Interval": 9})");
    std::filesystem::create_directory(setupFile);
    interval = 1;
    EXPECT_FALSE(writeProtocol(setupFile, settings, own));
    EXPECT_EQ(json(), R"({"Interval": 9})");
    interval = 2.5;
    EXPECT_FALSE(writeProtocol(setupFile, settings, own));
    EXPECT_EQ(json(), R"({"Interval": 9})") << "not removed either";
}

TEST_F(TwoSettingsTest, OwnSettingsThatCannotBeWrittenLeaveTheOldSetup) {
    std::ofstream(setupFile) << "old";
    std::filesystem::create_directory(folder / "P.set.json");
    interval = 1;
    EXPECT_FALSE(writeProtocol(setupFile, settings, own));
    EXPECT_EQ(bytesOf(setupFile), "old");
}

TEST_F(TwoSettingsTest, WithoutAFileAllHaveTheirDefaults) {
    follow = false;
    interval = 9;
    EXPECT_EQ(read(), "");
    EXPECT_TRUE(follow);
    EXPECT_EQ(interval, 2.5);
}

TEST_F(TwoSettingsTest, ADamagedFileIsToldAndTheDefaultsHold) {
    for (const std::string text : {"", "{", "[1]", "{\"Interval\": 9", "\xFF\xFE", "null", "{\"Interval\": 9}}"}) {
        interval = 7;
        write(text);
        EXPECT_THAT(read(), AllOf(HasSubstr("P.set.json: The file holds no JSON object"), HasSubstr("default")))
            << text;
        EXPECT_EQ(interval, 2.5) << text;
    }
    write("{\"Interval\": 9" + std::string(70000, ' ') + "}");
    EXPECT_THAT(read(), HasSubstr("too large"));
    EXPECT_EQ(interval, 2.5);
    std::filesystem::remove(folder / "P.set.json");
    std::filesystem::create_directory(folder / "P.set.json");
    EXPECT_THAT(read(), HasSubstr("P.set.json")) << "a folder is no file";
}

TEST_F(TwoSettingsTest, WhatIsUnfitIsToldAndTheRestIsTaken) {
    write(R"({"Later": 1, "Follow": false, "Interval": 4000})");
    EXPECT_THAT(read(), AllOf(HasSubstr("There is no setting named \"Later\"."),
                              HasSubstr("Interval must be a number from 0 to 3600 s, not \"4000\".")));
    EXPECT_FALSE(follow);
    EXPECT_EQ(interval, 2.5);

    write(R"({"Follow": 1, "Interval": true})");
    EXPECT_THAT(read(), AllOf(HasSubstr("Follow must be true or false, not \"1\"."),
                              HasSubstr("Interval must be a number, not \"true\".")));
    write(R"({"Interval": "3", "Follow": null})");
    EXPECT_THAT(read(), AllOf(HasSubstr("Interval must be a number"), HasSubstr("Follow must be true or false")));
    EXPECT_TRUE(follow);
}

TEST_F(TwoSettingsTest, ManyUnknownNamesAreCounted) {
    nlohmann::ordered_json many;
    for (int i = 0; i < 30; ++i)
        many["x\n" + std::to_string(i)] = i;
    write(many.dump());
    EXPECT_THAT(read(), AllOf(HasSubstr("\"x\\u000a4\""), Not(HasSubstr("x\\u000a5")), HasSubstr("And 25 more.")));
}

} // namespace
} // namespace tavex2::test
