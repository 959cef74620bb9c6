#pragma once

#include "base/Result.h"
#include "platform/BoardList.h"
#include "platform/MillisecondClock.h"
#include "platform/SettingsStore.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tavex2 {

/// Makes a board from its specification: "simulator", "simulator:seed=7", "recording:PATH" (a sound file, or a .lmb
/// trial file). `clock` paces it and outlives it. Errors say which kinds there are, or what is wrong with the file.
Result<std::unique_ptr<Board>> makeBoard(std::string_view spec, MillisecondClock& clock);

/// The boards of this machine and the one that was asked for.
struct OpenBoards {
    BoardList list;
    std::optional<std::int16_t> device; ///< number of the board that was asked for, if any was
};

/// Opens the boards of the stored list, else the simulated one. `asked` (from the command line) is a specification,
/// which then is the only board, or a device number, which must exist.
Result<OpenBoards> openBoards(const std::optional<std::string>& asked, const SettingsStore& store,
                              MillisecondClock& clock);

} // namespace tavex2
