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
    GraphPictures(FileDialogs& dialogs, Messages& messages, QObject* parent = nullptr);

    /// Gives a graph the menu; `proposedName` gives the stem of its picture's file name.
    void serve(CWGraph& graph, std::function<std::string()> proposedName);

  private:
    using Save = Result<void> (*)(CWGraph& graph, const std::filesystem::path& path, int width, int height);

    void showMenu(CWGraph& graph, const std::string& name, const QPoint& globalPosition);
    void copy(const CWGraph& graph);
    void save(const CWGraph& graph, const std::string& name, const std::string& kind, Save saveAs);

    FileDialogs& m_dialogs;
    Messages& m_messages;
};

} // namespace tavex2
