#pragma once

#include <QAbstractSpinBox>
#include <QString>

#include <limits>
#include <string>

namespace tavex2 {

/// The numeric entry: keeps its value unrounded and shows it by a display format such as `0 "s"`. While it has the
/// focus it shows the number itself, to be typed with or without the unit; what is no number is not taken and the last
/// value comes back. Arrow keys and buttons step in the value's own order of magnitude. User-interface thread.
class CWNumEdit final : public QAbstractSpinBox {
    Q_OBJECT
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(QString format READ format WRITE setFormat)

  public:
    explicit CWNumEdit(QWidget* parent = nullptr);

    double value() const { return m_value; }
    void setValue(double value);

    QString format() const { return QString::fromStdString(m_format); }
    void setFormat(const QString& format);

    /// What a user may enter; without it everything finite.
    void setRange(double lowest, double highest);
    double minimum() const { return m_lowest; }
    double maximum() const { return m_highest; }

    /// Only whole numbers can be entered.
    void setWhole(bool whole) { m_whole = whole; }

    void stepBy(int steps) override;
    QValidator::State validate(QString& input, int& pos) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  Q_SIGNALS:
    /// The value has changed, by typing or by setValue().
    void valueChanged(double value);

  protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    bool bounded() const;
    bool inRange(double value) const { return value >= m_lowest && value <= m_highest; }
    QString rangeText() const;
    void sayRange();
    void takeText(const QString& text);
    void showValue();

    double m_value = 0;
    std::string m_format = "0";
    double m_lowest = -std::numeric_limits<double>::infinity();
    double m_highest = std::numeric_limits<double>::infinity();
    bool m_whole = false;
};

} // namespace tavex2
