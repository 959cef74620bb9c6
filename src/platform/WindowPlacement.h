#pragma once

namespace tavex2 {

/// Twips are twentieths of a point: 1440 an inch, 15 a pixel of a 96 dpi screen. Window sizes and positions are kept in
/// 16 bits; larger ones saturate.
inline constexpr double twipsPerInch = 1440;

/// A window's place on the screen, twips.
struct WindowPlace {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Upper left corner of a window, twips.
struct WindowCorner {
    double left = 0;
    double top = 0;
    friend bool operator==(const WindowCorner&, const WindowCorner&) = default;
};

/// Where a window of the child's size lies centred over its parent; never left of or above the screen's origin.
WindowCorner centredOver(const WindowPlace& parent, double childWidth, double childHeight);

} // namespace tavex2
