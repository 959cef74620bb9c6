#pragma once

#include "base/TypedNumber.h"

#include <QAbstractSpinBox>
#include <QString>

#include <string>

namespace tavex2 {

/// The numeric entry: keeps its value unrounded and shows it by a display format such as `0 "s"`. While it has the
/// focus it shows the number itself, to be typed with or without a unit.
///
/// A text is taken as the number that it is or not at all. One that is no number of the box's range marks the box,
/// which tells what is wrong and keeps the text to be corrected; meanwhile the value is the one from before the
/// editing, and whoever leaves the box gets that back. Arrow keys and buttons step in the value's own order of
/// magnitude. User-interface thread.
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
    double minimum() const { return m_entry.lowest; }
    double maximum() const { return m_entry.highest; }

    /// Only whole numbers can be entered.
    void setWhole(bool whole) { m_entry.whole = whole; }

    /// Whether the box holds a text that is not taken.
    bool marked() const { return m_marked; }
    /// Takes the focus and says once more what is wrong with the text.
    void askForCorrection();

    void stepBy(int steps) override;
    QValidator::State validate(QString& input, int& pos) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  Q_SIGNALS:
    /// The value has changed, by typing or by setValue().
    void valueChanged(double value);
    /// What is wrong with the typed text, or that the last good value came back; empty once a text is taken.
    void told(const QString& text);

  protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void change(double value);
    void takeText(const QString& text);
    void mark(const QString& reason);
    void unmark();
    void restore();
    void tell(const QString& text);
    void showValue();

    double m_value = 0;
    double m_valueBeforeEditing = 0;
    std::string m_format = "0";
    NumberEntry m_entry;
    bool m_marked = false;
};

} // namespace tavex2
