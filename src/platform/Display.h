#pragma once

namespace tavex2 {

/// Whether a window can be opened: there is a display, or the user chose a way to do without one.
bool displayAvailable();

} // namespace tavex2
