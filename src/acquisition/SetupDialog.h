#pragma once

#include "acquisition/SetupMeaning.h"
#include "acquisition/records/ProgramState.h"
#include "base/Result.h"
#include "platform/CWAI.h"
#include "platform/SoundOutput.h"

#include <array>
#include <filesystem>
#include <string>

namespace tavex2 {

/// What the controls of the setup dialog hold. Numeric boxes keep their value unrounded.
struct SetupControls {
    // Sampling
    std::string txtChannels;
    double cwnRate = 0;
    double cwnDuration = 0;
    double cwnUpper = 0;
    double cwnLower = 0;
    double cwnRepeat = 0;
    double cwnStartDelay = 0;
    int optTrigger = 0; ///< 0 immediate start, 1 trigger channel; enables "Trigger Conditions"
    // Trigger conditions
    double CWNumTriggerChannel = 0;
    double CWNumTriggerLevel = 0;
    double CWNumPretrigger = 0;
    int optTriggerSlope = 0; ///< 0 rising, 1 falling
    // Stimulus
    std::array<bool, 3> cbDIO{}; ///< each enables its delay
    std::array<double, 3> cwnLatency{};
    // Sound
    bool soundUsable = false; ///< False disables the whole frame
    std::array<bool, 2> cbSound{};
    double cwnSoundFreq = 0;
    double cwnSoundDuration = 0;
    // Options
    bool chkOffsets = false;
    bool chkPauseToReset = false;
    bool chkComments = false;
    bool chkRandom = false;
    // File
    bool chkAutosave = false; ///< enables the two save types
    int optSaveType = 0;
    std::string txtFilename;
    double CWNumTrial = 0;
    std::string txtFolder; ///< where trials are saved
    // A/D device
    double cwnDevice = 1;
    std::string txtDevice; ///< name of the device

    bool triggerConditionsEnabled() const { return optTrigger == 1; }
    bool toneEnabled() const { return soundUsable && (cbSound[0] || cbSound[1]); }
};

/// What the setup dialog works with; all of it outlives the dialog.
struct SetupServices {
    CWAI& analogInput;
    const SoundOutput& sound;
    std::filesystem::path toneFile;
    TrialStorage storage;
};

/// The setup dialog without its window: frmProperties shows controls() and tells what the user did. Settings are stored
/// by OK only, except three that change with a click (TriggerMode, SoundBefore, SoundAfter) and the selected device,
/// which Cancel selects back.
class SetupDialog {
  public:
    SetupDialog(ProgramState& state, SetupServices services);

    /// Controls without a handler below are written here as the user edits them.
    SetupControls& controls() { return m_controls; }
    const SetupControls& controls() const { return m_controls; }

    /// Fills the controls from the settings and changes none of these.
    void Form_Load();
    void optTrigger_Click(int index);
    void cbSound_Click(int index, bool ticked);
    void cwnDevice_ValueChanged(double number);
    /// Looks whether trials can be saved there, which meaning() tells.
    void txtFolder_Changed(const std::string& folder);

    /// Stores everything, writes the tone anew and sets the start condition; the dialog closes on success. A delay that
    /// cannot be stored and a new data folder that cannot be written to are errors, which meaning() has told already;
    /// they leave the dialog open with nothing stored.
    Result<void> cmdOK_Click();
    void cmdCancel_Click();

    /// What a collection would be after OK.
    SetupMeaning meaning() const;

  private:
    AcqSettings confirmedSettings() const;
    std::string latencyProblem() const;
    bool soundDevicePresent() const;

    ProgramState& m_state;
    SetupServices m_services;
    SetupControls m_controls;
    int m_deviceAtOpening = 1;
    std::string m_folderProblem; ///< why trials cannot be saved in the folder; empty when they can
};

} // namespace tavex2
