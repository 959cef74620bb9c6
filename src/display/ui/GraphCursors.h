#pragma once

#include "display/ui/CWGraph.h"

#include <QObject>

#include <array>
#include <cstdint>

namespace tavex2 {

/// Two cursors on a graph, each a line that sits on a sample.
///
/// Dragging moves the cursor that is grabbed; a click elsewhere in the plot area brings the nearer one there; a double
/// click moves none. With the
/// focus on the graph the arrow keys move the marked cursor by a sample (Shift: ten, Ctrl: a fiftieth of the view),
/// Home and End bring it to the ends of the data, 1 and 2 mark a cursor. Only the lines are drawn anew when one moves.
/// User-interface thread.
class GraphCursors final : public QObject {
    Q_OBJECT

  public:
    /// The graph reports its mouse events (tracking mode 1).
    explicit GraphCursors(CWGraph& graph);

    /// The cursors move on `count` samples from 0 s on; without samples they are hidden.
    void setSamples(std::int64_t count, double intervalSeconds);

    /// Puts cursor 0 or 1 on a sample; indices beyond the data give the first or the last one.
    void setSample(int cursor, std::int64_t sample);
    std::int64_t sample(int cursor) const { return m_samples[static_cast<std::size_t>(cursor)]; }
    double seconds(int cursor) const { return static_cast<double>(sample(cursor)) * m_intervalSeconds; }
    /// The cursor that the keys move.
    int marked() const { return m_marked; }

  Q_SIGNALS:
    /// The user moved a cursor.
    void moved();
    /// The left button was clicked twice anywhere on the graph.
    void doubleClicked();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Line {
        QCPItemStraightLine* line;
        QCPItemText* label;
    };

    Line makeLine(int cursor);
    std::int64_t inside(std::int64_t sample) const;
    void grabAt(double x);
    void takeDoubleClick();
    void drag(double x);
    bool keyPressed(const QKeyEvent& event);
    void mark(int cursor);
    void show();
    double pixelsFrom(int cursor, double x) const;

    CWGraph& m_graph;
    QCPLayer* m_layer;
    std::array<Line, 2> m_lines;
    std::array<std::int64_t, 2> m_samples{};
    std::int64_t m_count = 0;
    double m_intervalSeconds = 1;
    int m_marked = 0;
    double m_grabOffset = 0;                        ///< seconds from the pointer to the grabbed cursor
    std::array<std::int64_t, 2> m_samplesAtPress{}; ///< of the mouse button
    int m_markedAtPress = 0;
};

} // namespace tavex2
