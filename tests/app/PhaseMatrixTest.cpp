#include "app/MainWindowFixture.h"
#include "support/RecordingFile.h"
#include "support/Screen.h"

#include <cstring>
#include <deque>

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;

constexpr int rateHz = 500;
constexpr double durationSeconds = 0.6;
constexpr int samplesOfATrial = 301;

/// What a user can do while the program is at something: choose an item of a menu, and leave the dialog that it opens.
struct Deed {
    std::vector<const char*> path; ///< texts of the menus and the item
    const char* dialog = nullptr;  ///< that opens; none for an option, which is switched and switched back
    bool needsTheBoard = false;    ///< refused while a trial is collected; ends a real-time view
};

const std::vector<Deed>& everyDeed() {
    static const std::vector<Deed> deeds{
        {{"Options", "Autosave"}},
        {{"Options", "Debug mode"}},
        {{"Options", "Reset before collection starts"}},
        {{"Options", "Save Offsets"}},
        {{"Options", "Start Maximized"}},
        {{"View", "Last Trial"}},
        {{"View", "Averaged Trials"}},
        {{"View", "Legend"}},
        {{"View", "Scale..."}, "frmScale"},
        {{"Edit", "Comments"}, "frmComments"},
        {{"Edit", "Label & Units"}, "frmLabels"},
        {{"Data", "Information..."}, "frmInfo"},
        {{"File", "Save..."}, "CommonDialog"},
        {{"File", "Export", "Tab-delimited (.tab)..."}, "CommonDialog"},
        {{"Options", "Save setup"}, "CommonDialog"},
        {{"Help", "About..."}, "frmAbout"},
        {{"Edit", "Setup"}, "frmProperties", true},
        {{"File", "Open..."}, "CommonDialog", true},
        {{"Options", "Load setup"}, "CommonDialog", true},
    };
    return deeds;
}

/// A phase of a run as a user brings it about and sees it.
struct Phase {
    const char* name;
    std::vector<std::string> settings; ///< besides those of every trial
    const char* button;                ///< that leads to it; none for idle
    const char* status;                ///< how the status bar begins meanwhile
    bool collecting = true;
};

void PrintTo(const Phase& phase, std::ostream* out) {
    *out << phase.name;
}

/// Every option is switched and every dialog opened in a phase of a run; then the run is finished, its trial saved and
/// the file read. Acts with the pointer and reads what can be seen.
class PhaseMatrixTest : public MainWindowTest, public testing::WithParamInterface<Phase> {
  protected:
    PhaseMatrixTest() {
        // Low for 0.7 s and then high, over and over: a trigger is awaited for that long.
        std::vector<std::int16_t> step(rateHz * 14 / 10);
        std::fill(step.begin() + static_cast<std::ptrdiff_t>(step.size() / 2), step.end(), std::int16_t{16384});
        writeWave(folder / "step.wav", 1, rateHz, step);
    }

    void begin() {
        std::vector<std::string> settings{"Channels=0", "Rate=" + std::to_string(rateHz),
                                          "Duration=" + std::to_string(durationSeconds), "DIOMask=0", "Pretrigger=0"};
        settings.insert(settings.end(), GetParam().settings.begin(), GetParam().settings.end());
        start(settings, "recording:" + (folder / "step.wav").string());
        Screen(window()).choose({"Options", "Autosave without asking"}); // a trial may arrive while autosave is on
    }

    bool inPhase() {
        return QString::fromStdString(Screen(window()).text("StatusPanel1"))
            .startsWith(QLatin1String(GetParam().status));
    }

    void enterPhase() {
        if (GetParam().button == nullptr || inPhase()) return;
        Screen(window()).click(GetParam().button);
        ASSERT_TRUE(waitFor([this] { return inPhase(); })) << Screen(window()).text("StatusPanel1");
    }

    void choose(const Deed& deed) {
        const Screen screen(window());
        if (deed.path.size() == 3)
            screen.choose({deed.path[0], deed.path[1], deed.path[2]});
        else
            screen.choose({deed.path[0], deed.path[1]});
    }
    bool isChecked(const Deed& deed) { return Screen(window()).isChecked({deed.path[0], deed.path[1]}); }

    void switchAndBack(const Deed& deed) {
        const bool before = isChecked(deed);
        choose(deed);
        EXPECT_EQ(isChecked(deed), !before) << deed.path[1];
        choose(deed);
        EXPECT_EQ(isChecked(deed), before) << deed.path[1];
    }

    void openAndLeave(const Deed& deed) {
        WhenDialogOpens dialog(deed.dialog, [](QWidget& shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
        choose(deed);
        EXPECT_TRUE(dialog.opened()) << deed.path.back();
    }

    void beRefused(const Deed& deed) {
        choose(deed); // a dialog would keep this from returning
        const std::string status = Screen(window()).text("StatusPanel1");
        if (!QString::fromStdString(status).startsWith(QLatin1String(GetParam().status)))
            return; // it was over just then
        EXPECT_NE(status.find("A trial is being collected."), std::string::npos) << status;
    }

    void doDeed(const Deed& deed) {
        if (deed.dialog == nullptr)
            switchAndBack(deed);
        else if (deed.needsTheBoard && GetParam().collecting)
            beRefused(deed);
        else
            openAndLeave(deed);
    }

    /// The run goes on to its end; a real-time view is stopped.
    void finish() {
        if (GetParam().button == nullptr) return;
        if (GetParam().collecting) {
            ASSERT_TRUE(waitFor([this] { return !button("Stop").isEnabled() && !inPhase(); }));
        } else if (button("Stop").isEnabled()) {
            Screen(window()).click("Stop");
        }
    }

    /// Collects one more trial where the phase made none, saves the current one and reads its file.
    void saveAndCheck(const std::string& name) {
        if (!GetParam().collecting) {
            Screen(window()).click("Collect");
            ASSERT_TRUE(waitFor([this] { return !button("Stop").isEnabled(); }));
        }
        const fs::path file = folder / name;
        WhenDialogOpens dialog("CommonDialog",
                               [&](QWidget& shown) { enterFileName(shown, QString::fromStdString(file.string())); });
        Screen(window()).choose({"File", "Save..."});
        ASSERT_TRUE(dialog.opened());
        EXPECT_EQ(Screen(window()).text("StatusPanel1").rfind("Saved as ", 0), 0U);
        EXPECT_EQ(Screen(window()).title(), file.stem().string());
        const std::string bytes = bytesOf(file);
        ASSERT_EQ(bytes.size(), 4374U + 8U * samplesOfATrial);
        double rate = 0;
        double duration = 0;
        std::memcpy(&rate, bytes.data() + 186, sizeof rate);
        std::memcpy(&duration, bytes.data() + 194, sizeof duration);
        EXPECT_EQ(rate, rateHz);
        EXPECT_EQ(duration, static_cast<double>(static_cast<float>(durationSeconds)));
    }
};

TEST_P(PhaseMatrixTest, EverythingThatAUserCanDoLeavesTheRunAndItsTrialAlone) {
    begin();
    collect(); // there is a trial to be worked on
    std::deque<Deed> left(everyDeed().begin(), everyDeed().end());
    for (int run = 1; !left.empty(); ++run) {
        ASSERT_NO_FATAL_FAILURE(enterPhase());
        do {
            doDeed(left.front());
            left.pop_front();
        } while (!left.empty() && inPhase());
        ASSERT_NO_FATAL_FAILURE(finish());
        ASSERT_NO_FATAL_FAILURE(saveAndCheck("run" + std::to_string(run) + ".lmb"));
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Phases, PhaseMatrixTest,
                         testing::Values(Phase{"Idle", {}, nullptr, "Saved", false},
                                         Phase{"Pausing", {"StartDelay=1"}, "Collect", "Pausing"},
                                         Phase{"Waiting",
                                               {"TriggerMode=1", "TriggerChannel=0", "TriggerLevel=2"},
                                               "Collect",
                                               "Waiting for trigger before acquiring data"},
                                         Phase{"Acquiring", {}, "Collect", "Acquiring data"},
                                         Phase{"RealTime", {}, "Realtime", "Acquiring data continuously.", false}),
                         [](const auto& each) { return std::string(each.param.name); });

// What the bar says
// -----------------------------------------------------------------------------------------------------

TEST_F(MainWindowTest, AClickOnAButtonIsAnsweredInTheStatusBarWhereThePointerStays) {
    start({"StartDelay=1", "Duration=0.5", "DIOMask=0"});
    const Screen screen(window());
    screen.click("Collect");
    screen.pointAt("Collect");
    EXPECT_EQ(screen.text("StatusPanel1"), "Pausing");
    EXPECT_EQ(screen.title(), "Tavex2") << "the trial has no name to show before it is there";
    screen.click("Configure");
    EXPECT_EQ(screen.text("StatusPanel1"),
              "Pausing  |  A trial is being collected. Open the setup when it has arrived.");
    ASSERT_TRUE(waitFor([&] { return screen.text("StatusPanel1") == "Acquiring data"; }));
    screen.pointAt("Stop");
    EXPECT_EQ(screen.text("StatusPanel1"), "Acquiring data");
    ASSERT_TRUE(waitFor([&] { return screen.text("StatusPanel1") == "Ready"; }));
    EXPECT_EQ(screen.title(), "Trial0001 (Unsaved)");
}

TEST_F(MainWindowTest, OptionsOfTheCommandLineCarryTheirMarks) {
    start({"PauseToReset=1", "SaveOffsets=1", "Autosave=1"});
    const Screen screen(window());
    for (const char* option : {"Reset before collection starts", "Save Offsets", "Autosave"})
        EXPECT_TRUE(screen.isChecked({"Options", option})) << option;
    EXPECT_FALSE(screen.isChecked({"Options", "Start Maximized"}));
}

TEST_F(MainWindowTest, ASpaceBarThatIsHeldDownCountsOnce) {
    start({"Duration=0.05", "DIOMask=0"});
    QWidget& graph = child<QWidget>("cwG");
    QTest::keyPress(&graph, Qt::Key_Space);
    ASSERT_TRUE(collected());
    for (int repeat = 0; repeat < 5; ++repeat)
        QTest::simulateEvent(&graph, true, Qt::Key_Space, {}, QStringLiteral(" "), true);
    ASSERT_TRUE(collected());
    QTest::keyRelease(&graph, Qt::Key_Space);
    EXPECT_EQ(Screen(window()).title(), "Trial0001 (Unsaved)");
}

TEST_F(MainWindowTest, TheStopQuestionsDefaultIsNo) {
    start({"Duration=3000", "DIOMask=0"});
    const Screen screen(window());
    screen.click("Collect");
    WhenDialogOpens question("MessageBox", [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    screen.click("Stop");
    ASSERT_TRUE(question.opened());
    EXPECT_EQ(screen.text("StatusPanel1"), "Acquiring data");
    WhenDialogOpens again("MessageBox", [](QWidget& box) { press(box, QMessageBox::Yes); });
    screen.click("Stop");
    ASSERT_TRUE(again.opened());
    EXPECT_EQ(screen.text("StatusPanel1"), "Stopped");
    EXPECT_EQ(screen.title(), "Tavex2");
}

TEST_F(MainWindowTest, AnUnsavedTrialThatIsReplacedIsToldAndAClearedAverageComesBack) {
    start({"Duration=0.05", "DIOMask=0"});
    const Screen screen(window());
    collect();
    collect();
    EXPECT_EQ(screen.text("StatusPanel1"), "Trial0001 was not saved; it is the last trial.");
    saveAs(QString::fromStdString((folder / "Second.lmb").string()));
    EXPECT_EQ(child<QWidget>("cwGAvg").toolTip(), QStringLiteral("One saved trial: Second"));
    screen.choose({"Data", "Clear Average"});
    EXPECT_EQ(plots("cwGAvg"), 0);
    EXPECT_EQ(screen.text("StatusPanel1"), "The average is cleared; Edit > Undo brings it back.");
    screen.choose({"Edit", "Undo"});
    EXPECT_EQ(plots("cwGAvg"), 2);
    screen.choose({"Data", "Overlay"});
    EXPECT_EQ(screen.text("StatusPanel1"), "1 of 16 overlaid");
}

TEST_F(MainWindowTest, SeveralFilesAreOpenedWithoutABoxForEach) {
    start({"Duration=0.05", "DIOMask=0"});
    std::vector<fs::path> files;
    for (const char* name : {"a.lmb", "b.LMB"}) {
        collect();
        files.push_back(folder / name);
        saveAs(QString::fromStdString(files.back().string()));
    }
    window().openFiles(files);
    EXPECT_EQ(Screen(window()).text("StatusPanel1"), "Opened file: b.LMB");
    EXPECT_EQ(Screen(window()).title(), "b");
}

TEST_F(MainWindowTest, CommentsAndLabelsBelongToTheTrialThatIsShownAndToTheNextOnes) {
    start({"Duration=0.05", "DIOMask=0"});
    collect();
    WhenDialogOpens comments("frmComments", [](QWidget& form) {
        WhenDialogOpens line("InputBox", [](QWidget& box) {
            typeText(QStringLiteral("quiet"));
            QTest::keyClick(&box, Qt::Key_Return);
        });
        QTest::keyClick(form.findChild<QWidget*>(QStringLiteral("grdComments")), Qt::Key_Return);
        EXPECT_TRUE(line.opened());
        QTest::mouseClick(form.findChild<QWidget*>(QStringLiteral("cmdSave")), Qt::LeftButton);
    });
    Screen(window()).choose({"Edit", "Comments"});
    ASSERT_TRUE(comments.opened());
    for (const char* name : {"first.lmb", "second.lmb"}) {
        saveAs(QString::fromStdString((folder / name).string()));
        EXPECT_EQ(bytesOf(folder / name).substr(4130, 6), "quiet ") << name;
        collect();
    }
}

} // namespace
} // namespace tavex2::test
