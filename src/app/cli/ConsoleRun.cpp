#include "app/cli/ConsoleRun.h"

#include <cctype>
#include <utility>

namespace tavex2 {

std::string oneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        const bool blank = std::isspace(static_cast<unsigned char>(c)) != 0;
        if (!blank)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

MessageAnswer ConsoleMessages::show(const Message& message) {
    switch (message.buttons) {
    case MessageButtons::Ok:
        m_problems.push_back(oneLine(message.text));
        return MessageAnswer::Ok;
    case MessageButtons::OkCancel:
        return MessageAnswer::Ok;
    default:
        return MessageAnswer::Yes;
    }
}

std::vector<std::string> ConsoleMessages::takeProblems() {
    return std::exchange(m_problems, {});
}

} // namespace tavex2
