#include "app/cli/TrialTexts.h"

#include "base/PlainText.h"
#include "base/Windows1252.h"
#include "files/CommentsEditor.h"
#include "platform/ChannelList.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <string_view>

namespace tavex2 {

namespace {

/// The text as files hold it, of at most `most` characters.
Result<std::string> fileText(const std::string& option, std::string_view text, std::size_t most) {
    std::string bytes = windows1252FromUtf8(std::string(text));
    if (utf8FromWindows1252(bytes) != text || hasControlCharacters(bytes))
        return Error{ErrorKind::WrongUsage, option + " has characters that a trial file cannot hold in \"" +
                                                std::string(text) + "\". Use letters of western languages."};
    if (bytes.size() > most)
        return Error{ErrorKind::WrongUsage, option + " takes at most " + std::to_string(most) + " characters, not \"" +
                                                std::string(text) + "\"."};
    return bytes;
}

Result<void> enterSlots(const std::string& option, const std::vector<std::string>& arguments,
                        std::span<FixedText<10>> slots, int channels) {
    constexpr std::size_t mostCharacters = 10;
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.find('=');
        int channel = -1;
        const char* const end = argument.data() + std::min(equals, argument.size());
        const auto parsed = std::from_chars(argument.data(), end, channel);
        if (equals == std::string::npos || parsed.ec != std::errc{} || parsed.ptr != end || channel < 0 ||
            channel >= mostChannels)
            return Error{ErrorKind::WrongUsage, option + " takes K=TEXT with K from 0 to " +
                                                    std::to_string(mostChannels - 1) + ", as " + option +
                                                    " 0=Force, not \"" + argument + "\"."};
        if (channel >= channels)
            return Error{ErrorKind::WrongUsage, option + " " + argument + " is for a channel that is not collected. " +
                                                    "The channels of the list are counted from 0 to " +
                                                    std::to_string(channels - 1) + "."};
        const auto text = fileText(option, std::string_view(argument).substr(equals + 1), mostCharacters);
        if (!text) return text.error();
        slots[static_cast<std::size_t>(channel) + 1].assign(text.value());
    }
    return {};
}

} // namespace

Result<void> enterTexts(ProgramState& state, const TrialTexts& texts) {
    // What is wrong with a list that cannot be read, the board says.
    const auto listed = parseChannelList(state.settings.sampling.Channels.trimmed(), mostChannels);
    const int channels = listed ? static_cast<int>(listed.value().size()) : mostChannels;
    if (auto entered = enterSlots("--label", texts.labels, state.header.Labels, channels); !entered) return entered;
    if (auto entered = enterSlots("--unit", texts.units, state.header.Units, channels); !entered) return entered;
    if (texts.comments.size() > state.comments.size())
        return Error{ErrorKind::WrongUsage,
                     "A trial has room for four comments, not for " + std::to_string(texts.comments.size()) + "."};
    for (std::size_t line = 0; line < texts.comments.size(); ++line) {
        const auto text = fileText("--comment", texts.comments[line], CommentsEditor::mostCharacters);
        if (!text) return text.error();
        state.comments[line].assign(text.value());
    }
    return {};
}

} // namespace tavex2
