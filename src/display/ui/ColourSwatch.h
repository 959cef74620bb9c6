#pragma once

#include "display/TraceColours.h"

#include <QIcon>

namespace tavex2 {

/// A framed rectangle of a trace's colour, `swatchSize` large, for the lines of a list.
QIcon colourSwatch(Rgb colour);

inline constexpr QSize swatchSize(24, 12);

} // namespace tavex2
