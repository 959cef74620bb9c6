#include "acquisition/OwnSettings.h"

#include "base/Decimal.h"

#include <type_traits>

namespace tavex2 {

OwnSettings ownSettings(ProgramState& state) {
    const ProgramState initial;
    return {
        {.name = "AutosaveWithoutAsking",
         .storedKey = "Autosavewithoutasking",
         .meaning = "autosave shows no dialog and never replaces a file",
         .range = {},
         .value = &state.autosaveWithoutAsking,
         .initial = initial.autosaveWithoutAsking},
    };
}

Result<void> OwnSetting::set(std::string_view text) const {
    const auto problem = std::visit([&](auto* field) { return takeValue(*field, range, text); }, value);
    if (problem) return Error{ErrorKind::InvalidValue, std::string(name) + " " + *problem};
    return {};
}

std::string OwnSetting::text() const {
    if (const auto* flag = std::get_if<bool*>(&value)) return **flag ? "True" : "False";
    return plainNumber(*std::get<double*>(value));
}

void OwnSetting::reset() const {
    std::visit([this](auto* field) { *field = std::get<std::remove_pointer_t<decltype(field)>>(initial); }, value);
}

bool OwnSetting::differs() const {
    return std::visit(
        [this](const auto* field) { return *field != std::get<std::remove_cvref_t<decltype(*field)>>(initial); },
        value);
}

} // namespace tavex2
