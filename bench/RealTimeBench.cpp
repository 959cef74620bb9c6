/// What only a clock can tell, on a machine that has nothing else to do: how late stimulus pulses come, and how long
/// the window keeps its user waiting while it watches many fast channels.

#include "Comparisons.h"
#include "GraphPair.h"
#include "app/ui/WindowProgram.h"
#include "app/ui/frmMain.h"
#include "platform/SteadyClock.h"
#include "support/Fakes.h"
#include "support/Heartbeat.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <thread>

namespace tavex2::bench {
namespace {

/// How late `wait` usually is for the next whole millisecond, in seconds: the median of 200 in a row, because another
/// program that takes the processor away delays single ones by as long as it likes.
template <class Wait>
double usualDelay(SteadyClock& clock, Wait wait) {
    std::array<double, 200> delays{};
    for (double& each : delays) {
        const std::chrono::milliseconds due{clock.milliseconds() + 1};
        wait(due);
        each = std::chrono::duration<double>(clock.now() - due).count();
    }
    std::ranges::nth_element(delays, delays.begin() + delays.size() / 2);
    return delays[delays.size() / 2];
}

void addPulses(Comparisons& comparisons, SteadyClock& clock) {
    comparisons.add(
        "delay of a stimulus pulse, sleep", {.leastSpeedup = {}, .mostPeerTimes = {}, .mostMs = 0.5},
        [&clock] {
            return usualDelay(clock,
                              [&](std::chrono::milliseconds due) { std::this_thread::sleep_for(due - clock.now()); });
        },
        [&clock] { return usualDelay(clock, [&](std::chrono::milliseconds) { clock.waitForNextMillisecond(); }); }, 3);
}

/// The main window on the simulated board.
class Window {
  public:
    explicit Window(const std::vector<std::string>& settings) {
        m_sound.devices = 0;
        m_store.values["Tavex2/Startup/Datadir"] = m_folder.path().string();
        auto program = WindowProgram::create({.board = "simulator", .settings = settings}, m_store, m_sound);
        if (!program) throw std::runtime_error(program.error().text);
        m_program = std::move(program).value();
        m_program->show();
        if (!QTest::qWaitForWindowActive(&m_program->window())) throw std::runtime_error("The window does not open.");
    }

    void press(const char* button) { m_program->window().findChild<QToolButton*>(QLatin1String(button))->click(); }
    /// The longest time between two beats of its thread within a second, in seconds.
    double longestGap() {
        const test::Heartbeat heart;
        QTest::qWait(1000);
        return heart.longestGapMs() / 1000;
    }

  private:
    test::TemporaryFolder m_folder;
    test::FakeSettingsStore m_store;
    test::FakeSound m_sound;
    std::unique_ptr<WindowProgram> m_program;
};

void addWindow(Comparisons& comparisons, Window& window) {
    comparisons.add(
        "longest wait for the window, 16 x 100 kHz watched, nothing watched",
        {.leastSpeedup = {}, .mostPeerTimes = {}, .mostMs = 50}, [&window] { return window.longestGap(); },
        [&window] {
            window.press("Realtime");
            QTest::qWait(1500); // until the graph is full
            const double gap = window.longestGap();
            window.press("Stop");
            return gap;
        },
        1);
}

int run(int argc, char** argv) {
    Comparisons comparisons;
    SteadyClock clock;
    addPulses(comparisons, clock);
    Window window({"Channels=0:15", "Rate=100000", "Duration=1", "DIOMask=0"});
    addWindow(comparisons, window);
    return comparisons.run(argc, argv);
}

} // namespace
} // namespace tavex2::bench

int main(int argc, char** argv) {
    return tavex2::bench::reporting(argv[0], [&] {
        tavex2::bench::useNoDisplay();
        const QApplication application(argc, argv);
        return tavex2::bench::run(argc, argv);
    });
}
