#pragma once

#include "platform/Shell.h"

namespace tavex2 {

/// Programs by their name or path, documents by the desktop's own opener.
class DesktopShell final : public Shell {
  public:
    bool execute(const ShellRequest& request) override;
};

} // namespace tavex2
