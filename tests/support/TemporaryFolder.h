#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

namespace tavex2::test {

/// A folder that exists as long as the test.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        static const unsigned program = std::random_device{}();
        static std::atomic<int> counter{0};
        m_path = std::filesystem::temp_directory_path() /
                 ("tavex2-test-" + std::to_string(program) + "-" + std::to_string(counter++));
        std::filesystem::create_directories(m_path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

  private:
    std::filesystem::path m_path;
};

/// All bytes of a file; empty when there is none.
inline std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace tavex2::test
