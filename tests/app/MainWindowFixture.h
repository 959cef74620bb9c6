#pragma once

#include "app/ui/WindowProgram.h"
#include "app/ui/frmMain.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTesting.h"

#include <QAction>
#include <QLabel>
#include <QToolButton>
#include <gmock/gmock.h>

namespace tavex2::test {
/// The program on the simulated board, driven through its widgets.
class MainWindowTest : public testing::Test {
  protected:
    MainWindowTest() : m_before(std::filesystem::current_path()) {
        sound.devices = 0;
        store.values["Tavex2/Startup/Datadir"] = folder.path().string();
    }
    ~MainWindowTest() override {
        m_program.reset();
        std::filesystem::current_path(m_before);
    }

    void start(std::vector<std::string> settings = {"Duration=0.05", "DIOMask=0"},
               const std::optional<std::string>& board = "simulator") {
        startWith({.board = board, .settings = std::move(settings)});
    }
    void startWith(const WindowRequest& request) {
        m_program.reset();
        auto program = WindowProgram::create(request, store, sound);
        ASSERT_TRUE(program) << program.error().text;
        m_program = std::move(program).value();
        m_program->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
        if (request.files.empty()) { // else a dialog opens over it
            ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        }
    }

    frmMain& window() { return m_program->window(); }

    template <class Widget>
    Widget& child(const char* name) {
        auto* found = window().findChild<Widget*>(QLatin1String(name));
        if (found == nullptr) throw std::runtime_error(std::string("no control named ") + name);
        return *found;
    }
    QAction& action(const char* name) { return child<QAction>(name); }
    QToolButton& button(const char* key) { return child<QToolButton>(key); }
    QString status() { return child<QLabel>("StatusPanel1").text(); }
    int plots(const char* graph) { return child<QWidget>(graph).property("plotCount").toInt(); }

    bool collected() {
        return waitFor([this] { return !button("Stop").isEnabled(); });
    }

    void collect() {
        button("Collect").click();
        ASSERT_TRUE(collected());
    }

    void saveAs(const QString& name) {
        WhenDialogOpens dialog("CommonDialog", [&](QWidget& shown) { enterFileName(shown, name); });
        action("mnuSave").trigger();
        ASSERT_TRUE(dialog.opened());
    }

    TemporaryFolder folder;
    FakeSettingsStore store;
    FakeSound sound;

  private:
    std::filesystem::path m_before;
    std::unique_ptr<WindowProgram> m_program;
};

} // namespace tavex2::test
