#pragma once

#include "display/ui/CWGraph.h"
#include "platform/FileDialogs.h"
#include "platform/Messages.h"

#include <QObject>

#include <functional>

namespace tavex2 {

/// The context menu of the graphs: copies what a graph shows to the clipboard, or saves it as a picture. The services
/// outlive it. User-interface thread.
class GraphPictures final : public QObject {
    Q_OBJECT

  public:
    /// `proposedName` gives the stem of a picture's file name.
    GraphPictures(FileDialogs& dialogs, Messages& messages, std::function<std::string()> proposedName,
                  QObject* parent = nullptr);

    /// Gives a graph the menu.
    void serve(CWGraph& graph);

  private:
    using Save = Result<void> (*)(CWGraph& graph, const std::filesystem::path& path, int width, int height);

    void showMenu(CWGraph& graph, const QPoint& globalPosition);
    void copy(const CWGraph& graph);
    void save(const CWGraph& graph, const std::string& kind, Save saveAs);

    FileDialogs& m_dialogs;
    Messages& m_messages;
    std::function<std::string()> m_proposedName;
};

} // namespace tavex2
