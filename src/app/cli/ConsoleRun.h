#pragma once

#include "acquisition/RunView.h"
#include "platform/Messages.h"

#include <string>
#include <vector>

namespace tavex2 {

/// A text on one line: line ends and runs of blanks become single blanks.
std::string oneLine(const std::string& text);

/// Takes the messages of a run without a window: what would have to be confirmed is kept as a problem to report;
/// questions are answered so that the run goes on as it was asked for.
class ConsoleMessages final : public Messages {
  public:
    MessageAnswer show(const Message& message) override;

    /// The texts shown since the last call, each on one line.
    std::vector<std::string> takeProblems();

  private:
    std::vector<std::string> m_problems;
};

/// A run that nobody watches.
class SilentRunView final : public RunView {
  public:
    void refresh() override {}
    void paintNow() override {}
    void beginRealTime(double) override {}
    void showRealTime(const TrialData&, double) override {}
    void endRealTime() override {}
    void RedrawTrials() override {}
    void editComments() override {}
};

} // namespace tavex2
