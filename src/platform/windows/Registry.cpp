#include "platform/Registry.h"

#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHeader.h"

#include <array>

namespace tavex2 {

namespace {

/// The local machine's root.
class SystemRegistry final : public Registry {
  public:
    std::optional<RegistryValue> query(const std::string& key, const std::string& name) const override {
        HKEY opened = nullptr;
        if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, wide(key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS)
            return std::nullopt;
        std::array<std::byte, longestValue> buffer{};
        auto size = static_cast<DWORD>(buffer.size());
        DWORD type = REG_NONE;
        const LSTATUS status = ::RegQueryValueExW(opened, wide(name).c_str(), nullptr, &type,
                                                  reinterpret_cast<BYTE*>(buffer.data()), &size);
        ::RegCloseKey(opened);
        if (status != ERROR_SUCCESS) return std::nullopt;
        if (type == REG_SZ || type == REG_EXPAND_SZ)
            return RegistryValue{RegistryValue::Kind::Text,
                                 narrow({reinterpret_cast<const wchar_t*>(buffer.data()), size / sizeof(wchar_t)})};
        return RegistryValue{type == REG_DWORD ? RegistryValue::Kind::Number32 : RegistryValue::Kind::Other,
                             std::string(reinterpret_cast<const char*>(buffer.data()), size)};
    }
};

} // namespace

std::unique_ptr<Registry> systemRegistry() {
    return std::make_unique<SystemRegistry>();
}

} // namespace tavex2
