#include "platform/SoundServer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

namespace tavex2::test {

namespace {

constexpr int rateHz = 44100;
constexpr float loudEnough = 0.05F;

/// Starts a program with its output in a file; -1 when there is no such program.
pid_t start(std::vector<std::string> arguments, const std::filesystem::path& output) {
    std::vector<char*> argv;
    for (std::string& each : arguments)
        argv.push_back(each.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    const int failed = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failed == 0 ? pid : -1;
}

void end(pid_t& pid, int signal) {
    if (pid <= 0) return;
    ::kill(pid, signal);
    ::waitpid(pid, nullptr, 0);
    pid = -1;
}

bool waitUntil(const std::function<bool()>& condition) {
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > giveUp) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

/// From the crossings of zero upwards, each placed between its two samples.
double frequencyOf(const float* first, const float* last) {
    double firstCrossing = -1;
    double lastCrossing = -1;
    int periods = -1;
    for (const float* each = first; each + 1 < last; ++each) {
        if (!(each[0] < 0 && each[1] >= 0)) continue;
        const double fraction = static_cast<double>(-each[0]) / static_cast<double>(each[1] - each[0]);
        lastCrossing = static_cast<double>(each - first) + fraction;
        if (periods < 0) firstCrossing = lastCrossing;
        ++periods;
    }
    return periods > 0 ? periods * rateHz / (lastCrossing - firstCrossing) : 0;
}

} // namespace

SoundServer::SoundServer(const std::filesystem::path& folder)
    : m_folder(folder), m_address("unix:" + (folder / "sound").string()), m_runtime("XDG_RUNTIME_DIR", folder.string()),
      m_server("PULSE_SERVER", m_address) {
    m_pid =
        start({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
               "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + (folder / "sound").string(), "-L",
               "module-null-sink sink_name=quiet"},
              folder / "server.log");
    m_running = m_pid > 0 && waitUntil([this] {
                    pid_t asking = start({"pactl", "list", "short", "sinks"}, m_folder / "sinks");
                    if (asking < 0) return true; // not installed: the listener will say so
                    ::waitpid(asking, nullptr, 0);
                    std::ifstream sinks(m_folder / "sinks");
                    const std::string text{std::istreambuf_iterator<char>(sinks), {}};
                    return text.find("quiet") != std::string::npos;
                });
}

void SoundServer::kill() {
    end(m_pid, SIGKILL);
    m_running = false;
}

Listener::Listener(const SoundServer& server) : m_file(server.folder() / "heard.raw") {
    std::error_code ignored;
    std::filesystem::remove(m_file, ignored);
    m_pid = start({"parec", "--device=quiet.monitor", "--format=float32le", "--rate=" + std::to_string(rateHz),
                   "--channels=1", "--latency-msec=20"},
                  m_file);
}

std::vector<float> Listener::samples() const {
    std::ifstream file(m_file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::vector<float> samples(bytes.size() / sizeof(float));
    std::copy_n(bytes.data(), samples.size() * sizeof(float), reinterpret_cast<char*>(samples.data()));
    return samples;
}

bool Listener::hears() {
    return m_pid > 0 && waitUntil([this] { return samples().size() > rateHz / 20; });
}

bool Listener::waitForSound() {
    return waitUntil([this] { return std::ranges::any_of(samples(), [](float each) { return each > loudEnough; }); });
}

Heard Listener::stop() {
    // What was played last is on its way: two more buffers have to arrive.
    const std::size_t enough = samples().size() + rateHz / 10;
    (void)waitUntil([&] { return samples().size() >= enough; });
    end();

    const std::vector<float> all = samples();
    const auto loud = [](float each) { return std::abs(each) > loudEnough; };
    Heard heard;
    for (const float each : all)
        heard.loudest = std::max(heard.loudest, static_cast<double>(std::abs(each)));
    const auto first = std::ranges::find_if(all, loud);
    if (first == all.end()) return heard;
    const auto last = std::find_if(all.rbegin(), all.rend(), loud).base();
    // Silence inside, between two sounds, does not count.
    std::size_t quiet = 0;
    std::size_t gap = 0;
    for (auto each = first; each != last; ++each) {
        gap = loud(*each) ? 0 : gap + 1;
        if (gap == rateHz / 50) quiet += gap;
        if (gap > rateHz / 50) ++quiet;
    }
    const auto length = static_cast<std::size_t>(last - first);
    heard.seconds = static_cast<double>(length - quiet) / rateHz;
    const float* const begin = &*first;
    const float* const end = begin + length;
    heard.frequencyHz = frequencyOf(begin, end);
    heard.lastFrequencyHz = frequencyOf(std::max(begin, end - rateHz / 10), end);
    return heard;
}

void Listener::end() {
    test::end(m_pid, SIGTERM);
}

} // namespace tavex2::test
