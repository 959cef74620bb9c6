#pragma once

#include "display/ui/QCustomPlotLibrary.h"

#include <QObject>

#include <memory>

namespace tavex2 {

class LabelScaleTicker;

/// One axis of a graph as the program sees it: limits, continuous autoscaling, caption and label scale.
///
/// The library's axis refuses limits without extent and swaps limits that are the wrong way round. Here limits read
/// back exactly as they were set; wrong-way limits are drawn as a reversed axis, and on an axis between equal limits
/// this one value stands in the middle, with nothing beside it. User-interface thread; a part of CWGraph.
class GraphAxis : public QObject {
    Q_OBJECT

  public:
    explicit GraphAxis(QCPAxis* axis);

    double minimum() const { return m_minimum; }
    double maximum() const { return m_maximum; }
    /// Values that are no finite number are ignored.
    void setLimits(double minimum, double maximum);

    bool autoScale() const { return m_autoScale; }
    void setAutoScale(bool on) { m_autoScale = on; }

    QString caption() const { return m_caption; }
    void setCaption(const QString& caption);

    QString labelScaleExpression() const { return m_labelScaleExpression; }
    /// Text other than "" and "*" with a positive number is ignored.
    void setLabelScaleExpression(const QString& expression);

    /// Suits numbers and caption to an axis of `length` pixels whose caption has `captionRoom` pixels: where the room
    /// is short there are fewer numbers, and the caption goes over several lines. True when the graph has to be laid
    /// out anew.
    bool fit(int length, int captionRoom);

    /// Draws line, ticks, numbers and caption in this colour and font.
    void setStyle(const QColor& colour, const QFont& font);

  Q_SIGNALS:
    /// Limits, caption or label scale may have changed.
    void changed();
    /// The user moved the axis.
    void dragged();

  private:
    void takeRange(const QCPRange& range);
    void showLimits();

    QCPAxis* m_axis;
    QSharedPointer<LabelScaleTicker> m_ticker;
    double m_minimum;
    double m_maximum;
    bool m_autoScale = false;
    bool m_setting = false; ///< the axis moves because it is told to, not because the user drags it
    QString m_labelScaleExpression;
    QString m_caption; ///< as it was set, without line breaks
    int m_length = 0;  ///< what numbers and caption were suited to last
    int m_captionRoom = 0;
};

} // namespace tavex2
