#pragma once

#include <cstdint>

namespace tavex2 {

/// The digital I/O control: the output lines of the selected board.
class CWDIO {
  public:
    virtual ~CWDIO() = default;

    /// Number of digital output lines; 0 when the board has none or no board is selected.
    virtual int lines() const = 0;

    /// Sets all lines at once, bit i = line i.
    virtual void write(std::uint8_t value) = 0;
};

} // namespace tavex2
