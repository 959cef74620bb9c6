#pragma once

#include "platform/Shell.h"

namespace tavex2 {

/// Programs by their name or path; documents, folders and web pages by the desktop's own opener. Where a desktop lacks
/// the file manager, editor or help that is asked for by the name it has elsewhere, its own ones take their place.
class DesktopShell final : public Shell {
  public:
    bool canRead(const std::string& folder, const std::string& name) const override;
    std::string pathOf(const std::string& folder, const std::string& name) const override;

  private:
    int open(const ShellRequest& request) override;
    int start(const std::string& commandLine) override;
};

} // namespace tavex2
