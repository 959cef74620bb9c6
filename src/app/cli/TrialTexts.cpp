#include "app/cli/TrialTexts.h"

#include "base/Windows1252.h"
#include "platform/ChannelList.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <span>
#include <string_view>

namespace tavex2 {

namespace {

/// The text as files hold it, of at most `most` characters.
Result<std::string> fileText(const std::string& option, std::string_view text, std::size_t most) {
    std::string bytes = windows1252FromUtf8(std::string(text));
    if (utf8FromWindows1252(bytes) != text)
        return Error{ErrorKind::WrongUsage, option + " has characters that a trial file cannot hold in \"" +
                                                std::string(text) + "\". Use letters of western languages."};
    if (bytes.size() > most)
        return Error{ErrorKind::WrongUsage, option + " takes at most " + std::to_string(most) + " characters, not \"" +
                                                std::string(text) + "\"."};
    return bytes;
}

/// How many channels are recorded; as many as there can be while the list is none.
int channelsOf(const SamplingSettings& sampling) {
    const auto list = parseChannelList(sampling.Channels.trimmed(), std::numeric_limits<int>::max());
    return list ? static_cast<int>(list.value().size()) : mostChannels;
}

Result<void> enterSlots(const std::string& option, const std::vector<std::string>& arguments, int channels,
                        std::span<FixedText<10>> slots) {
    constexpr std::size_t mostCharacters = 10;
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.find('=');
        int channel = -1;
        const char* const end = argument.data() + std::min(equals, argument.size());
        const auto parsed = std::from_chars(argument.data(), end, channel);
        if (equals == std::string::npos || parsed.ec != std::errc{} || parsed.ptr != end || channel < 0 ||
            channel >= channels)
            return Error{ErrorKind::WrongUsage, option + " takes K=TEXT, as " + option + " 0=Force, with K from 0 to " +
                                                    std::to_string(channels - 1) +
                                                    " for the places in the channel list, not \"" + argument + "\"."};
        const auto text = fileText(option, std::string_view(argument).substr(equals + 1), mostCharacters);
        if (!text) return text.error();
        slots[static_cast<std::size_t>(channel) + 1].assign(text.value());
    }
    return {};
}

} // namespace

Result<void> enterTexts(ProgramState& state, const TrialTexts& texts) {
    const int channels = channelsOf(state.settings.sampling);
    if (auto entered = enterSlots("--label", texts.labels, channels, state.header.Labels); !entered) return entered;
    if (auto entered = enterSlots("--unit", texts.units, channels, state.header.Units); !entered) return entered;
    if (texts.comments.size() > state.comments.size())
        return Error{ErrorKind::WrongUsage,
                     "A trial has room for four comments, not for " + std::to_string(texts.comments.size()) + "."};
    constexpr std::size_t mostCharacters = 60; // as many as the comment form takes
    for (std::size_t line = 0; line < texts.comments.size(); ++line) {
        const auto text = fileText("--comment", texts.comments[line], mostCharacters);
        if (!text) return text.error();
        state.comments[line].assign(text.value());
    }
    return {};
}

} // namespace tavex2
