#pragma once

#include "display/ui/CWGraph.h"

#include <QIODevice>
#include <QString>

namespace tavex2 {

/// Draws a graph as lines and text that stay sharp at any size. Gives what went wrong, or nothing. CMake chooses
/// between the drawing and a twin that says that this program was built without the library for it.
QString drawSvg(CWGraph& graph, QIODevice& file, int width, int height);

} // namespace tavex2
