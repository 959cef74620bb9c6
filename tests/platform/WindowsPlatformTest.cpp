#include "platform/Arguments.h"
#include "platform/Environment.h"
#include "platform/Registry.h"
#include "platform/SystemMemory.h"
#include "platform/SystemShell.h"
#include "platform/SystemSound.h"
#include "platform/UserSettings.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHeader.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <mmsystem.h>
#include <thread>

/// The halves of the platform that only Windows has, against the real system.

namespace tavex2::test {
namespace {

using testing::HasSubstr;

/// What a command of the system's command line prints.
std::string outputOf(const std::string& command) {
    std::string output;
    if (FILE* pipe = ::_popen(command.c_str(), "r")) {
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
            output += static_cast<char>(c);
        ::_pclose(pipe);
    }
    return output;
}

class RegistrySettingsTest : public testing::Test {
  protected:
    ~RegistrySettingsTest() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Tavex2Test"); }
    std::unique_ptr<SettingsStore> store = userSettings();
};

TEST_F(RegistrySettingsTest, TellsAMissingKeyFromAnEmptyOne) {
    EXPECT_EQ(store->read("Tavex2Test", "Startup", "Datadir"), std::nullopt);
    ASSERT_TRUE(store->write("Tavex2Test", "Startup", "Datadir", ""));
    EXPECT_EQ(store->read("Tavex2Test", "Startup", "Datadir"), "");
    EXPECT_EQ(store->read("Tavex2Test", "Elsewhere", "Datadir"), std::nullopt);
}

TEST_F(RegistrySettingsTest, TheSystemsOwnToolReadsAndWritesTheSameValues) {
    const std::string text = "C:\\Users\\J\xC3\xBCrgen\\data, 1";
    ASSERT_TRUE(store->write("Tavex2Test", "Startup", "Datadir", text));
    EXPECT_EQ(userSettings()->read("Tavex2Test", "Startup", "Datadir"), text);
    ASSERT_TRUE(store->write("Tavex2Test", "Startup", "Viewer", "Notepad.exe"));
    EXPECT_THAT(outputOf("reg query HKCU\\Software\\Tavex2Test\\Startup /v Viewer"), HasSubstr("Notepad.exe"));
    outputOf("reg add HKCU\\Software\\Tavex2Test\\Startup /v Progdir /t REG_SZ /d C:\\Lab /f");
    EXPECT_EQ(store->read("Tavex2Test", "Startup", "Progdir"), "C:\\Lab");
    EXPECT_EQ(store->location("Tavex2Test"), "HKEY_CURRENT_USER\\Software\\Tavex2Test");
}

class MachineRegistryTest : public testing::Test {
  protected:
    MachineRegistryTest() {
        ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tavex2Test", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key,
                          nullptr);
    }
    ~MachineRegistryTest() override {
        ::RegCloseKey(m_key);
        ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tavex2Test");
    }
    void set(const wchar_t* name, DWORD type, const void* bytes, std::size_t size) {
        ASSERT_EQ(::RegSetValueExW(m_key, name, 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }

    std::unique_ptr<Registry> registry = systemRegistry();

  private:
    HKEY m_key = nullptr;
};

TEST_F(MachineRegistryTest, ReadsTextsNumbersAndBytes) {
    set(L"text", REG_SZ, L"C:\\x", 10);
    const DWORD number = 0x1e00a00f;
    set(L"number", REG_DWORD, &number, sizeof number);
    set(L"bytes", REG_BINARY, "a\0b", 3);
    const auto value = [&](const char* name) { return registry->query("SOFTWARE\\Tavex2Test", name).value(); };
    EXPECT_EQ(value("text").kind, RegistryValue::Kind::Text);
    EXPECT_EQ(value("text").bytes, std::string("C:\\x\0", 5));
    EXPECT_EQ(value("number").kind, RegistryValue::Kind::Number32);
    EXPECT_EQ(value("number").bytes, std::string("\x0f\xa0\x00\x1e", 4));
    EXPECT_EQ(value("bytes").kind, RegistryValue::Kind::Other);
    EXPECT_EQ(value("bytes").bytes, std::string("a\0b", 3));
}

TEST_F(MachineRegistryTest, MissingKeysAndTooLongValuesCannotBeRead) {
    EXPECT_EQ(registry->query("SOFTWARE\\Tavex2Test", "none"), std::nullopt);
    EXPECT_EQ(registry->query("SOFTWARE\\Tavex2Test\\none", "text"), std::nullopt);
    const std::string longest(Registry::longestValue, 'x');
    set(L"longest", REG_BINARY, longest.data(), longest.size());
    EXPECT_TRUE(registry->query("SOFTWARE\\Tavex2Test", "longest"));
    set(L"longer", REG_BINARY, (longest + 'x').data(), longest.size() + 1);
    EXPECT_EQ(registry->query("SOFTWARE\\Tavex2Test", "longer"), std::nullopt);
}

class WindowsShellTest : public testing::Test {
  protected:
    WindowsShellTest() {
        std::filesystem::create_directories(folder / "pro grams");
        std::filesystem::copy_file(TAVEX2_RECORD_ARGUMENTS, program);
        ::_wputenv_s(L"RECORD_INTO", (folder / "note").c_str());
    }
    std::string note() {
        for (int i = 0; i < 1000 && !std::filesystem::exists(folder / "note"); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        std::string text = bytesOf(folder / "note");
        std::filesystem::remove(folder / "note");
        return text;
    }

    TemporaryFolder folder;
    std::filesystem::path program = folder.path() / "pro grams" / "Lumidor2.exe";
    std::unique_ptr<Shell> shell = systemShell();
};

TEST_F(WindowsShellTest, StartsAProgramWithItsParametersInItsFolder) {
    shell->execute({.file = narrow(program.wstring()),
                    .parameters = "\"C:\\my data\\J\xC3\xBCrgen.tab\"",
                    .folder = narrow(folder.path().wstring())});
    EXPECT_GT(shell->lastResult(), 32);
    EXPECT_EQ(note(), narrow(folder.path().wstring()) + "|C:\\my data\\J\xC3\xBCrgen.tab;");
}

TEST_F(WindowsShellTest, StartsAProgramByItsCommandLine) {
    shell->run("\"" + narrow(program.wstring()) + "\" one two");
    EXPECT_GT(shell->lastResult(), 32);
    EXPECT_THAT(note(), testing::EndsWith("|one;two;"));
}

TEST_F(WindowsShellTest, KeepsTheNumberOfAStartThatFailed) {
    shell->execute({.file = "no-such-program.exe", .parameters = {}, .folder = {}});
    EXPECT_LE(shell->lastResult(), 32);
    shell->run("no-such-program.exe");
    EXPECT_LE(shell->lastResult(), 32);
}

TEST_F(WindowsShellTest, TellsWhetherAFileCanBeRead) {
    const std::string programs = narrow(program.parent_path().wstring());
    EXPECT_TRUE(shell->canRead(programs, "LUMIDOR2.EXE")) << "in small and capital letters";
    EXPECT_TRUE(shell->canRead(programs + "\\", "Lumidor2.exe"));
    EXPECT_TRUE(shell->canRead("", narrow(program.wstring())));
    EXPECT_FALSE(shell->canRead(programs, "MSINFO32.EXE"));
    EXPECT_EQ(shell->pathOf("C:\\a\\", "b"), "C:\\a\\b") << "separators are not doubled";
    EXPECT_EQ(shell->pathOf("C:\\a", "b"), "C:\\a\\b");
    EXPECT_EQ(shell->pathOf("", "b"), "b");
}

TEST(WindowsSoundTest, CountsTheDevicesThatTheSystemCounts) {
    const auto sound = systemSound();
    EXPECT_EQ(sound->deviceCount(), static_cast<int>(::waveOutGetNumDevs()));
    const auto before = std::chrono::steady_clock::now();
    sound->playFile("no-such-file.wav");
    sound->finishPlaying(std::chrono::seconds(10));
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(5)) << "a missing file is silent";
}

TEST(WindowsEnvironmentTest, ReadsVariablesInAnyLetters) {
    ::_wputenv_s(L"TAVEX2_TEST", L"J\u00FCrgen \u03A9");
    EXPECT_EQ(environmentValue("TAVEX2_TEST"), "J\xC3\xBCrgen \xCE\xA9");
    EXPECT_EQ(environmentValue("TAVEX2_NOT_SET"), std::nullopt);
    EXPECT_TRUE(environmentValue("windir"));
}

TEST(WindowsMemoryTest, IsThatOfARealMachine) {
    EXPECT_GT(physicalMemoryBytes(), std::uint64_t{256} * 1024 * 1024);
    EXPECT_LT(physicalMemoryBytes(), std::uint64_t{1} << 48U);
}

} // namespace
} // namespace tavex2::test
