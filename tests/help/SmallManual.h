#pragma once

#include "help/Manual.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <string>

namespace tavex2::test {

/// A folder with a manual of four pages.
class SmallManual {
  public:
    SmallManual() {
        write(R"({"pages": [
            {"file": "index.html", "title": "Using it", "windows": [], "keywords": ["contents"], "controls": {},
             "text": "Using it The setup: channels, trigger"},
            {"file": "setup.html", "title": "The setup", "windows": ["frmProperties"],
             "keywords": ["trigger", "Rate"], "controls": {"cwnRate": "Samples a second.", "cmdOK": "Applies."},
             "text": "The setup Rate Samples a second. OK Applies. The trigger starts a trial."},
            {"file": "collecting.html", "title": "Collecting", "windows": ["frmWaiting", "frmMain"], "keywords": ["stop"],
             "controls": {}, "text": "Collecting Waiting for the trigger. The trigger, a trial starts, and the trial is taken."},
            {"file": "scale.html", "title": "Trigger level on the scale", "windows": ["frmScale"], "keywords": [],
             "controls": {"cmdOK": "Sets the limits."}, "text": "Limits of the graphs"}]})");
    }

    void write(const std::string& description) const {
        std::ofstream(path() / Manual::descriptionFile, std::ios::binary | std::ios::trunc) << description;
    }
    std::filesystem::path path() const { return m_folder.path(); }

  private:
    TemporaryFolder m_folder;
};

} // namespace tavex2::test
