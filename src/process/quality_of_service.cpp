#include "process/quality_of_service.h"

#include <cerrno>
#include <iterator>

#include "platform/thread_class.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

constexpr std::int64_t kDefault = 3;

// The classes in the order of their numbers, which start at 1.
constexpr ThreadClass kClasses[] = {kThreadBackground, kThreadUtility, kThreadDefault, kThreadUserInitiated,
                                    kThreadUserInteractive};

}  // namespace

std::int64_t GetQOSClass() {
  unsigned threadClass = kThreadDefault;
  int priority = 0;
  if (!GetThreadClass(threadClass, priority)) {
    Trace("pthread_get_qos_class_np failed", errno);
    return 0;
  }
  Trace("class", threadClass);
  Trace("priority", priority);
  for (std::size_t i = 0; i < std::size(kClasses); ++i)
    if (kClasses[i] == threadClass) return static_cast<std::int64_t>(i) + 1;
  return kDefault;
}

std::int64_t SetQOSClass(std::int64_t QOS) {
  const bool isOnScale = QOS >= 1 && QOS <= static_cast<std::int64_t>(std::size(kClasses));
  if (!SetThreadClass(kClasses[(isOnScale ? QOS : kDefault) - 1])) {
    const int error = errno;
    Trace("pthread_set_qos_class_self_np failed", error);
    return error;
  }
  Trace("pthread_set_qos_class_self_np success");
  return 0;
}

}  // namespace zkt
