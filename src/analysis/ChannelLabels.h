#pragma once

#include "acquisition/records/ProgramState.h"

#include <array>
#include <string>
#include <vector>

namespace tavex2 {

/// The form for channel labels and units without its window. It works on the header's slots at once; Cancel puts back
/// what they were, slots never set included. Texts are Windows-1252. Channel k has slot k + 1; slot 0 is the time's.
class ChannelLabels {
  public:
    /// Check boxes and option buttons, which the first channels have.
    static constexpr int boxes = 16;

    /// Loads the channels of the settings, or of the header where the settings name none; labels and units never set
    /// become "Channel 00" and so on, and "V".
    explicit ChannelLabels(ProgramState& state);

    int channels() const { return m_channels; }
    std::string label(int channel) const { return m_header.Labels[slot(channel)].text(); }
    std::string unit(int channel) const { return m_header.Units[slot(channel)].text(); }
    std::string title() const { return m_header.Title.trimmed(); }
    std::string rate() const;     ///< "1000.000"
    std::string duration() const; ///< "2.0000"

    /// The answers of the input boxes. An empty answer changes nothing; a longer one is cut to 10 characters. Every
    /// answer for a unit, also an empty one, becomes what copyUnits() copies.
    void enterLabel(int channel, const std::string& answer);
    void enterUnit(int channel, const std::string& answer);

    /// The channel being worked on, which the option buttons and the rows of the lists choose.
    int workedOn() const { return m_workedOn; }
    void workOn(int channel) { m_workedOn = channel; }

    /// The check box of the first, second, ... sixteenth channel (index 1..16) was checked or not.
    void chkChoose_Click(int index, bool checked) { m_chosen[static_cast<std::size_t>(index) - 1] = checked; }
    /// The channels whose names the form shows together, in their colours: the checked ones, or all where none is
    /// checked.
    std::vector<int> previewed() const;

    /// Gives all channels the unit that was entered last; nothing when that is empty.
    void cmdSelect_Click();
    /// Fills empty slots with their defaults again.
    void cmdReset_Click() { fillEmptySlots(); }
    void cmdCancel_Click();

  private:
    static std::size_t slot(int channel) { return static_cast<std::size_t>(channel) + 1; }
    void fillEmptySlots();

    LmbHeader& m_header;
    int m_channels;
    LmbHeader m_atLoad;
    std::string m_lastUnit;
    int m_workedOn = 0;
    std::array<bool, boxes> m_chosen{};
};

} // namespace tavex2
