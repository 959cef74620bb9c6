#include "app/cli/TrialWriter.h"

#include "base/Decimal.h"
#include "base/PathText.h"
#include "files/FreeName.h"

#include <utility>

namespace tavex2 {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const Trial& trial, const std::vector<std::string>& files) {
    const SamplingSettings& taken = trial.sampling;
    Json json{{"TrialName", trial.name},        {"File", files.front()}, {"NumChannels", taken.NumChannels},
              {"NumSamples", taken.NumSamples}, {"Rate", taken.Rate},    {"Duration", shortestDouble(taken.Duration)},
              {"Start", trial.record.start}};
    if (trial.record.triggerSample) json["TriggerSample"] = *trial.record.triggerSample;
    json["Pulses"] = Json::array();
    for (const GivenPulse& pulse : trial.record.pulses)
        json["Pulses"].push_back({{"line", pulse.line}, {"milliseconds", pulse.milliseconds}});
    if (files.size() > 1) json["Files"] = files;
    return json;
}

} // namespace

TrialWriter::TrialWriter(ProgramState& state, std::filesystem::path folder, std::vector<const TrialFormat*> formats,
                         std::ostream* out)
    : m_state(state), m_folder(std::move(folder)), m_formats(std::move(formats)), m_out(out) {}

void TrialWriter::autosave(int) {
    if (!m_problems.empty()) return;
    const TrialPtr trial = m_state.trials.CurrentTrial;
    const SamplingSettings& taken = trial->sampling;
    std::vector<std::string> files;
    for (const TrialFormat* format : m_formats) {
        const auto written = writeToFreeName(m_folder, trial->name, format->extension, [&](const auto& path) {
            return format->write(path, *trial, {.ifExists = IfExists::Refuse});
        });
        if (!written) {
            m_problems.push_back(written.error().text);
            return;
        }
        files.push_back(pathText(written.value()));
        if (m_out != nullptr)
            *m_out << files.back() << ": " << taken.NumChannels << " channels x " << taken.NumSamples << " samples at "
                   << taken.Rate << " Hz" << std::endl;
    }
    m_trials.push_back(jsonOf(*trial, files));
    m_state.changeCurrent([](Trial& saved) { saved.Unsaved = saved.TrialNotSaved = false; });
}

} // namespace tavex2
