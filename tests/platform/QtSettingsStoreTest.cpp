#include "platform/qt/QtSettingsStore.h"

#include "support/TemporaryFolder.h"

#include <QSettings>
#include <QString>
#include <gmock/gmock.h>

namespace tavex2::test {
namespace {

class QtSettingsStoreTest : public testing::Test {
  protected:
    QtSettingsStoreTest() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(folder.path().string()));
    }
    TemporaryFolder folder;
    QtSettingsStore store;
};

TEST_F(QtSettingsStoreTest, TellsAMissingKeyFromAnEmptyOne) {
    EXPECT_EQ(store.read("Tavex2", "Startup", "Datadir"), std::nullopt);
    ASSERT_TRUE(store.write("Tavex2", "Startup", "Datadir", ""));
    EXPECT_EQ(store.read("Tavex2", "Startup", "Datadir"), "");
}

TEST_F(QtSettingsStoreTest, KeepsTextsAsTheyAreInOneFilePerApplicationName) {
    const std::string awkward = "C:\\Daten, alt\\Übung \"1\"; =#%20";
    ASSERT_TRUE(store.write("Tavex2", "Startup", "Datadir", awkward));
    ASSERT_TRUE(store.write("Orvanta", "Startup", "Viewer", "less"));
    const QtSettingsStore again;
    EXPECT_EQ(again.read("Tavex2", "Startup", "Datadir"), awkward);
    EXPECT_EQ(again.read("Orvanta", "Startup", "Viewer"), "less");
    EXPECT_EQ(again.read("Tavex2", "Startup", "Viewer"), std::nullopt);
    EXPECT_THAT(bytesOf(folder.path() / "Tavex2" / "Tavex2.ini"), testing::HasSubstr("[Startup]"));
    EXPECT_THAT(bytesOf(folder.path() / "Orvanta" / "Orvanta.ini"), testing::HasSubstr("Viewer=less"));
}

TEST_F(QtSettingsStoreTest, SaysWhereATextCouldNotBeStored) {
    std::ofstream(folder / "Tavex2") << "a file where the settings' folder would be";
    const Result<void> written = store.write("Tavex2", "Startup", "Datadir", "/d");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::WriteFailed);
    EXPECT_THAT(written.error().text, testing::HasSubstr((folder / "Tavex2" / "Tavex2.ini").string()));
    EXPECT_TRUE(store.write("Orvanta", "Startup", "Viewer", "less")) << "another application has a folder of its own";
}

TEST_F(QtSettingsStoreTest, ReadsAnUnquotedCommaOfAFileEditedByHand) {
    std::filesystem::create_directories(folder / "Tavex2");
    std::ofstream(folder.path() / "Tavex2" / "Tavex2.ini") << "[Startup]\nLastfile=a, b.lmb\n";
    EXPECT_EQ(store.read("Tavex2", "Startup", "Lastfile"), "a, b.lmb");
}

} // namespace
} // namespace tavex2::test
