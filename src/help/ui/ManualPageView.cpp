#include "help/ui/ManualPageView.h"

#include <QImage>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace tavex2 {

namespace {

/// For the toolkit's small part of the style language, in place of the pages' own sheet, which is for browsers.
QString pageStyle(const QPalette& palette) {
    return QStringLiteral("h1 { font-size: x-large } h2 { font-size: large } "
                          "table { border-collapse: collapse; border: 1px solid %1 } "
                          "th, td { border: 1px solid %1; padding: 3px 6px } th { text-align: left } "
                          "pre { background-color: %2 } "
                          ".navigation { font-size: small }")
        .arg(palette.color(QPalette::Mid).name(), palette.color(QPalette::AlternateBase).name());
}

} // namespace

ManualPageView::ManualPageView(QWidget* parent) : QTextBrowser(parent) {
    setObjectName(QStringLiteral("txtPage"));
    setAccessibleName(tr("Page of the manual"));
    setOpenExternalLinks(true);
    document()->setDocumentMargin(12);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // so that a page's length does not change its width
}

int ManualPageView::roomForPictures() const {
    constexpr int least = 100;
    return std::max(viewport()->width() - 2 * qRound(document()->documentMargin()) - 1, least);
}

QVariant ManualPageView::loadResource(int type, const QUrl& name) {
    if (type == QTextDocument::StyleSheetResource) return pageStyle(palette());
    QVariant loaded = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) return loaded;
    QImage picture = QImage::fromData(loaded.toByteArray());
    m_pictureWidth = roomForPictures();
    if (picture.width() <= m_pictureWidth) return picture;
    // As many of the picture's own pixels as the screen can show, so that letters stay sharp.
    const qreal scale = devicePixelRatioF();
    const int pixels = std::min(qRound(m_pictureWidth * scale), picture.width());
    picture = picture.scaledToWidth(pixels, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(static_cast<qreal>(pixels) / m_pictureWidth);
    return picture;
}

/// Pictures are fitted when a page is loaded; another width loads it again.
void ManualPageView::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (m_pictureWidth == 0 || roomForPictures() == m_pictureWidth) return;
    m_pictureWidth = 0;
    const QTextCursor place = cursorForPosition({0, 0});
    const int position = place.position();
    reload();
    QTextCursor again(document());
    again.setPosition(std::min(position, document()->characterCount() - 1));
    setTextCursor(again);
}

void ManualPageView::markWords(const QStringList& words) {
    QList<ExtraSelection> marks;
    int first = -1;
    for (const QString& word : words) {
        for (QTextCursor found = document()->find(word); !found.isNull(); found = document()->find(word, found)) {
            QTextCharFormat format;
            format.setBackground(palette().highlight());
            format.setForeground(palette().highlightedText());
            marks.push_back({found, format});
            if (first < 0 || found.selectionStart() < first) first = found.selectionStart();
        }
    }
    setExtraSelections(marks);
    if (first < 0) return;
    QTextCursor place(document());
    place.setPosition(first);
    setTextCursor(place);
    ensureCursorVisible();
}

} // namespace tavex2
