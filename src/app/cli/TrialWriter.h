#pragma once

#include "acquisition/RunView.h"
#include "acquisition/records/ProgramState.h"
#include "files/TrialFormats.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace tavex2 {

/// Saves the trials of a collection without a window as they arrive, each under its own name or the next free one, in
/// every format that was asked for, tells each file at once and remembers it.
class TrialWriter final : public TrialSink {
  public:
    /// Each trial is told on `out` in a line a file; where that is null, only trials() tells them.
    TrialWriter(ProgramState& state, std::filesystem::path folder, std::vector<const TrialFormat*> formats,
                std::ostream* out);

    /// Saves the current trial, whatever the settings' save type says: the formats are known.
    void autosave(int saveType) override;

    /// What was written, an object a trial.
    const nlohmann::ordered_json& trials() const { return m_trials; }
    /// Why a trial could not be saved; later ones are not tried, because they would meet the same reason.
    const std::vector<std::string>& problems() const { return m_problems; }

  private:
    ProgramState& m_state;
    std::filesystem::path m_folder;
    std::vector<const TrialFormat*> m_formats;
    std::ostream* m_out;
    nlohmann::ordered_json m_trials = nlohmann::ordered_json::array();
    std::vector<std::string> m_problems;
};

} // namespace tavex2
