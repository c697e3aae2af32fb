// This code runs in a signal handler of a damaged process, so it does not allocate memory (as dprintf would) or acquire
// locks, with one exception: the loader may acquire its lock to look up a library name.
#include "services/crash_report.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

#include "core/running_function.h"
#include "services/missing.h"

namespace host {

namespace {

const void* gPlugin = nullptr;
std::vector<Member> gMembers;

[[gnu::format(printf, 1, 2)]] void Say(const char* format, ...) {
  char text[1000];
  std::va_list values;
  va_start(values, format);
  const int length = std::vsnprintf(text, sizeof text, format, values);
  va_end(values);
  const auto size = std::min(static_cast<std::size_t>(std::max(length, 0)), sizeof text - 1);
  // Nothing can be done if standard error is closed.
  static_cast<void>(::write(STDERR_FILENO, text, size) == 0);
}

// ReturnFromCall undoes a call to an address without code, because a backtrace cannot begin at such an address.
#if defined(__x86_64__)
std::uintptr_t InstructionAddress(const ucontext_t& context) {
  return static_cast<std::uintptr_t>(context.uc_mcontext.gregs[REG_RIP]);
}
void ReturnFromCall(ucontext_t& context) {
  auto& registers = context.uc_mcontext.gregs;
  registers[REG_RIP] = *reinterpret_cast<const greg_t*>(registers[REG_RSP]);
  registers[REG_RSP] += sizeof(greg_t);
}
#elif defined(__aarch64__)
std::uintptr_t InstructionAddress(const ucontext_t& context) { return context.uc_mcontext.pc; }
void ReturnFromCall(ucontext_t& context) { context.uc_mcontext.pc = context.uc_mcontext.regs[30]; }
#endif

// Prints the declaration of a plug-in function. While the plug-in is loading, prints the name of its entry function.
void SayEntry(const void* function) {
  for (const Member& member : gMembers) {
    const auto* const method = member.As<zkt::REALmethodDefinition>();
    if (method != nullptr && method->function == function)
      return Say(" in %s%s%s", member.owner, *member.owner != '\0' ? ": " : "", method->declaration);
    const auto* const property = member.As<zkt::REALproperty>();
    if (property != nullptr && (property->getter == function || property->setter == function))
      return Say(" in %s.%s", member.owner, property->name);
  }
  Dl_info info{};
  if (::dladdr(function, &info) != 0 && info.dli_sname != nullptr) Say(" in %s", info.dli_sname);
}

// A null pointer does not show which service the plug-in tried to call, so the report names all missing services.
void SayMissing(const char* name) {
  if (name != nullptr) return Say("  It called %s, which this host does not offer.\n", name);
  const std::vector<std::string>& missing = gMissing.names;
  Say("  It called a null pointer.%s\n",
      missing.empty() ? "" : " It requested these services, which the host does not offer:");
  for (const std::string& requested : missing) Say("    %s\n", requested.c_str());
  if (missing.size() > 1) Say("  Run it again with --trap-missing to see which of these it called.\n");
}

// Runs addr2line to print the function and the source line. Returns false if addr2line fails or is not installed.
bool SaySourceLine(const char* library, std::uintptr_t offset) {
  char address[20];
  std::snprintf(address, sizeof address, "%#zx", offset);
  const pid_t child = ::_Fork();
  if (child == 0) {
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    ::execlp("addr2line", "addr2line", "--demangle", "--functions", "--inlines", "--pretty-print", "--basenames",
             "--exe", library, address, nullptr);
    ::_exit(1);
  }
  int status = 0;
  return child > 0 && ::waitpid(child, &status, 0) == child && status == 0;
}

// Every frame except the crash itself is a return address. Subtracting 1 gives an address within the call.
void SayFrame(const void* frame, bool isCrash) {
  Dl_info info{};
  link_map* library = nullptr;
  if (::dladdr1(frame, &info, reinterpret_cast<void**>(&library), RTLD_DL_LINKMAP) == 0) return Say("    %p\n", frame);
  const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(frame) - library->l_addr - (isCrash ? 0 : 1);
  const char* const slash = std::strrchr(info.dli_fname, '/');
  Say("    %s+%#zx ", slash != nullptr ? slash + 1 : info.dli_fname, offset);
  if (library == gPlugin && SaySourceLine(info.dli_fname, offset)) return;
  Say("%s\n", info.dli_sname != nullptr ? info.dli_sname : "");
}

bool IsPlugin(const void* frame) {
  dl_find_object found;
  return ::_dl_find_object(const_cast<void*>(frame), &found) == 0 && found.dlfo_link_map == gPlugin;
}

// Prints the frames from the crash up to the function that the host called. The host's own frames are omitted.
void SayBacktrace(std::uintptr_t crash, bool isMissing) {
  std::array<void*, 100> frames{};
  const auto end = frames.begin() + ::backtrace(frames.data(), frames.size());
  const auto found = std::find(frames.begin(), end, reinterpret_cast<void*>(crash));
  const auto first = found != end ? found : frames.begin();
  const auto last = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), IsPlugin).base();
  constexpr int kMaxFrames = 20;
  const auto stop = std::min(last != first ? last : end, first + kMaxFrames);
  for (auto frame = first; frame < stop; ++frame) SayFrame(*frame, frame == found && !isMissing);
}

void Report(int signal, siginfo_t* /*info*/, void* theContext) {
  auto& context = *static_cast<ucontext_t*>(theContext);
  const auto missing = FindMissingCall(InstructionAddress(context));
  const bool isMissing = signal == SIGSEGV && missing;
  if (isMissing) ReturnFromCall(context);
  Say("xojo-host: crashed with SIG%s", ::sigabbrev_np(signal));
  if (gRunningFunction != nullptr) SayEntry(gRunningFunction);
  Say("\n");
  if (isMissing) SayMissing(*missing);
  Say("  backtrace:\n");
  SayBacktrace(InstructionAddress(context), isMissing);
  ::raise(signal);  // its default action has already been restored
}

}  // namespace

void ReportCrashes() {
  static std::array<char, std::size_t{256} * 1024> stack;  // runaway recursion leaves no room on the normal stack
  const stack_t alternate = {stack.data(), 0, stack.size()};
  ::sigaltstack(&alternate, nullptr);
  void* frame = nullptr;
  ::backtrace(&frame, 1);  // the first call loads a library, which a signal handler must not do
  struct sigaction action {};
  action.sa_sigaction = &Report;
  // After the report, or if the report itself crashes, the signal ends the process.
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER | static_cast<int>(SA_RESETHAND);
  for (const int signal : {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV, SIGTRAP}) ::sigaction(signal, &action, nullptr);
}

void SetReportedPlugin(const void* library) { gPlugin = library; }

void SetReportedMembers(std::vector<Member> members) { gMembers = std::move(members); }

}  // namespace host
