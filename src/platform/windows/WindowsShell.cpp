#include "platform/SystemShell.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHeader.h"

#include <fstream>
#include <shellapi.h>

namespace tavex2 {

namespace {

/// The system's own calls; a document or a page is opened by the program that the user chose for it.
class WindowsShell final : public Shell {
  public:
    bool canRead(const std::string& folder, const std::string& name) const override {
        return std::ifstream(std::filesystem::path(wide(pathOf(folder, name))), std::ios::binary).is_open();
    }

    std::string pathOf(const std::string& folder, const std::string& name) const override {
        if (folder.empty() || folder.back() == '\\' || folder.back() == '/') return folder + name;
        return folder + '\\' + name;
    }

  private:
    int open(const ShellRequest& request) override {
        const std::wstring parameters = wide(request.parameters);
        const std::wstring folder = wide(request.folder);
        const auto orNone = [](const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); };
        const int show = request.show == ShowMode::Normal ? SW_SHOWNORMAL : SW_SHOWNOACTIVATE;
        HINSTANCE result =
            ::ShellExecuteW(nullptr, L"open", wide(request.file).c_str(), orNone(parameters), orNone(folder), show);
        return static_cast<int>(reinterpret_cast<std::intptr_t>(result));
    }

    int start(const std::string& commandLine) override {
        std::wstring line = wide(commandLine); // the call writes into it
        STARTUPINFOW how{};
        how.cb = sizeof how;
        how.dwFlags = STARTF_USESHOWWINDOW;
        how.wShowWindow = SW_SHOWNORMAL;
        PROCESS_INFORMATION process{};
        if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &process) == 0)
            return fileNotFound;
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
        return started;
    }
};

} // namespace

std::unique_ptr<Shell> systemShell() {
    return std::make_unique<WindowsShell>();
}

} // namespace tavex2
