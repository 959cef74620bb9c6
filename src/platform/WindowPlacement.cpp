#include "platform/WindowPlacement.h"

#include "base/Rounding.h"

#include <algorithm>

namespace tavex2 {

WindowCorner centredOver(const WindowPlace& parent, double childWidth, double childHeight) {
    const double left = saturatedInt16(parent.left + parent.width / 2) - childWidth / 2;
    const double top = saturatedInt16(parent.top + parent.height / 2) - childHeight / 2;
    return {std::max(left, 0.0), std::max(top, 0.0)};
}

} // namespace tavex2
