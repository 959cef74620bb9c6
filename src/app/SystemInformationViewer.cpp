#include "app/SystemInformationViewer.h"

#include <string_view>
#include <utility>

namespace tavex2 {

namespace {

/// "&h" and the digits of a number whose lowest byte comes first.
std::string hexadecimal(const std::string& bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "&h";
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
        const auto value = static_cast<unsigned char>(*byte);
        text += digits[value >> 4];
        text += digits[value & 0xFU];
    }
    return text;
}

} // namespace

std::optional<std::string> GetKeyValue(const Registry& registry, const std::string& key, const std::string& name) {
    const std::optional<RegistryValue> value = registry.query(key, name);
    if (!value) return std::nullopt;
    switch (value->kind) {
    case RegistryValue::Kind::Text:
        return value->bytes.substr(0, value->bytes.find('\0'));
    case RegistryValue::Kind::Number32:
        return hexadecimal(value->bytes);
    default:
        return value->bytes;
    }
}

SystemInformationViewer::SystemInformationViewer(std::unique_ptr<Registry> registry, Shell& shell, Messages& messages)
    : m_registry(std::move(registry)), m_shell(shell), m_messages(messages) {}

/// The viewer itself, or else one of its usual name in the folder where such tools lie.
std::optional<std::string> SystemInformationViewer::program() const {
    if (auto viewer = GetKeyValue(*m_registry, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH")) return viewer;
    const auto folder = GetKeyValue(*m_registry, "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO");
    constexpr const char* viewer = "MSINFO32.EXE";
    if (!folder || !m_shell.canRead(*folder, viewer)) return std::nullopt;
    return m_shell.pathOf(*folder, viewer);
}

bool SystemInformationViewer::StartSysInfo() {
    if (!m_registry) return false;
    if (const auto viewer = program())
        m_shell.execute({.file = *viewer, .parameters = {}, .folder = {}});
    else
        m_messages.show(
            {"System information is unavailable at this time.", "Tavex2", MessageIcon::None, MessageButtons::Ok});
    return true;
}

} // namespace tavex2
