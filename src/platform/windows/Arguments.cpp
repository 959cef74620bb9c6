#include "platform/Arguments.h"

#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHeader.h"

#include <shellapi.h>

namespace tavex2 {

/// `main` gets them in the code page of the system, in which many names cannot be written.
ProgramArguments::ProgramArguments(int, char**) {
    int count = 0;
    wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    for (int i = 0; i < count; ++i)
        m_words.push_back(narrow(words[i]));
    ::LocalFree(words);
    for (const std::string& word : m_words)
        m_values.push_back(word.c_str());
}

} // namespace tavex2
