#pragma once

#include <QAbstractSpinBox>
#include <QString>

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
    void takeText(const QString& text);
    void showValue();

    double m_value = 0;
    std::string m_format = "0";
};

} // namespace tavex2
