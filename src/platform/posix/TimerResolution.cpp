#include "platform/TimerResolution.h"

namespace tavex2 {

TimerResolution::TimerResolution() = default;
TimerResolution::~TimerResolution() = default;

} // namespace tavex2
