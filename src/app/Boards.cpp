#include "app/Boards.h"

#include "app/LmbSignal.h"
#include "app/StoredSettings.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "platform/devices/Recording.h"
#include "platform/devices/Simulator.h"
#include "platform/devices/SndfileSignal.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tavex2 {

namespace {

using MadeBoard = Result<std::unique_ptr<Board>>;

MadeBoard makeSimulator(std::string_view options, std::string_view spec, MillisecondClock& clock) {
    const Result<SimulatorOptions> parsed = parseSimulatorOptions(options);
    if (!parsed) return parsed.error();
    return std::unique_ptr<Board>(std::make_unique<Simulator>(parsed.value(), std::string(spec), clock));
}

MadeBoard makeRecording(std::string_view file, std::string_view spec, MillisecondClock& clock) {
    if (file.empty()) return Error{ErrorKind::InvalidValue, "Name the file to play, for example recording:ecg.wav."};
    const std::filesystem::path path = pathFromText(file);
    auto signal = extensionOf(path) == ".lmb" ? openLmbSignal(path) : openSndfileSignal(path);
    if (!signal) return signal.error();
    return std::unique_ptr<Board>(std::make_unique<Recording>(std::move(signal).value(), std::string(spec), clock));
}

/// The device number that was asked for; 0 when it is no number but a specification.
int deviceNumber(std::string_view asked) {
    int number = 0;
    const auto [end, error] = std::from_chars(asked.data(), asked.data() + asked.size(), number);
    return error == std::errc{} && end == asked.data() + asked.size() ? number : 0;
}

} // namespace

MadeBoard makeBoard(std::string_view spec, MillisecondClock& clock) {
    const std::size_t colon = std::min(spec.find(':'), spec.size());
    const std::string_view kind = spec.substr(0, colon);
    const std::string_view rest = spec.substr(std::min(colon + 1, spec.size()));
    if (kind == "simulator") return makeSimulator(rest, spec, clock);
    if (kind == "recording") return makeRecording(rest, spec, clock);
    return Error{ErrorKind::NotFound, "There is no kind of board \"" + std::string(kind) +
                                          "\". Use simulator, simulator:seed=7 or recording:PATH."};
}

Result<OpenBoards> openBoards(const std::optional<std::string>& asked, const SettingsStore& store,
                              MillisecondClock& clock) {
    const int number = asked ? deviceNumber(*asked) : 0;
    const bool specAsked = asked && number == 0;
    std::string specs = specAsked ? *asked : readText(store, stored::boards, "");
    if (specs.empty()) specs = "simulator";

    BoardList boards;
    while (!specs.empty() && boards.count() < BoardList::mostBoards) {
        // Only a stored list has several: a path given on the command line may hold a semicolon.
        const std::size_t end = specAsked ? specs.size() : std::min(specs.find(';'), specs.size());
        MadeBoard board = makeBoard(std::string_view(specs).substr(0, end), clock);
        if (!board) return board.error();
        boards.add(std::move(board).value());
        specs.erase(0, std::min(end + 1, specs.size()));
    }
    if (number != 0 && boards.find(number) == nullptr)
        return Error{ErrorKind::NotFound, "There is no board number " + std::to_string(number) +
                                              ". The command 'tavex2 boards' lists those that can be used."};
    std::optional<std::int16_t> device;
    if (asked) device = static_cast<std::int16_t>(specAsked ? 1 : number);
    return OpenBoards{std::move(boards), device};
}

} // namespace tavex2
