// Prepares strings for log lines.
#pragma once

#include <string_view>

namespace zkt {

// A zero-terminated copy of a string, truncated to the maximum length of a log line.
class LogText {
 public:
  explicit LogText(std::string_view text) { text_[text.copy(text_, sizeof text_ - 1)] = '\0'; }
  const char* Get() const { return text_; }

 private:
  char text_[4096];
};

}  // namespace zkt
