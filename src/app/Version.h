#pragma once

namespace tavex2 {

/// Major "." Minor "." Revision, from the build.
inline constexpr const char* versionText = TAVEX2_VERSION;

} // namespace tavex2
