#pragma once

#include "platform/EventLoop.h"

namespace tavex2 {

/// The window's event queue. Needs a QCoreApplication for as long as it lives.
class QtEventLoop final : public EventLoop {
  public:
    void post(std::function<void()> event) override;
    void after(std::chrono::milliseconds time, std::function<void()> event) override;
};

} // namespace tavex2
