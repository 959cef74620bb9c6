/// Takes the pictures of the user's manual from the program itself: manual_pictures FOLDER writes them there.
/// The simulated board and a settings store of its own make the same pictures every time.

#include "app/ui/WindowProgram.h"
#include "app/ui/frmMain.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTesting.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QTableWidget>
#include <QToolButton>

#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace tavex2::test {
namespace {

/// The program as a user drives it, with a camera.
class Photographer {
  public:
    explicit Photographer(QString pictures) : m_pictures(std::move(pictures)) {
        m_sound.devices = 1;
        // A name that fills the box for the folder, of which the end is seen.
        const auto dataFolder = m_data.path() / "Isometric contractions" / "Subject S04";
        std::filesystem::create_directories(dataFolder);
        m_store.values["Tavex2/Startup/Datadir"] = dataFolder.string();
    }

    void takeAll() {
        start({"Channels=0:3", "Duration=1", "DIOMask=0"});
        for (const char* name : {"Trial0001.lmb", "Trial0002.lmb"}) {
            collect();
            saveAs(QLatin1String(name));
        }
        collect();
        take(window(), "main-window");
        inDialog("mnuScale", "frmScale", [this](QWidget& dialog) { take(dialog, "scale"); });
        inDialog("mnuEdit_0", "frmComments", [this](QWidget& dialog) { photographComments(dialog); });
        inDialog("mnuEdit_2", "frmLabels", [this](QWidget& dialog) { take(dialog, "labels"); });
        inDialog("mnuEdit_1", "frmProperties", [this](QWidget& dialog) { photographSetup(dialog); });
        child<QAction>("mnuLegend").trigger();
        take(child<QWidget>("frmLegend"), "legend");

        start({"Channels=1:4", "Duration=1", "DIOMask=0"});
        for (int trial = 0; trial < 5; ++trial) {
            collect();
            child<QAction>("mnuOverlay").trigger();
        }
        inDialog("mnuViewOverlay", "frmOverlay", [this](QWidget& dialog) { take(dialog, "overlay"); });
        inDialog("mnuInfo", "frmInfo", [this](QWidget& dialog) { photographInformation(dialog); });
    }

  private:
    void start(const std::vector<std::string>& settings) {
        m_program.reset();
        auto program = WindowProgram::create({.board = "simulator", .settings = settings}, m_store, m_sound);
        if (!program) throw std::runtime_error(program.error().text);
        m_program = std::move(program).value();
        window().resize(720, 620);
        m_program->show();
        require(QTest::qWaitForWindowActive(&window()), "the window does not open");
    }

    void collect() {
        child<QToolButton>("Collect").click();
        require(waitFor([this] { return !child<QToolButton>("Stop").isEnabled(); }), "no trial arrives");
    }

    void saveAs(const QString& name) {
        inDialog("mnuSave", "CommonDialog", [&](QWidget& dialog) { enterFileName(dialog, name); });
    }

    /// Drives the modal dialog that a command opens, and closes it.
    void inDialog(const char* command, const char* name, const std::function<void(QWidget&)>& drive) {
        const WhenDialogOpens dialog(name, [&](QWidget& shown) {
            drive(shown);
            shown.close();
        });
        child<QAction>(command).trigger();
        require(dialog.opened(), name);
    }

    void photographComments(QWidget& dialog) {
        auto* lines = dialog.findChild<QTableWidget*>(QStringLiteral("grdComments"));
        const char* written[] = {"Subject S04, session 2", "Electrodes placed anew before this trial"};
        for (int line = 0; line < 2; ++line)
            lines->item(line, 1)->setText(QLatin1String(written[line]));
        take(dialog, "comments");
    }

    void photographSetup(QWidget& dialog) {
        dialog.findChild<QAbstractButton*>(QStringLiteral("optTrigger_1"))->click();
        take(dialog, "setup");
    }

    /// With the cursors about a heartbeat.
    void photographInformation(QWidget& dialog) {
        dialog.resize(720, 480);
        auto* graph = dialog.findChild<QWidget*>(QStringLiteral("cwG"));
        graph->setFocus();
        const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers, int times) {
            for (int i = 0; i < times; ++i)
                QTest::keyClick(graph, key, modifiers);
        };
        press(Qt::Key_1, Qt::NoModifier, 1);
        press(Qt::Key_Right, Qt::ControlModifier, 12);
        press(Qt::Key_2, Qt::NoModifier, 1);
        press(Qt::Key_Left, Qt::ControlModifier, 32);
        take(dialog, "information");
    }

    void take(QWidget& shown, const char* name) {
        require(QTest::qWaitForWindowExposed(&shown), name);
        const QString file = QStringLiteral("%1/%2.png").arg(m_pictures, QLatin1String(name));
        require(shown.grab().save(file), "the picture cannot be written");
    }

    static void require(bool held, const char* otherwise) {
        if (!held) throw std::runtime_error(otherwise);
    }

    frmMain& window() { return m_program->window(); }

    template <class Kind>
    Kind& child(const char* name) {
        auto* found = window().findChild<Kind*>(QLatin1String(name));
        require(found != nullptr, name);
        return *found;
    }

    QString m_pictures;
    TemporaryFolder m_data;
    FakeSettingsStore m_store;
    FakeSound m_sound;
    std::unique_ptr<WindowProgram> m_program;
};

} // namespace
} // namespace tavex2::test

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: manual_pictures FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = std::filesystem::absolute(argv[1]);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "1");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    try {
        std::filesystem::create_directories(folder);
        tavex2::test::Photographer(QString::fromStdString(folder.string())).takeAll();
    } catch (const std::exception& problem) {
        std::cerr << "manual_pictures: " << problem.what() << '\n';
        return 1;
    }
    return 0;
}
