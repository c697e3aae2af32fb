// One write per line and nothing else: lines also come out of signal handlers, where locks and streams are out of
// bounds.
#include "platform/system_log.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace zkt {

void WriteSystemLog(const char* text) {
  constexpr std::size_t kLongestLine = 4096;
  char line[kLongestLine + 1];
  const std::size_t length = std::min(std::strlen(text), kLongestLine);
  std::memcpy(line, text, length);
  line[length] = '\n';
  const int callersErrno = errno;
  // A log that cannot be written has nowhere to complain.
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line, length + 1);
  errno = callersErrno;
}

void WriteSystemLog(const char* label, CFStringRef text) {
  char line[4096];
  const int length = std::snprintf(line, sizeof line, "%s: ", label);
  if (CFStringGetCString(text, line + length, static_cast<CFIndex>(sizeof line) - length, kCFStringEncodingUTF8) != 0)
    WriteSystemLog(line);
}

}  // namespace zkt
