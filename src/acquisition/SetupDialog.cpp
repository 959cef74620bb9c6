#include "acquisition/SetupDialog.h"

#include "acquisition/Sound.h"
#include "acquisition/StartCondition.h"
#include "acquisition/StimulusPulses.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "base/PlainText.h"
#include "base/Rounding.h"
#include "platform/AtomicFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <utility>

namespace tavex2 {

namespace {

constexpr double longestLatencyMs = std::numeric_limits<std::int16_t>::max();

/// The number that a trigger channel's text starts with, 0 for none.
int channelNumber(const std::string& text) {
    int number = 0;
    const std::string_view digits = withoutBlanks(text);
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

std::int32_t saturatedInt32(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        roundHalfEven(std::clamp(value, static_cast<double>(Limits::min()), static_cast<double>(Limits::max()))));
}

std::string deviceName(const CWAI& analogInput) {
    constexpr std::string_view prefix = "Device: ";
    return analogInput.deviceDescription().substr(prefix.size());
}

/// Why trials cannot be saved in a folder; empty when they can.
std::string problemOfFolder(const std::filesystem::path& folder) {
    std::error_code ignored;
    if (folder.empty()) return "Enter the folder in which trials are saved.";
    if (!std::filesystem::is_directory(folder, ignored))
        return pathText(folder) + " is no folder. Create it or choose another one.";
    const Result<void> writable = checkWritable(folder);
    return writable ? "" : writable.error().text;
}

} // namespace

SetupDialog::SetupDialog(ProgramState& state, SetupServices services)
    : m_state(state), m_services(std::move(services)) {}

bool SetupDialog::soundDevicePresent() const {
    return m_services.sound.deviceCount() > 0;
}

void SetupDialog::Form_Load() {
    const auto& [setup, sampling, trigger, sound] = m_state.settings;
    SetupControls& c = m_controls;
    for (std::size_t line = 0; line < pulsedLines; ++line) {
        c.cbDIO[line] = ((sampling.DIOMask >> line) & 1) != 0;
        c.cwnLatency[line] = sampling.DIOLatency[line];
    }
    c.txtChannels = sampling.Channels.trimmed();
    c.txtFilename = withoutBlanks(setup.FilePrefix);
    m_deviceAtOpening = m_services.analogInput.device();
    c.cwnDevice = m_deviceAtOpening;
    c.txtDevice = deviceName(m_services.analogInput);

    c.cwnRate = sampling.Rate;
    c.cwnDuration = static_cast<double>(sampling.Duration);
    c.cwnUpper = static_cast<double>(sampling.UpperVolts);
    c.cwnLower = static_cast<double>(sampling.LowerVolts);
    c.cwnRepeat = sampling.Repeat;
    c.cwnStartDelay = setup.StartDelay;
    c.CWNumTriggerLevel = static_cast<double>(trigger.TriggerLevel);
    c.CWNumPretrigger = trigger.Pretrigger;
    c.CWNumTriggerChannel = channelNumber(trigger.TriggerChannel);
    c.CWNumTrial = setup.TrialNumber;
    txtFolder_Changed(m_state.paths.DataDir);

    c.optTrigger = setup.TriggerMode;
    c.optSaveType = setup.SaveType == 1 ? 1 : 0;
    c.optTriggerSlope = trigger.TriggerRising ? 0 : 1;
    c.chkOffsets = setup.SaveOffsets;
    c.chkAutosave = setup.Autosave;
    c.chkPauseToReset = setup.PauseToReset;
    c.chkComments = setup.Comments;

    c.soundUsable = sound.SoundAvailable && soundDevicePresent();
    c.cbSound = {c.soundUsable && sound.SoundBefore, c.soundUsable && sound.SoundAfter};
    c.cwnSoundFreq = sound.SoundFreq;
    c.cwnSoundDuration = sound.SoundDuration;
}

void SetupDialog::optTrigger_Click(int index) {
    m_controls.optTrigger = index;
    m_state.settings.setup.TriggerMode = static_cast<std::int16_t>(index);
}

void SetupDialog::cbSound_Click(int index, bool ticked) {
    m_controls.cbSound[static_cast<std::size_t>(index)] = ticked;
    m_state.settings.sound.SoundBefore = m_controls.cbSound[0];
    m_state.settings.sound.SoundAfter = m_controls.cbSound[1];
}

void SetupDialog::cwnDevice_ValueChanged(double number) {
    m_controls.cwnDevice = number;
    m_services.analogInput.selectDevice(saturatedInt16(number));
    m_controls.txtDevice = deviceName(m_services.analogInput);
}

void SetupDialog::txtFolder_Changed(const std::string& folder) {
    m_controls.txtFolder = folder;
    m_folderProblem = problemOfFolder(pathFromText(folder));
}

/// The settings as OK stores them.
AcqSettings SetupDialog::confirmedSettings() const {
    AcqSettings confirmed = m_state.settings;
    auto& [setup, sampling, trigger, sound] = confirmed;
    const SetupControls& c = m_controls;
    unsigned mask = 0;
    for (std::size_t line = pulsedLines; line-- > 0;) {
        mask = mask * 2 + (c.cbDIO[line] ? 1 : 0);
        sampling.DIOLatency[line] = saturatedInt16(c.cwnLatency[line]);
        sampling.DIOState[line] = 1;
    }
    sampling.DIOMask = static_cast<std::uint8_t>(mask);
    sampling.Channels.assign(c.txtChannels);

    sampling.Rate = saturatedInt32(c.cwnRate);
    sampling.Duration = static_cast<float>(c.cwnDuration);
    sampling.UpperVolts = static_cast<float>(c.cwnUpper);
    sampling.LowerVolts = static_cast<float>(c.cwnLower);
    sampling.Repeat = saturatedInt16(c.cwnRepeat);
    setup.StartDelay = saturatedInt16(c.cwnStartDelay);
    trigger.TriggerLevel = static_cast<float>(c.CWNumTriggerLevel);
    trigger.Pretrigger = saturatedInt16(c.CWNumPretrigger);
    trigger.TriggerChannel = std::to_string(saturatedInt16(c.CWNumTriggerChannel));
    trigger.TriggerRising = c.optTriggerSlope == 0;
    trigger.RandomSound = c.chkRandom;
    trigger.RandomRatio = 2;

    setup.Autosave = c.chkAutosave;
    setup.SaveType = c.optSaveType == 1 ? 1 : 0;
    setup.SaveOffsets = c.chkOffsets;
    setup.PauseToReset = c.chkPauseToReset;
    setup.Comments = c.chkComments;
    setup.Device = saturatedInt16(c.cwnDevice);
    setup.TrialNumber = saturatedInt16(c.CWNumTrial);
    setup.FilePrefix = c.txtFilename;

    if (!c.soundUsable) sound.SoundBefore = sound.SoundAfter = false;
    sound.SoundFreq = c.cwnSoundFreq;
    sound.SoundDuration = c.cwnSoundDuration;
    return confirmed;
}

Result<void> SetupDialog::cmdOK_Click() {
    if (const std::string problem = latencyProblem(); !problem.empty()) return Error{ErrorKind::InvalidValue, problem};
    // A folder that has gone is no reason to keep the other settings from being stored.
    const bool newFolder = m_controls.txtFolder != m_state.paths.DataDir;
    if (newFolder && !m_folderProblem.empty()) return Error{ErrorKind::WriteFailed, m_folderProblem};
    if (newFolder) m_state.paths.DataDir = pathText(wholePath(pathFromText(m_controls.txtFolder)));

    m_state.flags.TriggerEnabled = m_controls.optTrigger == 1;
    m_state.settings = confirmedSettings();
    const SoundSettings& sound = m_state.settings.sound;
    // A tone that cannot be written is a tone that is not heard: no reason to refuse the setup.
    if (soundDevicePresent()) (void)WriteTone(m_services.toneFile, sound.SoundFreq, sound.SoundDuration);
    m_services.analogInput.config.start = startConditionFor(m_state.settings, m_state.flags.TriggerEnabled);
    return {};
}

void SetupDialog::cmdCancel_Click() {
    m_services.analogInput.selectDevice(m_deviceAtOpening);
}

/// A delay that the dialog takes and the settings cannot hold; empty when there is none.
std::string SetupDialog::latencyProblem() const {
    for (std::size_t line = 0; line < pulsedLines; ++line)
        if (m_controls.cwnLatency[line] > longestLatencyMs)
            return "Delay of DIO " + std::to_string(line) + ": it cannot be longer than 32767 ms.";
    return {};
}

SetupMeaning SetupDialog::meaning() const {
    SetupMeaning meaning = meaningOf(confirmedSettings(), m_controls.optTrigger == 1, m_services.analogInput,
                                     m_services.storage, pathFromText(m_controls.txtFolder));
    const auto warn = [&meaning](const std::string& text) {
        if (!text.empty()) meaning.warnings += (meaning.warnings.empty() ? "" : " ") + text;
    };
    warn(latencyProblem());
    warn(m_folderProblem.empty() ? m_folderProblem : "Folder: " + m_folderProblem);
    return meaning;
}

} // namespace tavex2
