// Saving, opening and exporting a trial, against what everyone has for it: cp, cat, the C library's fprintf and
// numpy.savetxt. Our times include bringing the bytes safely to the disk, the peers' do not.

#include "Comparisons.h"
#include "SignalTrial.h"
#include "files/FileIO.h"
#include "files/Import.h"
#include "files/TextExport.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>

namespace tavex2::bench {

namespace {

namespace fs = std::filesystem;

constexpr const char* title = "Trial 0001";

/// A folder for the files of one run; TMPDIR says on which disk.
class Folder {
  public:
    Folder() : m_path(fs::temp_directory_path() / ("tavex2-bench-" + std::to_string(::getpid()))) {
        fs::create_directories(m_path);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    fs::path operator/(const char* name) const { return m_path / name; }

  private:
    fs::path m_path;
};

void require(bool good, const std::string& what) {
    if (!good) throw std::runtime_error(what);
}

template <class T>
T valueOf(Result<T> result) {
    if (!result) throw std::runtime_error(result.error().text);
    if constexpr (!std::is_void_v<T>) return std::move(result).value();
}

/// Seconds for writing a file anew while the disk has nothing else to do.
template <class Write>
double secondsOfWriting(const fs::path& file, Write write) {
    fs::remove(file);
    ::sync();
    return secondsOf(write);
}

void command(const std::string& line) {
    require(std::system(line.c_str()) == 0, "This command failed: " + line);
}

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

Trial trialWith(TrialData samples) {
    constexpr int rateHz = 10'000;
    Trial trial;
    trial.name = "Trial0001";
    trial.sampling.Rate = rateHz;
    trial.sampling.Duration = static_cast<float>(samples->samples()) / rateHz;
    trial.samples = std::move(samples);
    return trial;
}

/// What anyone would write: one call a number.
void writeWithTheLibrary(const fs::path& file, const Trial& trial, const char* time, const char* value,
                         const char* rowEnd) {
    std::FILE* to = std::fopen(file.c_str(), "wb");
    require(to != nullptr, "No file could be opened in " + file.parent_path().string());
    const TrialArray& samples = *trial.samples;
    const auto step = static_cast<float>(1.0 / trial.sampling.Rate);
    float seconds = 0;
    for (std::int64_t row = 0; row < samples.samples(); ++row) {
        std::fprintf(to, time, static_cast<double>(seconds));
        for (int channel = 0; channel < samples.channels(); ++channel)
            std::fprintf(to, value, samples.at(channel, row));
        std::fputs(rowEnd, to);
        seconds += step;
    }
    require(std::fclose(to) == 0, "The peer's file could not be written.");
}

/// The seconds that numpy.savetxt itself takes, without the start of its interpreter and reading the samples.
double secondsOfNumpy(const Folder& folder, const fs::path& trialFile, const Trial& trial) {
    const fs::path script = folder / "savetxt.py";
    const fs::path answer = folder / "seconds.txt";
    const int channels = trial.samples->channels();
    std::ofstream(script) << "import sys, time, numpy\n"
                             "trial, table, answer, channels = sys.argv[1:4] + [int(sys.argv[4])]\n"
                             "blocks = numpy.fromfile(trial, '<f4', offset=4374).reshape(channels + 1, -1).T\n"
                             "rows = numpy.ascontiguousarray(blocks, 'f8')\n"
                             "start = time.perf_counter()\n"
                             "numpy.savetxt(table, rows, ['%.6f'] + ['%.5f'] * channels, '\\t', '\\t\\r\\n')\n"
                             "open(answer, 'w').write(str(time.perf_counter() - start))\n";
    command("python3 " + quoted(script) + " " + quoted(trialFile) + " " + quoted(folder / "numpy.tab") + " " +
            quoted(answer) + " " + std::to_string(channels));
    double seconds = 0;
    require(static_cast<bool>(std::ifstream(answer) >> seconds), "numpy.savetxt gave no time.");
    return seconds;
}

int run(int argc, char** argv) {
    const Folder folder;
    const Trial trial = trialWith(madeUpTrial(ElementType::Float64, 16, 1'000'000));
    const fs::path saved = folder / "saved.lmb";
    const fs::path copy = folder / "copy.lmb";
    const fs::path table = folder / "table.txt";
    const fs::path ofThePeer = folder / "peer.txt";
    valueOf(WriteLmb(saved, trial, title));

    Comparisons comparisons;
    comparisons.add(
        "save .lmb, 16 x 1 M, cp", {.leastSpeedup = {}, .mostPeerTimes = 1.5, .mostMs = {}},
        [&] { return secondsOfWriting(copy, [&] { command("cp " + quoted(saved) + " " + quoted(copy)); }); },
        [&] { return secondsOfWriting(copy, [&] { valueOf(WriteLmb(copy, trial, title)); }); }, 3);
    comparisons.add(
        "open .lmb, 16 x 1 M, cat", {.leastSpeedup = {}, .mostPeerTimes = 2, .mostMs = {}},
        [&] { return secondsOf([&] { command("cat " + quoted(saved) + " >/dev/null"); }); },
        [&] { return secondsOf([&] { valueOf(readLmbFile(saved)); }); }, 3);

    const Target export10{.leastSpeedup = 10, .mostPeerTimes = {}, .mostMs = {}};
    comparisons.add(
        "export .tab, 16 x 1 M, fprintf", export10,
        [&] {
            return secondsOfWriting(ofThePeer,
                                    [&] { writeWithTheLibrary(ofThePeer, trial, "%.6f\t", "%.5f\t", "\r\n"); });
        },
        [&] { return secondsOfWriting(table, [&] { valueOf(WriteTab(table, trial)); }); }, 1);
    comparisons.add(
        "export .lma, 16 x 1 M, fprintf", export10,
        [&] {
            return secondsOfWriting(ofThePeer,
                                    [&] { writeWithTheLibrary(ofThePeer, trial, "%10.4f", "%10.4f", "\r\n"); });
        },
        [&] { return secondsOfWriting(table, [&] { valueOf(WriteLma(table, trial)); }); }, 1);

    const Trial shorter = trialWith(madeUpTrial(ElementType::Float64, 16, 100'000));
    const fs::path shorterFile = folder / "shorter.lmb";
    valueOf(WriteLmb(shorterFile, shorter, title));
    if (std::system("python3 -c 'import numpy' 2>/dev/null") == 0)
        comparisons.add(
            "export .tab, 16 x 100 k, numpy.savetxt", export10,
            [&] { return secondsOfNumpy(folder, shorterFile, shorter); },
            [&] { return secondsOfWriting(table, [&] { valueOf(WriteTab(table, shorter)); }); }, 1);
    else
        std::fprintf(stderr, "Without numpy.savetxt; install the package python3-numpy.\n");
    return comparisons.run(argc, argv);
}

} // namespace

} // namespace tavex2::bench

int main(int argc, char** argv) {
    return tavex2::bench::reporting(argv[0], [&] { return tavex2::bench::run(argc, argv); });
}
