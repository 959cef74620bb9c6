#pragma once

#include "base/Result.h"

#include <string>

namespace tavex2 {

class Manual;

/// Shows the user's manual. User-interface thread. Errors: a page that cannot be read.
class HelpViewer {
  public:
    virtual ~HelpViewer() = default;

    /// The table of contents, and its page.
    virtual Result<void> showContents(const Manual& manual) = 0;

    /// The search, ready for a word to be typed.
    virtual Result<void> showSearch(const Manual& manual) = 0;

    /// A page, at the anchor behind a '#' where there is one.
    virtual Result<void> showPage(const Manual& manual, const std::string& address) = 0;
};

} // namespace tavex2
