#pragma once

#include "platform/Messages.h"
#include "platform/Registry.h"
#include "platform/Shell.h"

#include <memory>
#include <optional>
#include <string>

namespace tavex2 {

/// A value of the registry as text: a text up to its first NUL, a 32-bit number as "&h" and eight hexadecimal digits,
/// anything else byte by byte. No value when key or value does not exist.
std::optional<std::string> GetKeyValue(const Registry& registry, const std::string& key, const std::string& name);

/// Starts the system's own viewer of system information, which the registry names.
class SystemInformationViewer {
  public:
    /// `registry` is null on systems that have none.
    SystemInformationViewer(std::unique_ptr<Registry> registry, Shell& shell, Messages& messages);

    /// False on systems without a registry, where nothing happens; tells the user when the registry names no viewer.
    bool StartSysInfo();

  private:
    std::optional<std::string> program() const;

    std::unique_ptr<Registry> m_registry;
    Shell& m_shell;
    Messages& m_messages;
};

} // namespace tavex2
