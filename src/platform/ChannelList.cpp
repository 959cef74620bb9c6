#include "platform/ChannelList.h"

#include "base/PlainText.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

namespace tavex2 {

namespace {

constexpr std::size_t mostListed = 64;
constexpr int beyondEveryBoard = 1'000'000'000; ///< stands for a number too large for an int

/// The channel number that `text` spells in decimal digits; none when it is anything else.
std::optional<int> channelNumber(std::string_view text) {
    if (text.empty() || !std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; })) return std::nullopt;
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} ? number : beyondEveryBoard;
}

/// One item of the list, with the words that every refusal of it starts with.
struct Item {
    std::string_view text;
    std::size_t position = 0; ///< 1-based

    Error refusal(const std::string& reason) const {
        return {ErrorKind::InvalidValue,
                "Item " + std::to_string(position) + " of the channel list, \"" + std::string(text) + "\", " + reason};
    }
};

struct Range {
    int first = 0;
    int last = 0;
};

Result<Range> parseItem(const Item& item, int inputs) {
    const std::string highest = std::to_string(inputs - 1);
    const auto colon = item.text.find(':');
    if (colon != std::string_view::npos && item.text.find(':', colon + 1) != std::string_view::npos)
        return item.refusal(
            "has more than one colon. Write a range as its first and last channel, such as 0:" + highest + ".");

    const std::string_view firstText = withoutBlanks(item.text.substr(0, colon));
    const std::string_view lastText =
        colon == std::string_view::npos ? firstText : withoutBlanks(item.text.substr(colon + 1));
    if (firstText.empty() || lastText.empty())
        return item.refusal(std::string("is a range without its ") + (firstText.empty() ? "first" : "last") +
                            " channel. Write both channels, such as 0:" + highest + ".");

    const std::optional<int> first = channelNumber(firstText);
    const std::optional<int> last = channelNumber(lastText);
    if (!first || !last)
        return item.refusal("is not a channel number. Write a number from 0 to " + highest +
                            ", or a range such as 0:" + highest + ".");
    if (*first >= inputs || *last >= inputs)
        return item.refusal("names a channel that the board does not have. Write channels from 0 to " + highest + ".");
    if (*first > *last)
        return item.refusal("is a descending range. Write the lower channel first: " + std::to_string(*last) + ":" +
                            std::to_string(*first) + ".");
    return Range{*first, *last};
}

} // namespace

Result<std::vector<int>> parseChannelList(std::string_view text, int inputs) {
    if (inputs < 1)
        return Error{ErrorKind::InvalidValue, "The board has no analog inputs. Choose another device number."};
    if (withoutBlanks(text).empty())
        return Error{ErrorKind::InvalidValue,
                     "The channel list is empty. Write channel numbers separated by commas, or a range such as 0:" +
                         std::to_string(inputs - 1) + "."};

    std::vector<int> channels;
    for (std::size_t position = 1, start = 0; start <= text.size(); ++position) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        const Item item{withoutBlanks(text.substr(start, end - start)), position};
        start = end + 1;
        if (item.text.empty()) return item.refusal("is empty. Write a channel number there or take one comma away.");

        const Result<Range> range = parseItem(item, inputs);
        if (!range) return range.error();
        const auto count = channels.size() + static_cast<std::size_t>(range.value().last - range.value().first) + 1;
        if (count > mostListed)
            return item.refusal("brings the list to " + std::to_string(count) +
                                " channels. At most 64 can be collected; take some channels out.");
        for (int channel = range.value().first; channel <= range.value().last; ++channel)
            channels.push_back(channel);
    }
    return channels;
}

} // namespace tavex2
