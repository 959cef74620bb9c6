#pragma once

#include <QLabel>

namespace tavex2 {

/// A line of plain text that takes the room it is given: what does not fit ends in "...", and the tool tip tells all of
/// it. It never pushes its neighbours aside. User-interface thread.
class ElidedLabel final : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QWidget* parent);

    void showText(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tavex2
