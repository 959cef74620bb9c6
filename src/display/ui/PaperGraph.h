#pragma once

#include "base/Result.h"
#include "display/ui/CWGraph.h"

#include <filesystem>
#include <memory>

namespace tavex2 {

/// A graph as it looks on paper, whatever the desktop's colours are. Never shown; drawn into pictures.
std::unique_ptr<CWGraph> graphOnPaper();

/// The same with what another graph shows: traces, limits, captions and units.
std::unique_ptr<CWGraph> copyOnPaper(const CWGraph& shown);

/// Draws a graph into a PNG file of so many pixels, times `scale` in each direction. An existing file is replaced only
/// when the picture is complete. Errors: those of AtomicFile; WriteFailed when it cannot be drawn.
Result<void> saveAsPng(CWGraph& graph, const std::filesystem::path& path, int width, int height, double scale = 1);

/// Draws a graph into a PDF file, a page of width x height pixels at 96 to the inch. Errors as for saveAsPng().
Result<void> saveAsPdf(CWGraph& graph, const std::filesystem::path& path, int width, int height);

/// The same into an SVG file. WriteFailed also where this program was built without the library for it.
Result<void> saveAsSvg(CWGraph& graph, const std::filesystem::path& path, int width, int height);

} // namespace tavex2
