#pragma once

#include "platform/AnalogInput.h"
#include "platform/CWDIO.h"

namespace tavex2 {

/// The digital output lines of the board that the analog-input control has selected.
class DigitalOutput final : public CWDIO {
  public:
    explicit DigitalOutput(const AnalogInput& analogInput) : m_analogInput(analogInput) {}

    int lines() const override {
        const Board* board = m_analogInput.board();
        return board != nullptr ? board->description().digitalLines : 0;
    }
    void write(std::uint8_t value) override {
        if (Board* board = m_analogInput.board()) board->writeDigital(value);
    }

  private:
    const AnalogInput& m_analogInput;
};

} // namespace tavex2
