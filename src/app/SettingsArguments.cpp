#include "app/SettingsArguments.h"

#include "acquisition/AcqFields.h"

namespace tavex2 {

Result<void> applySettings(AcqSettings& settings, const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.find('=');
        if (equals == std::string::npos)
            return Error{ErrorKind::NotFound,
                         "\"" + argument + "\" sets nothing. Write a setting as NAME=VALUE, for example Rate=1000."};
        if (auto result = setField(settings, argument.substr(0, equals), argument.substr(equals + 1)); !result)
            return result;
    }
    return {};
}

} // namespace tavex2
