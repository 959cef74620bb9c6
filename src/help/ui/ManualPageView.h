#pragma once

#include <QTextBrowser>

namespace tavex2 {

/// Shows pages of the user's manual: pictures are made to fit the view's width, and the colours are the desktop's.
/// User-interface thread.
class ManualPageView final : public QTextBrowser {
    Q_OBJECT

  public:
    explicit ManualPageView(QWidget* parent);

    /// Marks every place of these words, and scrolls to the first one.
    void markWords(const QStringList& words);

    QVariant loadResource(int type, const QUrl& name) override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    int roomForPictures() const; ///< their greatest width, in pixels of the window

    int m_pictureWidth = 0; ///< for which the page's pictures were fitted; 0 while it has none
};

} // namespace tavex2
