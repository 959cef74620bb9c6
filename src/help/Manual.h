#pragma once

#include "base/Result.h"

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tavex2 {

/// A page of the user's manual. Texts are UTF-8.
struct ManualPage {
    std::string file; ///< its HTML file in the manual's folder
    std::string title;
    std::vector<std::string> windows;            ///< object names of the windows that it is about
    std::vector<std::string> keywords;           ///< under which the index lists it
    std::map<std::string, std::string> controls; ///< what a control is for, by its object name; also the page's anchor
    std::string text;                            ///< all of it without markup, for the search
};

/// A page that a search found.
struct ManualHit {
    const ManualPage* page;
    std::string excerpt; ///< the text about the first of the words
};

/// A line of the index: a keyword and the page that it leads to.
struct IndexLine {
    std::string keyword;
    const ManualPage* page;
};

/// The user's manual as the build wrote it: the HTML pages in a folder, and beside them `help.json`, which says what is
/// in them. Unchangeable once loaded.
class Manual {
  public:
    /// The name of the description in the manual's folder.
    static constexpr const char* descriptionFile = "help.json";

    /// Errors: the description is missing, or is none.
    static Result<Manual> load(const std::filesystem::path& folder);

    const std::filesystem::path& folder() const { return m_folder; }

    /// In reading order; the first one is the table of contents.
    const std::vector<ManualPage>& pages() const { return m_pages; }

    /// The page about a window; null for none.
    const ManualPage* pageOfWindow(const std::string& objectName) const;

    /// Where to read about what has the focus: `names` are the object names of a control and of what it lies in,
    /// innermost first. The page of the first window among them, with the anchor of the first control that the page
    /// tells about; the table of contents when no page is about any of them.
    std::string addressFor(const std::vector<std::string>& names) const;

    /// Pages that hold every word of the query, the ones that have it in their title first, then those with a keyword,
    /// then by how often it occurs. Small and capital letters are the same; nothing for a query without words.
    std::vector<ManualHit> search(const std::string& query) const;

    /// All keywords in alphabetical order.
    std::vector<IndexLine> index() const;

  private:
    Manual(std::filesystem::path folder, std::vector<ManualPage> pages)
        : m_folder(std::move(folder)), m_pages(std::move(pages)) {}

    std::filesystem::path m_folder;
    std::vector<ManualPage> m_pages;
};

} // namespace tavex2
