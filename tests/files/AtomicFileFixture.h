#pragma once

#include "platform/AtomicFile.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace tavex2::test {

inline Result<void> put(AtomicFile& file, std::string_view text) {
    return file.write(std::as_bytes(std::span(text)));
}

/// Writes a whole file.
inline Result<void> save(const std::filesystem::path& path, std::string_view text,
                         IfExists ifExists = IfExists::Replace) {
    Result<AtomicFile> file = AtomicFile::create(path, ifExists);
    if (!file) return file.error();
    if (auto written = put(file.value(), text); !written) return written;
    return file.value().commit();
}

inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

class AtomicFileTest : public testing::Test {
  protected:
    TemporaryFolder m_folder;
    std::filesystem::path m_path = m_folder / "a.lmb";
};

} // namespace tavex2::test
