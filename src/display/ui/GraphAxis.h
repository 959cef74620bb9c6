#pragma once

#include "display/ui/QCustomPlotLibrary.h"

#include <QObject>

#include <memory>

namespace tavex2 {

class LabelScaleTicker;

/// One axis of a graph as the program sees it: limits, continuous autoscaling, caption and label scale.
///
/// The library's axis refuses limits without extent and swaps limits that are the wrong way round. Here limits read
/// back exactly as they were set; wrong-way limits are drawn as a reversed axis, and limits that cannot be drawn leave
/// the picture as it was. User-interface thread; a part of CWGraph.
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

    QString caption() const { return m_axis->label(); }
    void setCaption(const QString& caption) { m_axis->setLabel(caption); }

    QString labelScaleExpression() const { return m_labelScaleExpression; }
    /// Text other than "" and "*" with a positive number is ignored.
    void setLabelScaleExpression(const QString& expression);

    /// Draws line, ticks, numbers and caption in this colour and font.
    void setStyle(const QColor& colour, const QFont& font);

  Q_SIGNALS:
    /// Limits, caption or label scale may have changed.
    void changed();
    /// The user moved the axis.
    void dragged();

  private:
    void takeRange(const QCPRange& range);

    QCPAxis* m_axis;
    QSharedPointer<LabelScaleTicker> m_ticker;
    double m_minimum;
    double m_maximum;
    bool m_autoScale = false;
    bool m_setting = false; ///< the axis moves because it is told to, not because the user drags it
    QString m_labelScaleExpression;
};

} // namespace tavex2
