#pragma once

#include "platform/Messages.h"

class QWidget;

namespace tavex2 {

/// Message boxes over a window.
class QtMessages final : public Messages {
  public:
    explicit QtMessages(QWidget* parent) : m_parent(parent) {}
    MessageAnswer show(const Message& message) override;

  private:
    QWidget* m_parent;
};

} // namespace tavex2
