#pragma once

#include "files/FileProgress.h"

#include <string>

namespace tavex2 {

/// What the file commands need of the main window. User-interface thread only.
class FileView {
  public:
    virtual ~FileView() = default;
    virtual void setBusyPointer(bool busy) = 0;
    /// Shows how far long work on a file is and lets pending window events run; False when the user wants it to end.
    /// Other commands and finished trials wait until the work is done: the trial worked on stays the current one.
    virtual bool fileProgress(int done, int of) = 0;
    virtual void UpdateMenus() = 0;
    virtual void UpdateCaption() = 0;
    /// A caption that the next UpdateCaption() replaces.
    virtual void setCaption(const std::string& text) = 0;
    /// Units and scaling of the graphs are to follow the settings.
    virtual void followDisplaySettings() = 0;
    virtual void RedrawTrials() = 0;
    virtual void setStatusText(const std::string& text) = 0;
};

/// Shows progress on a view, which outlives the work.
inline FileProgress progressOn(FileView& view) {
    return [&view](int done, int of) { return view.fileProgress(done, of); };
}

} // namespace tavex2
