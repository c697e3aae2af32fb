// Uses the system's quality-of-service classes. The system functions return an error number, but callers expect it in
// errno.
#include "platform/thread_class.h"

#include <pthread.h>
#include <pthread/qos.h>

#include <cerrno>

namespace zkt {

namespace {

bool Succeeds(int error) {
  if (error != 0) errno = error;
  return error == 0;
}

}  // namespace

bool GetThreadClass(unsigned& threadClass, int& relativePriority) {
  qos_class_t found = QOS_CLASS_DEFAULT;
  int priority = 0;
  if (!Succeeds(pthread_get_qos_class_np(pthread_self(), &found, &priority))) return false;
  threadClass = static_cast<unsigned>(found);
  relativePriority = priority;
  return true;
}

bool SetThreadClass(ThreadClass threadClass) {
  return Succeeds(pthread_set_qos_class_self_np(static_cast<qos_class_t>(threadClass), 0));
}

}  // namespace zkt
