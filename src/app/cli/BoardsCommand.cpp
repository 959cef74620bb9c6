#include "app/cli/BoardsCommand.h"

#include "app/Boards.h"
#include "base/Decimal.h"
#include "platform/SteadyClock.h"

#include <nlohmann/json.hpp>

namespace tavex2 {

Result<void> listBoards(bool json, const CommandLineServices& services) {
    SteadyClock clock;
    const Result<OpenBoards> boards = openBoards(std::nullopt, services.store, clock);
    if (!boards) return boards.error();
    auto list = nlohmann::ordered_json::array();
    for (int number = 1; number <= boards.value().list.count(); ++number) {
        const BoardDescription& board = boards.value().list.find(number)->description();
        list.push_back({{"Device", number},
                        {"Name", board.name},
                        {"Spec", board.spec},
                        {"Inputs", board.inputs},
                        {"LowestRate", board.lowestRateHz},
                        {"HighestRate", board.highestRateHz},
                        {"LowestVolts", board.lowestVolts},
                        {"HighestVolts", board.highestVolts},
                        {"DigitalLines", board.digitalLines}});
        if (json) continue;
        services.out << number << "  " << board.name << " (" << board.spec << "): " << board.inputs << " inputs, "
                     << plainNumber(board.lowestRateHz) << " to " << plainNumber(board.highestRateHz) << " Hz, "
                     << plainNumber(board.lowestVolts) << " to " << plainNumber(board.highestVolts) << " V, "
                     << board.digitalLines << " digital output lines\n";
    }
    if (json) services.out << list.dump(2) << '\n';
    return {};
}

} // namespace tavex2
