/// A program that leaves its folder and its command line in the file that its first argument or, without one, the
/// variable RECORD_INTO names. The tests start it.

#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHeader.h"

#include <cstdlib>
#include <fstream>
#include <shellapi.h>

int main() {
    int count = 0;
    wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::string text = tavex2::narrow(std::filesystem::current_path().wstring()) + "|";
    for (int i = 1; i < count; ++i)
        text += tavex2::narrow(words[i]) + ";";
    const std::filesystem::path note = ::_wgetenv(L"RECORD_INTO");
    const std::filesystem::path part = note.wstring() + L".part"; // so that the note appears as a whole
    std::ofstream(part, std::ios::binary) << text;
    std::filesystem::rename(part, note);
    return 0;
}
