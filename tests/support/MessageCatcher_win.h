#pragma once

#include <string>
#include <vector>

#include "support/Imports_win.h"

namespace zyn::test {

/// Keeps the messages that a module would show to the user, in the order of showing them, and
/// answers them. One at a time.
class MessageCatcher {
 public:
  struct Message {
    std::wstring text;
    std::wstring title;
    UINT type;
  };

  explicit MessageCatcher(HMODULE module)
      : patch_(module, "MessageBoxW", reinterpret_cast<const void*>(&take)) {
    messages_.clear();
  }

  const std::vector<Message>& messages() const { return messages_; }
  std::vector<std::wstring> texts() const {
    std::vector<std::wstring> found;
    for (const Message& message : messages_) found.push_back(message.text);
    return found;
  }

 private:
  static int WINAPI take(HWND, LPCWSTR text, LPCWSTR title, UINT type) {
    messages_.push_back({text, title, type});
    return IDOK;
  }

  static inline std::vector<Message> messages_;
  ImportPatch patch_;
};

}  // namespace zyn::test
