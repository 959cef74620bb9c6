#pragma once

#include "display/ui/QCustomPlotLibrary.h"

#include <QFontMetrics>

#include <optional>

namespace tavex2 {

/// Places the ticks of an axis at round numbers of the unit that its labels show, which is the axis's own unit times a
/// factor, and no more of them than there is room for their numbers. Used by GraphAxis, on the user-interface thread.
class LabelScaleTicker : public QCPAxisTicker {
  public:
    double factor() const { return m_factor; }
    /// `factor` is above 0.
    void setFactor(double factor) { m_factor = factor; }

    /// A tick at this value alone, for an axis whose limits are one and the same; no value for the usual ticks.
    void setOnly(const std::optional<double>& value) { m_only = value; }

    /// The length of the axis in pixels, and the font of its numbers, which stand one below the other on a vertical
    /// axis and side by side on a horizontal one.
    void setRoom(int pixels, const QFontMetrics& metrics, Qt::Orientation orientation);

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                  QVector<double>* subTicks, QVector<QString>* tickLabels) override;

  protected:
    double getTickStep(const QCPRange& range) override;
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

  private:
    struct Room {
        int pixels;
        QFontMetrics metrics;
        Qt::Orientation orientation;
    };

    bool fits(const QCPRange& range, double step) const;

    double m_factor = 1;
    double m_step = 1; ///< of the ticks made last, in the unit shown
    std::optional<double> m_only;
    std::optional<Room> m_room;
};

} // namespace tavex2
