#pragma once

#include "base/PathText.h"
#include "base/Result.h"

#include <filesystem>
#include <string>

namespace tavex2 {

enum class MessageIcon { None, Information, Question, Exclamation, Critical };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageAnswer { Ok, Cancel, Yes, No };

/// A modal message: fixed text and title, an icon and buttons.
struct Message {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
    bool noIsDefault = false; ///< Enter answers No: the question is about losing something
};

/// What is told about a file that could not be saved.
inline Message errorSaving(const std::filesystem::path& path, const Error& error) {
    return {"Error saving " + pathText(path) + "\n" + error.text, "Error", MessageIcon::Exclamation,
            MessageButtons::Ok};
}

/// Shows messages to the user and waits for the answer. User-interface thread only.
class Messages {
  public:
    virtual ~Messages() = default;
    virtual MessageAnswer show(const Message& message) = 0;
};

} // namespace tavex2
