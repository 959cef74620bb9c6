#include "display/WindowLayout.h"

#include "base/Rounding.h"

namespace tavex2 {

GraphPlaces layoutGraphs(const WindowMeasures& window, bool ShowLastTrial, bool ShowAveragedTrials) {
    const double width = saturatedInt16(window.width - window.left - roomBesideGraphs);
    const auto height = static_cast<float>(window.height - window.top - roomBelowGraphs);
    const float share = ShowLastTrial || ShowAveragedTrials ? 2 : 1;
    const double current = saturatedInt16(static_cast<double>(height / share));
    const double other = ShowLastTrial != ShowAveragedTrials ? current : current / 2;

    GraphPlaces places;
    places.cwG = {window.left, window.top, width, current};
    places.cwGLast = {window.left, places.cwG.bottom(), width, other};
    places.cwGAvg = {window.left, ShowLastTrial ? places.cwGLast.bottom() : places.cwG.bottom(), width, other};
    return places;
}

SwatchPlace legendSwatch(int channel) {
    constexpr int rows = 4;
    constexpr int firstOffset = 120;
    constexpr int columnDistance = 480;
    constexpr int rowDistance = 360;
    return {.left = firstOffset + channel / rows * columnDistance, .top = firstOffset + channel % rows * rowDistance};
}

} // namespace tavex2
