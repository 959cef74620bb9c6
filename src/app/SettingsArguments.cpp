#include "app/SettingsArguments.h"

#include "acquisition/AcqFields.h"
#include "acquisition/OwnSettings.h"

#include <algorithm>

namespace tavex2 {

namespace {

Error unknown(Error error, const OwnSettings& own) {
    error.text += " The program's own are";
    for (const OwnSetting& setting : own)
        error.text += (&setting == &own.front() ? " " : ", ") + std::string(setting.name) + " (" +
                      std::string(setting.meaning) + ")";
    error.text += ".";
    return error;
}

} // namespace

Result<void> applySettings(ProgramState& state, const std::vector<std::string>& arguments) {
    const OwnSettings own = ownSettings(state);
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.find('=');
        if (equals == std::string::npos)
            return Error{ErrorKind::NotFound,
                         "\"" + argument + "\" sets nothing. Write a setting as NAME=VALUE, for example Rate=1000."};
        const std::string name = argument.substr(0, equals);
        const std::string value = argument.substr(equals + 1);
        const auto setting = std::ranges::find(own, name, &OwnSetting::name);
        const Result<void> set = setting != own.end() ? setting->set(value) : setField(state.settings, name, value);
        if (!set) return set.error().kind == ErrorKind::NotFound ? unknown(set.error(), own) : set.error();
    }
    return {};
}

} // namespace tavex2
