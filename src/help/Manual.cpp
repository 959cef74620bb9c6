#include "help/Manual.h"

#include "base/PathText.h"
#include "base/PlainText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <optional>
#include <span>
#include <sstream>
#include <tuple>

namespace tavex2 {

namespace {

std::vector<std::string> wordsOf(const std::string& query) {
    std::istringstream stream(lowerCase(query));
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

int occurrences(const std::string& text, const std::string& word) {
    int count = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size()))
        ++count;
    return count;
}

/// Of some `width` bytes about a place, from blank to blank.
std::string excerptAbout(const std::string& text, std::size_t place, std::size_t width = 120) {
    std::size_t from = place > width / 3 ? text.find(' ', place - width / 3) : 0;
    if (from == std::string::npos || from > place) from = place;
    const std::size_t to = std::min(text.find(' ', from + width), text.size());
    const std::string shown(withoutBlanks(text.substr(from, to - from)));
    return (from > 0 ? "... " : "") + shown + (to < text.size() ? " ..." : "");
}

/// How badly a page fits, first things first: words that are not in its title, words that are no keywords, and how
/// often it has any of them, as a negative number.
using Misfit = std::tuple<int, int, int>;

struct RankedHit {
    Misfit misfit;
    ManualHit hit;
};

std::optional<RankedHit> match(const ManualPage& page, const std::vector<std::string>& words) {
    const std::string title = lowerCase(page.title);
    const std::string text = lowerCase(page.text);
    std::string keywords;
    for (const std::string& keyword : page.keywords)
        keywords += lowerCase(keyword) + '\n';
    Misfit misfit;
    auto& [notInTitle, notInKeywords, lessOften] = misfit;
    std::size_t first = std::string::npos;
    for (const std::string& word : words) {
        const int inTitle = occurrences(title, word);
        const int inKeywords = occurrences(keywords, word);
        const int inText = occurrences(text, word);
        if (inTitle + inKeywords + inText == 0) return std::nullopt;
        notInTitle += inTitle == 0 ? 1 : 0;
        notInKeywords += inKeywords == 0 ? 1 : 0;
        lessOften -= inText;
        first = std::min(first, text.find(word));
    }
    return RankedHit{misfit, {&page, excerptAbout(page.text, first == std::string::npos ? 0 : first)}};
}

} // namespace

Result<Manual> Manual::load(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / descriptionFile;
    std::ifstream stream(file);
    if (!stream)
        return Error{ErrorKind::NotFound,
                     "The help cannot be read: " + pathText(file) + " is missing. Install the program anew."};
    const nlohmann::json description = nlohmann::json::parse(stream, nullptr, false);
    std::vector<ManualPage> pages;
    try {
        for (const nlohmann::json& page : description.at("pages"))
            pages.push_back({.file = page.at("file"),
                             .title = page.at("title"),
                             .windows = page.at("windows"),
                             .keywords = page.at("keywords"),
                             .controls = page.at("controls"),
                             .text = page.at("text")});
    } catch (const nlohmann::json::exception&) {
        pages.clear();
    }
    if (pages.empty())
        return Error{ErrorKind::BadFormat,
                     "The help cannot be read: " + pathText(file) + " is damaged. Install the program anew."};
    return Manual(folder, std::move(pages));
}

const ManualPage* Manual::pageOfWindow(const std::string& objectName) const {
    const auto found = std::ranges::find_if(m_pages, [&](const ManualPage& each) {
        return std::ranges::find(each.windows, objectName) != each.windows.end();
    });
    return found != m_pages.end() ? &*found : nullptr;
}

std::string Manual::addressFor(const std::vector<std::string>& names) const {
    for (const std::string& window : names) {
        const ManualPage* found = pageOfWindow(window);
        if (found == nullptr) continue;
        const auto control =
            std::ranges::find_if(names, [&](const auto& name) { return found->controls.contains(name); });
        return control == names.end() ? found->file : found->file + '#' + *control;
    }
    return m_pages.front().file;
}

std::vector<ManualHit> Manual::search(const std::string& query) const {
    const std::vector<std::string> words = wordsOf(query);
    std::vector<RankedHit> ranked;
    if (!words.empty())
        for (const ManualPage& page : std::span(m_pages).subspan(1)) // the contents only name the others
            if (auto found = match(page, words)) ranked.push_back(std::move(*found));
    std::ranges::stable_sort(ranked, {}, &RankedHit::misfit);
    std::vector<ManualHit> hits;
    hits.reserve(ranked.size());
    for (RankedHit& each : ranked)
        hits.push_back(std::move(each.hit));
    return hits;
}

std::vector<IndexLine> Manual::index() const {
    std::vector<IndexLine> lines;
    for (const ManualPage& page : m_pages)
        for (const std::string& keyword : page.keywords)
            lines.push_back({keyword, &page});
    std::ranges::stable_sort(lines, {}, [](const IndexLine& line) { return lowerCase(line.keyword); });
    return lines;
}

} // namespace tavex2
