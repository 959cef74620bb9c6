#pragma once

namespace tavex2 {

/// What the graphs are laid out in, twips.
struct WindowMeasures {
    double width = 0;  ///< of the window, with its frame
    double height = 0; ///< with frame, title and menu bar
    double left = 0;   ///< of cwG inside the window
    double top = 0;
};

/// Room that the window takes beside and below the graphs, twips: frame, and frame, title, menu and status bar.
inline constexpr double roomBesideGraphs = 135;
inline constexpr double roomBelowGraphs = 1150;

/// A graph's place, twips.
struct GraphPlace {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double bottom() const { return top + height; }
    friend bool operator==(const GraphPlace&, const GraphPlace&) = default;
};

struct GraphPlaces {
    GraphPlace cwG;
    GraphPlace cwGLast;
    GraphPlace cwGAvg;
};

/// Stacks the graphs: the current trial alone fills the height; with one more graph each takes half; with all three the
/// current trial keeps half and the others get a quarter each. Hidden graphs get a place too.
GraphPlaces layoutGraphs(const WindowMeasures& window, bool ShowLastTrial, bool ShowAveragedTrials);

/// A colour swatch of the legend, twips. Channels 0..15 run down four columns.
struct SwatchPlace {
    int left = 0;
    int top = 0;
    int width = 150;
    int height = 300;
};
SwatchPlace legendSwatch(int channel);

} // namespace tavex2
