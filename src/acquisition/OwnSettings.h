#pragma once

#include "acquisition/AcqFields.h"
#include "acquisition/records/ProgramState.h"
#include "base/Result.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tavex2 {

/// A setting of the program's own, beyond those that a setup file has room for: how it is called, what it may be, and
/// where its value lies. Whoever sets, stores, writes, reads or shows these settings goes through the list of them, so
/// a new one needs a line there and nothing else. User-interface thread.
struct OwnSetting {
    std::string_view name;      ///< for --set, and in the file beside a setup file
    std::string_view storedKey; ///< in the user's store
    std::string_view meaning;   ///< what it does, to stand behind its name
    FieldRange range;           ///< of a number
    std::variant<bool*, double*> value;
    std::variant<bool, double> initial;

    /// Sets it from text, as a user types it. Error InvalidValue as that of setField(), with the value left as it was.
    Result<void> set(std::string_view text) const;
    /// "True" or "False", or the number; set() takes it back exactly.
    std::string text() const;
    void reset() const;
    bool differs() const; ///< from its initial value
};

using OwnSettings = std::vector<OwnSetting>;

/// The list of these settings, with their values in `state`, which has to live as long.
OwnSettings ownSettings(ProgramState& state);

} // namespace tavex2
