#include "platform/Display.h"

namespace tavex2 {

bool displayAvailable() {
    return true;
}

bool displayMayBeMissing() {
    return false;
}

} // namespace tavex2
