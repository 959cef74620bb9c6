#include "display/ui/GraphPictures.h"

#include "display/ui/PaperGraph.h"
#include "platform/SaveName.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>

#include <algorithm>
#include <cctype>
#include <utility>

namespace tavex2 {

namespace {

/// Pictures are twice as fine as the screen, for print.
constexpr double pictureScale = 2;

Result<void> saveFinePng(CWGraph& graph, const std::filesystem::path& path, int width, int height) {
    return saveAsPng(graph, path, width, height, pictureScale);
}

} // namespace

GraphPictures::GraphPictures(FileDialogs& dialogs, Messages& messages, QObject* parent)
    : QObject(parent), m_dialogs(dialogs), m_messages(messages) {}

void GraphPictures::serve(CWGraph& graph, std::function<std::string()> proposedName) {
    connect(&graph, &CWGraph::menuRequested, this,
            [this, &graph, proposedName = std::move(proposedName)](const QPoint& globalPosition) {
                showMenu(graph, proposedName(), globalPosition);
            });
}

void GraphPictures::showMenu(CWGraph& graph, const std::string& name, const QPoint& globalPosition) {
    auto* menu = new QMenu(graph.window());
    menu->setObjectName(QStringLiteral("mnuGraph"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const char* objectName, const QString& text, auto command) {
        QAction* action = menu->addAction(text);
        action->setObjectName(QLatin1String(objectName));
        connect(action, &QAction::triggered, this, command);
    };
    add("mnuCopyPicture", tr("&Copy picture"), [this, &graph] { copy(graph); });
    add("mnuSavePng", tr("Save as P&NG..."), [this, &graph, name] { save(graph, name, "png", saveFinePng); });
    add("mnuSavePdf", tr("Save as P&DF..."), [this, &graph, name] { save(graph, name, "pdf", saveAsPdf); });
    menu->popup(globalPosition);
}

void GraphPictures::copy(const CWGraph& graph) {
    const QImage picture = copyOnPaper(graph)->toPixmap(graph.width(), graph.height(), pictureScale).toImage();
    QApplication::clipboard()->setImage(picture);
}

void GraphPictures::save(const CWGraph& graph, const std::string& name, const std::string& kind, Save saveAs) {
    // Copied now: a new trial may arrive while the dialog is open.
    const std::unique_ptr<CWGraph> picture = copyOnPaper(graph);
    std::string kindName = kind;
    std::ranges::transform(kindName, kindName.begin(), [](unsigned char c) { return std::toupper(c); });
    const auto path = askNameToSave(m_dialogs, m_messages,
                                    {.title = "Save picture",
                                     .defaultExtension = kind,
                                     .filter = kindName + " picture|*." + kind + "|All files|*.*",
                                     .filterIndex = 0,
                                     .folder = {},
                                     .initialName = name + "." + kind});
    if (!path) return;
    if (const Result<void> saved = saveAs(*picture, *path, graph.width(), graph.height()); !saved)
        m_messages.show({saved.error().text, "Error", MessageIcon::Exclamation, MessageButtons::Ok});
}

} // namespace tavex2
