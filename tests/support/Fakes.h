#pragma once

#include "acquisition/RunView.h"
#include "files/FileView.h"
#include "platform/CWAI.h"
#include "platform/CWDIO.h"
#include "platform/EventLoop.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"
#include "platform/MillisecondClock.h"
#include "platform/SettingsStore.h"
#include "platform/Shell.h"
#include "platform/SoundOutput.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tavex2::test {

/// In-memory twins of the interfaces that the logic talks to. Each records what it was told.

using Log = std::vector<std::string>;

/// A clock that stands still until somebody waits for its next millisecond.
class FakeClock final : public MillisecondClock {
  public:
    std::chrono::nanoseconds now() override { return m_now; }
    void waitForNextMillisecond() override { m_now += std::chrono::milliseconds(1); }
    void waitUntil(std::chrono::nanoseconds time, std::stop_token) override { m_now = std::max(m_now, time); }

  private:
    std::chrono::nanoseconds m_now{0};
};

/// Keeps what was posted and what waits for its time until the test runs it.
class FakeEvents final : public EventLoop {
  public:
    explicit FakeEvents(MillisecondClock& clock) : m_clock(clock) {}

    void post(std::function<void()> event) override { m_queue.push_back(std::move(event)); }
    void after(std::chrono::milliseconds time, std::function<void()> event) override {
        m_timed.emplace_back(m_clock.milliseconds() + time.count(), std::move(event));
    }

    /// Lets this much time pass, millisecond by millisecond, and runs what is due.
    void pass(int milliseconds) {
        for (int i = 0; i < milliseconds; ++i) {
            m_clock.waitForNextMillisecond();
            for (auto due = m_timed.begin(); due != m_timed.end();) {
                if (due->first > m_clock.milliseconds()) {
                    ++due;
                    continue;
                }
                m_queue.push_back(std::move(due->second));
                due = m_timed.erase(due);
            }
            while (!m_queue.empty()) {
                const auto event = std::move(m_queue.front());
                m_queue.pop_front();
                event();
            }
        }
    }

  private:
    MillisecondClock& m_clock;
    std::deque<std::function<void()>> m_queue;
    std::vector<std::pair<std::int64_t, std::function<void()>>> m_timed;
};

/// Gives the prepared answers in turn, then OK; `whileOpen` runs while a message is shown.
class FakeMessages final : public Messages {
  public:
    std::vector<Message> shown;
    std::deque<MessageAnswer> answers;
    std::function<void()> whileOpen;

    MessageAnswer show(const Message& message) override {
        shown.push_back(message);
        if (whileOpen) whileOpen();
        if (answers.empty()) return MessageAnswer::Ok;
        const MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

class FakeSound final : public SoundOutput {
  public:
    int devices = 1;
    std::vector<std::filesystem::path> played;

    int deviceCount() const override { return devices; }
    void playFile(const std::filesystem::path& path) override { played.push_back(path); }
    void finishPlaying(std::chrono::milliseconds) override {}
};

/// Records every port write with the clock's reading.
class FakeDigitalOutput final : public CWDIO {
  public:
    explicit FakeDigitalOutput(MillisecondClock& clock) : m_clock(clock) {}
    int lineCount = 8;
    std::vector<std::pair<std::int64_t, int>> writes;

    int lines() const override { return lineCount; }
    void write(std::uint8_t value) override { writes.emplace_back(m_clock.milliseconds(), value); }

  private:
    MillisecondClock& m_clock;
};

/// An analog-input control without a board: the test plays the board's part through deliver() and fail().
class FakeAnalogInput final : public CWAI {
  public:
    Log log;
    std::string description = "Device: Fake board";
    int configureCode = 0;
    int startCode = 0;
    int channelCount = 2;
    std::function<std::string(const AnalogInputConfig&)> refuse;
    std::function<void()> whenConfigured;
    std::function<void()> whenStarted;

    void selectDevice(int number) override { m_device = number; }
    int device() const override { return m_device; }
    std::string deviceDescription() const override { return description; }
    int Configure() override {
        log.emplace_back("Configure");
        if (whenConfigured) whenConfigured();
        return configureCode;
    }
    int Start() override {
        log.emplace_back("Start");
        m_running = startCode == 0;
        if (whenStarted) whenStarted();
        return startCode;
    }
    void Stop() override {
        if (m_running) log.emplace_back("Stop");
        m_running = false;
    }
    bool running() const override { return m_running; }
    int numChannels() const override { return channelCount; }
    std::int64_t totalScans() const override { return config.totalScans; }
    std::string refusalOf(const AnalogInputConfig& asked) const override {
        return refuse ? refuse(asked) : std::string();
    }
    std::string describe(int code) const override { return "Description of " + std::to_string(code) + "."; }

    /// Delivers a block whose sample (c, i) is `base` + 100 c + i.
    void deliver(double base, int index = 0, bool last = true) {
        onData({block(channelCount, config.chunkScans, base), index, last, 0});
    }

    static std::shared_ptr<const TrialArray> block(int channels, std::int64_t samples, double base) {
        TrialArray array = TrialArray::allocate(ElementType::Float64, channels == 1 ? 1 : 2, channels, samples).value();
        for (int c = 0; c < channels; ++c)
            for (std::int64_t i = 0; i < samples; ++i)
                array.doubles(c)[static_cast<std::size_t>(i)] = base + 100.0 * c + static_cast<double>(i);
        return std::make_shared<const TrialArray>(std::move(array));
    }

  private:
    int m_device = 1;
    bool m_running = false;
};

/// Records what a run asks a view for.
class FakeRunView final : public RunView {
  public:
    Log log;
    std::function<void()> whileRefreshing;
    std::function<void()> whilePainting;
    std::function<void()> whileCommenting;
    double realTimeWindowSeconds = 0;
    double realTimeIntervalSeconds = 0;
    std::vector<TrialData> realTimeBlocks;

    void refresh() override {
        log.emplace_back("refresh");
        if (whileRefreshing) whileRefreshing();
    }
    void paintNow() override {
        log.emplace_back("paint");
        if (whilePainting) whilePainting();
    }
    void beginRealTime(double windowSeconds) override {
        log.emplace_back("real time begins");
        realTimeWindowSeconds = windowSeconds;
    }
    void showRealTime(const TrialData& block, double sampleIntervalSeconds) override {
        realTimeBlocks.push_back(block);
        realTimeIntervalSeconds = sampleIntervalSeconds;
    }
    void endRealTime() override { log.emplace_back("real time ends"); }
    void RedrawTrials() override { log.emplace_back("RedrawTrials"); }
    void editComments() override {
        log.emplace_back("comments");
        if (whileCommenting) whileCommenting();
    }
};

/// Records what a file command asks a view for.
class FakeFileView final : public FileView {
  public:
    Log log;
    bool goesOn = true;
    std::function<void()> whileRefreshing;

    void refresh() override {
        log.emplace_back("refresh");
        if (whileRefreshing) whileRefreshing();
    }
    bool fileProgress(int, int) override {
        log.emplace_back("pending");
        return goesOn;
    }
    void followDisplaySettings() override { log.emplace_back("units"); }
    void RedrawTrials() override { log.emplace_back("redraw"); }
};

class FakeSink final : public TrialSink {
  public:
    std::vector<int> saveTypes;
    std::function<void()> whileSaving;

    void autosave(int saveType) override {
        saveTypes.push_back(saveType);
        if (whileSaving) whileSaving();
    }
};

/// Gives the prepared names in turn, then Cancel.
class FakeDialogs final : public FileDialogs {
  public:
    std::vector<FileDialogRequest> asked;
    std::deque<std::optional<std::filesystem::path>> answers;

    std::optional<std::filesystem::path> askSaveName(const FileDialogRequest& request) override { return ask(request); }
    std::optional<std::filesystem::path> askOpenName(const FileDialogRequest& request) override { return ask(request); }

  private:
    std::optional<std::filesystem::path> ask(const FileDialogRequest& request) {
        asked.push_back(request);
        if (answers.empty()) return std::nullopt;
        const auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

/// Remembers what it was asked to start.
class FakeShell final : public Shell {
  public:
    bool canRead(const std::string& folder, const std::string& name) const override {
        return readable.contains(pathOf(folder, name));
    }
    std::string pathOf(const std::string& folder, const std::string& name) const override {
        return folder.empty() ? name : folder + "|" + name;
    }

    std::vector<ShellRequest> requests;
    std::vector<std::string> commandLines;
    std::set<std::string> readable;

  private:
    int open(const ShellRequest& request) override {
        requests.push_back(request);
        return started;
    }
    int start(const std::string& commandLine) override {
        commandLines.push_back(commandLine);
        return started;
    }
};

/// The settings of a user, in memory.
class FakeSettingsStore final : public SettingsStore {
  public:
    std::map<std::string, std::string> values; ///< "application/section/key" -> text
    bool full = false;                         ///< refuses everything

    std::optional<std::string> read(std::string_view application, std::string_view section,
                                    std::string_view key) const override {
        const auto found = values.find(path(application, section, key));
        if (found == values.end()) return std::nullopt;
        return found->second;
    }
    Result<void> write(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) override {
        if (full) return Error{ErrorKind::WriteFailed, "The store of " + std::string(application) + " is full."};
        values[path(application, section, key)] = value;
        return {};
    }

    std::string location(std::string_view) const override { return "in memory"; }

  private:
    static std::string path(std::string_view application, std::string_view section, std::string_view key) {
        return std::string(application) + "/" + std::string(section) + "/" + std::string(key);
    }
};

} // namespace tavex2::test
