#pragma once

#include "acquisition/records/ProgramState.h"
#include "files/FileProgress.h"

#include <string>
#include <utility>

namespace tavex2 {

/// What the file commands need of the main window. User-interface thread only.
class FileView {
  public:
    virtual ~FileView() = default;
    /// The state has changed: everything that follows from it is to be shown anew. Trials on the graphs have not.
    virtual void refresh() = 0;
    /// Shows how far long work on a file is and lets pending window events run; False when the user wants it to end.
    /// Other commands and finished trials wait until the work is done: the trial worked on stays the current one.
    virtual bool fileProgress(int done, int of) = 0;
    /// Units and scaling of the graphs are to follow the settings.
    virtual void followDisplaySettings() = 0;
    /// The trials have changed: the graphs are to show them.
    virtual void RedrawTrials() = 0;
};

/// Tells the user something in the status bar.
inline void tell(ProgramState& state, FileView& view, std::string notice) {
    state.notice = std::move(notice);
    view.refresh();
}

/// Work on a file for as long as it lives: the window shows what is being done and the busy pointer.
class FileWorkShown {
  public:
    /// `doing` is a text such as "Saving Trial0001.lmb ...".
    FileWorkShown(ProgramState& state, FileView& view, std::string doing) : m_state(state), m_view(view) {
        m_state.notice.clear();
        m_state.fileWork = std::move(doing);
        m_view.refresh();
    }
    ~FileWorkShown() {
        m_state.fileWork.clear();
        m_view.refresh();
    }
    FileWorkShown(const FileWorkShown&) = delete;
    FileWorkShown& operator=(const FileWorkShown&) = delete;

  private:
    ProgramState& m_state;
    FileView& m_view;
};

/// Shows progress on a view, which outlives the work.
inline FileProgress progressOn(FileView& view) {
    return [&view](int done, int of) { return view.fileProgress(done, of); };
}

} // namespace tavex2
