#include "platform/TimerResolution.h"

#include "platform/windows/WindowsHeader.h"

#include <mmsystem.h>

namespace tavex2 {

namespace {

constexpr UINT finestMilliseconds = 1;

} // namespace

TimerResolution::TimerResolution() {
    ::timeBeginPeriod(finestMilliseconds);
}

TimerResolution::~TimerResolution() {
    ::timeEndPeriod(finestMilliseconds);
}

} // namespace tavex2
