#pragma once

#include "platform/FileDialogs.h"

class QString;
class QWidget;

namespace tavex2 {

/// The desktop's own file dialogs where it has them, the toolkit's otherwise.
class QtFileDialogs final : public FileDialogs {
  public:
    explicit QtFileDialogs(QWidget* parent) : m_parent(parent) {}
    std::optional<std::filesystem::path> askSaveName(const FileDialogRequest& request) override;
    std::optional<std::filesystem::path> askOpenName(const FileDialogRequest& request) override;
    /// Asks for a folder that exists, beginning at `folder`; no value when the user cancelled.
    std::optional<std::filesystem::path> askFolder(const QString& title, const std::filesystem::path& folder);

  private:
    QWidget* m_parent;
};

} // namespace tavex2
