// A plug-in with one method. The ZKT_FAULT environment variable must name the method's fault; "Sound" means no fault.
// The stress checks must find every fault.
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "frame/contract/plugin_interface.h"

namespace {

zkt::Resolver gResolve = nullptr;

// Returns the host's function with the given name. If the host has no such function, returns a function that does
// nothing and returns zero.
template <class Result, class... Arguments>
auto Service(const char* name) {
  using Function = Result (*)(Arguments...);
  const auto function = reinterpret_cast<Function>(gResolve(name));
  return function != nullptr ? function : [](Arguments...) { return Result(); };
}

REALstring Build(const char* text) {
  return Service<REALstring, const char*, std::int64_t, std::uint32_t>("REALBuildStringWithEncoding")(
      text, static_cast<std::int64_t>(std::strlen(text)), zkt::kEncodingUTF8);
}
void Lock(REALstring text) {
  if (text != nullptr) Service<void, REALstring>("REALLockString")(text);
}
void Unlock(REALstring text) {
  if (text != nullptr) Service<void, REALstring>("REALUnlockString")(text);
}

REALstring Echo(REALstring text, std::int64_t) {
  Lock(text);
  return text;
}
REALstring LeakArgument(REALstring text, std::int64_t) {
  Lock(text);
  return nullptr;
}
REALstring ReleaseArgument(REALstring text, std::int64_t) {
  Unlock(text);
  return nullptr;
}
REALstring ReturnBorrowed(REALstring text, std::int64_t) { return text; }
REALstring ReadNil(REALstring text, std::int64_t) {
  static_cast<void>(*reinterpret_cast<volatile char*>(text));
  return nullptr;
}
REALstring CrashRarely(REALstring, std::int64_t number) {
  if (number == -2) std::abort();
  return nullptr;
}
REALstring CrashLater(REALstring, std::int64_t) {
  static int calls = 0;
  if (++calls == 100) std::abort();
  return nullptr;
}
REALstring Hang(REALstring, std::int64_t number) {
  while (number < 0) ::usleep(1000);
  return nullptr;
}
REALstring ExitQuietly(REALstring, std::int64_t number) {
  if (number < 0) ::_exit(0);
  return nullptr;
}
REALstring Throw(REALstring, std::int64_t number) {
  if (number < 0) throw std::runtime_error("nobody catches this");
  return nullptr;
}
// Returns a number, although the declared type is String.
std::int64_t ReturnNumber(REALstring, std::int64_t number) { return number | 1; }
REALobject ReturnObject(REALstring, std::int64_t) {
  return Service<REALobject, const char*>("PluginNewInstance")("RuntimeException");
}
// Correct only if all services are available.
REALstring RequireService(REALstring text, std::int64_t) {
  if (text != nullptr) reinterpret_cast<void (*)(REALstring)>(gResolve("REALLockString"))(text);
  return text;
}
std::int64_t CountBytes(REALstring, std::int64_t) {
  const REALstring built = Build("seven");
  Unlock(built);
  return built != nullptr ? 5 : 7;
}
REALstring RequireMemory(REALstring, std::int64_t) {
  auto* const memory = static_cast<volatile char*>(std::malloc(64));
  *memory = 'a';
  std::free(const_cast<char*>(memory));
  return nullptr;
}
REALstring RequireNew(REALstring, std::int64_t) {
  delete new volatile int(1);
  return nullptr;
}
REALstring RequireString(REALstring, std::int64_t) {
  const REALstring built = Build("text");
  if (Service<std::uint32_t, REALstring>("REALGetStringEncoding")(built) == 0) return nullptr;
  return built;
}
REALstring StayBroken(REALstring, std::int64_t) {
  static bool isBroken = false;
  if (isBroken) return nullptr;
  const REALstring built = Build("text");
  isBroken = built == nullptr;
  return built;
}
// The pointer is volatile, so the optimizer cannot remove the allocation.
void* volatile gMemory = nullptr;
REALstring LeakMemory(REALstring, std::int64_t) {
  gMemory = std::malloc(16);
  return nullptr;
}
REALstring LeakOnFailure(REALstring, std::int64_t) {
  gMemory = std::malloc(16);
  void* const first = gMemory;
  gMemory = std::malloc(16);
  if (gMemory == nullptr) return nullptr;
  std::free(gMemory);
  std::free(first);
  return nullptr;
}
REALstring LeakDescriptor(REALstring, std::int64_t) {
  static_cast<void>(::dup(0));
  return nullptr;
}
REALstring CountQuadratically(REALstring text, std::int64_t) {
  const char* const bytes = text != nullptr ? Service<const char*, REALstring>("StringGetCString")(text) : "";
  for (const char* rest = bytes; *rest != '\0'; ++rest) gMemory = const_cast<char*>(rest + std::strlen(rest));
  return nullptr;
}

// Correct only if no service throws.
REALstring LeakOnException(REALstring, std::int64_t) {
  const REALstring built = Build("text");
  if (built != nullptr) Service<std::uint32_t, REALstring>("REALGetStringEncoding")(built);
  Unlock(built);
  return nullptr;
}
// Correct only on a single thread.
std::int64_t ShareState(REALstring, std::int64_t number) {
  static std::int64_t state = 0;
  state = number;
  ::usleep(1000);
  return state;
}

constexpr const char* kDeclaration = "TryZKT(text as String, number as Integer) as String";

template <class Result>
zkt::REALmethodDefinition Row(Result (*function)(REALstring, std::int64_t), const char* declaration = kDeclaration) {
  return {reinterpret_cast<void*>(function), nullptr, declaration, zkt::kConsoleSafe | zkt::kGlobalScope, 0, nullptr};
}

struct Fault {
  std::string_view name;
  zkt::REALmethodDefinition method;
};

// clang-format off
const Fault kFaults[] = {
    {"Sound",                Row(Echo)},
    {"ExportsMore",          Row(Echo)},  // the library itself has the fault
    {"LeaksArgument",        Row(LeakArgument)},
    {"ReleasesArgument",     Row(ReleaseArgument)},
    {"ReturnsBorrowed",      Row(ReturnBorrowed)},
    {"ReadsNil",             Row(ReadNil)},
    {"CrashesRarely",        Row(CrashRarely)},
    {"CrashesLater",         Row(CrashLater)},
    {"Hangs",                Row(Hang)},
    {"ExitsQuietly",         Row(ExitQuietly)},
    {"Throws",               Row(Throw)},
    {"ReturnsNumber",        Row(ReturnNumber)},
    {"ReturnsObject",        Row(ReturnObject)},
    {"RequiresService",      Row(RequireService)},
    {"IsNotNeutral",         Row(CountBytes, "TryZKT(text as String, number as Integer) as Integer")},
    {"RequiresMemory",       Row(RequireMemory)},
    {"RequiresNew",          Row(RequireNew)},
    {"RequiresString",       Row(RequireString)},
    {"StaysBroken",          Row(StayBroken)},
    {"LeaksMemory",          Row(LeakMemory)},
    {"LeaksOnFailure",       Row(LeakOnFailure)},
    {"LeaksDescriptor",      Row(LeakDescriptor)},
    {"CountsQuadratically",  Row(CountQuadratically)},
    {"LeaksOnException",     Row(LeakOnException)},
    {"SharesState",          Row(ShareState, "TryZKT(text as String, number as Integer) as Integer")},
    {"CannotBeCompiled",     Row(Echo, "TryZKT(text as NoSuchType, number as Integer) as String")},
};
// clang-format on

zkt::REALmethodDefinition FaultyMethod() {
  const char* const name = std::getenv("ZKT_FAULT");
  for (const Fault& fault : kFaults)
    if (name != nullptr && fault.name == name) return fault.method;
  std::abort();
}

zkt::REALmethodDefinition gMethod = FaultyMethod();

}  // namespace

extern "C" __attribute__((visibility("default"))) void REALPluginMain(zkt::Resolver resolver) {
  gResolve = resolver;
  Service<void, std::int32_t>("RegisterPluginVersion")(13);
  Service<void, zkt::REALmethodDefinition*>("PluginRegisterMethod")(&gMethod);
}
