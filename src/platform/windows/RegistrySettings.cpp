#include "platform/UserSettings.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHeader.h"

#include <vector>

namespace tavex2 {

namespace {

std::wstring keyOf(std::string_view application, std::string_view section) {
    return L"Software\\" + wide(application) + L"\\" + wide(section);
}

/// Texts in the user's part of the registry: Software\application\section, and the key as the value's name.
class RegistrySettings final : public SettingsStore {
  public:
    std::optional<std::string> read(std::string_view application, std::string_view section,
                                    std::string_view key) const override {
        const std::wstring place = keyOf(application, section);
        const std::wstring name = wide(key);
        DWORD bytes = 0;
        if (::RegGetValueW(HKEY_CURRENT_USER, place.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &bytes) !=
            ERROR_SUCCESS)
            return std::nullopt;
        std::vector<wchar_t> text(bytes / sizeof(wchar_t) + 1);
        bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        if (::RegGetValueW(HKEY_CURRENT_USER, place.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(),
                           &bytes) != ERROR_SUCCESS)
            return std::nullopt;
        return narrow(text.data());
    }

    Result<void> write(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) override {
        const std::wstring text = wide(value);
        const LSTATUS status =
            ::RegSetKeyValueW(HKEY_CURRENT_USER, keyOf(application, section).c_str(), wide(key).c_str(), REG_SZ,
                              text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
        if (status == ERROR_SUCCESS) return {};
        return Error{ErrorKind::WriteFailed, location(application) + " cannot be written."};
    }

    std::string location(std::string_view application) const override {
        return "HKEY_CURRENT_USER\\Software\\" + std::string(application);
    }
};

} // namespace

std::unique_ptr<SettingsStore> userSettings() {
    return std::make_unique<RegistrySettings>();
}

} // namespace tavex2
