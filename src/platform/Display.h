#pragma once

namespace tavex2 {

/// Whether a window can be opened: there is a display, or the user chose a way to do without one.
bool displayAvailable();

/// Whether this is a system that runs without any display at times.
bool displayMayBeMissing();

} // namespace tavex2
