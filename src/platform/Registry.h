#pragma once

#include <memory>
#include <optional>
#include <string>

namespace tavex2 {

/// A value of a system's registry.
struct RegistryValue {
    enum class Kind { Text, Number32, Other };

    Kind kind = Kind::Other;
    std::string bytes; ///< a text's characters with the NUL at their end, a number's four bytes, the lowest first
};

/// Reads the part of a system's registry that holds for the whole machine.
class Registry {
  public:
    /// Values with more bytes than this cannot be read.
    static constexpr std::size_t longestValue = 1024;

    virtual ~Registry() = default;

    /// A value of a key such as "SOFTWARE\\Maker\\Product"; none when key or value does not exist.
    virtual std::optional<RegistryValue> query(const std::string& key, const std::string& name) const = 0;
};

/// This system's registry; null where systems have none.
std::unique_ptr<Registry> systemRegistry();

} // namespace tavex2
