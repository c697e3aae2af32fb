#include "stress/faults.h"

#include <sys/mman.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

// The faults are deliberate, so sanitizers must not report them.
#define FAULTY __attribute__((noinline, no_sanitize("address", "undefined")))

namespace stress {

namespace {

// Both volatile qualifiers are needed: the compiler must neither see the address nor remove the write.
FAULTY void WriteToNowhere() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;  // NOLINT: the fault is deliberate
}

// Reads a page beyond the end of an empty file. The mapping is static, because it is never released: the signal handler
// jumps out of this function.
FAULTY void ReadPastEndOfFile() {
  static const void* const page = [] {
    const int file = ::memfd_create("empty", MFD_CLOEXEC);
    const void* const mapping = ::mmap(nullptr, 1, PROT_READ, MAP_SHARED, file, 0);
    ::close(file);
    return mapping;
  }();
  if (page != MAP_FAILED) static_cast<void>(*static_cast<volatile const char*>(page));
}

#if defined(__x86_64__)
FAULTY void RunNoInstruction() { __asm__ volatile("ud2"); }
FAULTY void RunIntoBreakpoint() { __asm__ volatile("int3"); }
FAULTY void DivideByZero() {
  volatile int one = 1;
  volatile int zero = 0;
  volatile int quotient = one / zero;  // NOLINT: the fault is deliberate
  static_cast<void>(quotient);
}
#elif defined(__aarch64__)
FAULTY void RunNoInstruction() { __asm__ volatile(".inst 0"); }
FAULTY void RunIntoBreakpoint() { __asm__ volatile("brk #0"); }
void DivideByZero() { std::raise(SIGFPE); }
#else
#error "add the instructions of this processor"
#endif

// The write end is static, because it is never closed: the signal handler jumps out of this function.
void WriteToClosedPipe() {
  static const int closedPipe = [] {
    int ends[2];
    if (::pipe(ends) != 0) return -1;
    ::close(ends[0]);
    return ends[1];
  }();
  [[maybe_unused]] const ssize_t written = ::write(closedPipe, "", 1);
}

// The depth never becomes negative. The test is there because compilers reject infinite recursion.
FAULTY int Recurse(int depth) {  // NOLINT: the fault is deliberate
  volatile char frame[512];
  frame[0] = 0;
  return depth < 0 ? 0 : Recurse(depth + 1) + frame[0];
}

// Calls an unmapped address, from which even a backtrace cannot find the caller.
FAULTY void CallWildFunction() {
  void (*volatile wild)() = reinterpret_cast<void (*)()>(0x4141000);
  wild();
}

}  // namespace

std::span<const Fault> Faults() {
  static const Fault faults[] = {
      {"CrashByNullPointer", WriteToNowhere, SIGSEGV},
      {"CrashByWildFunction", CallWildFunction, SIGSEGV},
      {"CrashByRecursion", [] { static_cast<void>(Recurse(0)); }, SIGSEGV},
      {"CrashByShortFile", ReadPastEndOfFile, SIGBUS},
      {"CrashByIllegalInstruction", RunNoInstruction, SIGILL},
      {"CrashByDivision", DivideByZero, SIGFPE},
      {"CrashByBreakpoint", RunIntoBreakpoint, SIGTRAP},
      {"CrashByClosedPipe", WriteToClosedPipe, SIGPIPE},
      {"CrashBySystemCall", [] { std::raise(SIGSYS); }, SIGSYS},
      {"CrashByException", [] { throw std::runtime_error("thrown by a delegate"); }, 0},
      {"CrashByNumber", [] { throw 42; }, 0},  // NOLINT: the fault is deliberate
  };
  return faults;
}

#undef FAULTY

}  // namespace stress
