#include "app/MainWindowFixture.h"

#include <QDesktopServices>
#include <QUrl>

#include <fstream>

namespace tavex2::test {
namespace {

/// Takes the place of the desktop's opener and notes what it is given.
class OpenerStandIn final : public QObject {
    Q_OBJECT

  public:
    OpenerStandIn() {
        for (const char* scheme : {"file", "http", "https"})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
    }
    ~OpenerStandIn() override {
        for (const char* scheme : {"file", "http", "https"})
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }

    Q_INVOKABLE void open(const QUrl& url) { opened.push_back(url.toString().toStdString()); }

    std::vector<std::string> opened;
};

/// The menus that start other programs, with real programs that leave a note of how they were called.
class OutsideProgramsWindowTest : public MainWindowTest {
  protected:
    OutsideProgramsWindowTest() : m_path(qgetenv("PATH")) {
        std::filesystem::create_directories(programs);
        qputenv("PATH", QByteArray::fromStdString(programs.string()) + ':' + m_path);
        store.values["Lumidor2/Startup/Progdir"] = programs.string();
        store.values["Tavex2/Startup/Website"] = "https://tavex2.test/new";
    }
    ~OutsideProgramsWindowTest() override { qputenv("PATH", m_path); }

    void install(const char* name) {
        const std::string note = (folder / (std::string(name) + ".note")).string();
        std::ofstream(programs / name) << "#!/bin/sh\nprintf '%s;%s;%s' \"$PWD\" \"$#\" \"$*\" >'" << note
                                       << ".part'\n/bin/mv '" << note << ".part' '" << note << "'\n";
        std::filesystem::permissions(programs / name, std::filesystem::perms::owner_all);
    }
    /// "folder;number of arguments;arguments" of the program's start.
    std::string startedAs(const char* name) {
        const std::filesystem::path note = folder / (std::string(name) + ".note");
        EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(note); }, 5000)) << name;
        return bytesOf(note);
    }

    void exportTable() {
        start();
        collect();
        WhenDialogOpens dialog("CommonDialog",
                               [&](QWidget& shown) { enterFileName(shown, QString::fromStdString(table)); });
        action("mnuTab").trigger();
        ASSERT_TRUE(dialog.opened());
        ASSERT_TRUE(std::filesystem::exists(table));
    }

    const std::filesystem::path programs = folder / "programs";
    const std::string table = (folder / "my table.tab").string();

  private:
    QByteArray m_path;
};

TEST_F(OutsideProgramsWindowTest, EveryCommandStartsItsProgram) {
    for (const char* name : {"Lumidor2.exe", "Excel.exe", "QPW.exe", "Explorer.exe", "notepad.exe", "WinHlp32.EXE"})
        install(name);
    exportTable();
    saveAs(QString::fromStdString((folder / "Trial0001.lmb").string()));

    action("mnuProgram_0").trigger();
    EXPECT_EQ(startedAs("Lumidor2.exe"), folder.path().string() + ";1;" + table) << "one argument, in the data folder";
    EXPECT_EQ(store.values["Lumidor2/Startup/Datadir"], folder.path().string());
    action("mnuProgram_1").trigger();
    EXPECT_TRUE(startedAs("QPW.exe").ends_with(";1;" + table));
    action("mnuProgram_2").trigger();
    EXPECT_TRUE(startedAs("Excel.exe").ends_with(";1;" + table));
    std::filesystem::remove(folder / "QPW.exe.note");
    action("mnuSpreadsheet_1").trigger();
    action("mnuDigital").trigger();
    EXPECT_TRUE(startedAs("QPW.exe").ends_with(";1;" + table)) << "the chosen spreadsheet";
    action("mnuExplorer").trigger();
    EXPECT_TRUE(startedAs("Explorer.exe").ends_with(";1;" + folder.path().string()));
    action("mnuNotepad").trigger();
    EXPECT_TRUE(startedAs("notepad.exe").ends_with(";0;"));
    action("mnuAbout_1").trigger();
    EXPECT_TRUE(startedAs("WinHlp32.EXE").ends_with(";0;"));
}

TEST_F(OutsideProgramsWindowTest, WithoutThoseProgramsTheDesktopOpensTableFolderAndPages) {
    OpenerStandIn desktop;
    exportTable();
    for (const char* command : {"mnuDigital", "mnuProgram_1", "mnuExplorer", "mnuAbout_3", "mnuAbout_4"})
        action(command).trigger();
    const std::string tableUrl = "file://" + table;
    EXPECT_THAT(desktop.opened, testing::ElementsAre(tableUrl, tableUrl, "file://" + folder.path().string(),
                                                     "https://tavex2.test/new", "https://www.ni.com/"));
}

TEST_F(OutsideProgramsWindowTest, WithoutProgramsOfThoseNamesTheDesktopsOwnOnesStart) {
    for (const char* name : {"gedit", "yelp", "hardinfo"})
        install(name);
    qputenv("PATH", QByteArray::fromStdString(programs.string())); // and none of this machine
    start();
    action("mnuNotepad").trigger();
    EXPECT_TRUE(startedAs("gedit").ends_with(";0;"));
    action("mnuAbout_1").trigger();
    EXPECT_TRUE(startedAs("yelp").ends_with(";0;"));

    WhenDialogOpens about("frmAbout", [&](QWidget& form) {
        WhenDialogOpens information("frmSystemInformation", [](QWidget& shown) {
            shown.findChild<QAbstractButton*>(QStringLiteral("cmdMore"))->click();
            shown.close();
        });
        form.findChild<QAbstractButton*>(QStringLiteral("cmdSysInfo"))->click();
        EXPECT_TRUE(information.opened());
        form.close();
    });
    action("mnuAbout_0").trigger();
    EXPECT_TRUE(about.opened());
    EXPECT_TRUE(startedAs("hardinfo").ends_with(";0;"));
}

} // namespace
} // namespace tavex2::test

#include "OutsideProgramsWindowTest.moc"
