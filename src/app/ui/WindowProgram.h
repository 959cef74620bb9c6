#pragma once

#include "app/Boards.h"
#include "app/cli/CommandLine.h"
#include "base/Result.h"

#include <memory>

namespace tavex2 {

class frmMain;
class RunController;

/// The whole program with its window: makes every concrete part, connects them, and keeps them alive. Needs a
/// QApplication that outlives it; the settings store and the sound output outlive it too.
class WindowProgram {
  public:
    /// Goes through start-up. Errors: a board or a setting of the request that cannot be used.
    static Result<std::unique_ptr<WindowProgram>> create(const WindowRequest& request, SettingsStore& store,
                                                         SoundOutput& sound);
    ~WindowProgram();
    WindowProgram(const WindowProgram&) = delete;
    WindowProgram& operator=(const WindowProgram&) = delete;

    /// Shows the window, maximised where the user asked for that.
    void show();

    frmMain& window();

  private:
    struct Parts;
    explicit WindowProgram(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace tavex2
