// A plug-in with one function that is faulty in one way, which ZKT_FAULT names: xojo-host validate has to find it. One
// that is sound has to pass.
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "frame/contract/plugin_interface.h"

namespace {

zkt::Resolver gResolve = nullptr;

// What the host has under a name; a function that does nothing and gives zero where it has none.
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
REALstring KeepArgument(REALstring text, std::int64_t) {
  Lock(text);
  return nullptr;
}
REALstring DropArgument(REALstring text, std::int64_t) {
  Unlock(text);
  return nullptr;
}
REALstring GiveBorrowed(REALstring text, std::int64_t) { return text; }
REALstring LookIntoNil(REALstring text, std::int64_t) {
  static_cast<void>(*reinterpret_cast<volatile char*>(text));
  return nullptr;
}
REALstring CrashSeldom(REALstring, std::int64_t number) {
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
REALstring EndQuietly(REALstring, std::int64_t number) {
  if (number < 0) ::_exit(0);
  return nullptr;
}
REALstring Throw(REALstring, std::int64_t number) {
  if (number < 0) throw std::runtime_error("nobody catches this");
  return nullptr;
}
// Not what the declaration says.
std::int64_t GiveNumber(REALstring, std::int64_t number) { return number | 1; }
REALobject GiveObject(REALstring, std::int64_t) {
  return Service<REALobject, const char*>("PluginNewInstance")("RuntimeException");
}
// Sound on a whole host only.
REALstring TrustHost(REALstring text, std::int64_t) {
  if (text != nullptr) reinterpret_cast<void (*)(REALstring)>(gResolve("REALLockString"))(text);
  return text;
}
std::int64_t CountBytes(REALstring, std::int64_t) {
  const REALstring built = Build("seven");
  Unlock(built);
  return built != nullptr ? 5 : 7;
}
REALstring TrustMemory(REALstring, std::int64_t) {
  auto* const memory = static_cast<volatile char*>(std::malloc(64));
  *memory = 'a';
  std::free(const_cast<char*>(memory));
  return nullptr;
}
REALstring TrustNew(REALstring, std::int64_t) {
  delete new volatile int(1);
  return nullptr;
}
REALstring TrustMaking(REALstring, std::int64_t) {
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
// Kept from the optimiser.
void* volatile gMemory = nullptr;
REALstring KeepMemory(REALstring, std::int64_t) {
  gMemory = std::malloc(16);
  return nullptr;
}
REALstring KeepMemoryWhenShort(REALstring, std::int64_t) {
  gMemory = std::malloc(16);
  void* const first = gMemory;
  gMemory = std::malloc(16);
  if (gMemory == nullptr) return nullptr;
  std::free(gMemory);
  std::free(first);
  return nullptr;
}
REALstring KeepDescriptor(REALstring, std::int64_t) {
  static_cast<void>(::dup(0));
  return nullptr;
}
REALstring CountAnew(REALstring text, std::int64_t) {
  const char* const bytes = text != nullptr ? Service<const char*, REALstring>("StringGetCString")(text) : "";
  for (const char* rest = bytes; *rest != '\0'; ++rest) gMemory = const_cast<char*>(rest + std::strlen(rest));
  return nullptr;
}

// Sound as long as no service throws.
REALstring LoseOnException(REALstring, std::int64_t) {
  const REALstring built = Build("text");
  if (built != nullptr) Service<std::uint32_t, REALstring>("REALGetStringEncoding")(built);
  Unlock(built);
  return nullptr;
}
// Sound on one thread.
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
    {"Sound",             Row(Echo)},
    {"KeepsArgument",     Row(KeepArgument)},
    {"DropsArgument",     Row(DropArgument)},
    {"GivesBorrowed",     Row(GiveBorrowed)},
    {"LooksIntoNil",      Row(LookIntoNil)},
    {"CrashesSeldom",     Row(CrashSeldom)},
    {"CrashesLater",      Row(CrashLater)},
    {"Hangs",             Row(Hang)},
    {"EndsQuietly",       Row(EndQuietly)},
    {"Throws",            Row(Throw)},
    {"GivesNumber",       Row(GiveNumber)},
    {"GivesObject",       Row(GiveObject)},
    {"TrustsHost",        Row(TrustHost)},
    {"IsNotNeutral",      Row(CountBytes, "TryZKT(text as String, number as Integer) as Integer")},
    {"TrustsMemory",      Row(TrustMemory)},
    {"TrustsNew",         Row(TrustNew)},
    {"TrustsMaking",      Row(TrustMaking)},
    {"StaysBroken",       Row(StayBroken)},
    {"KeepsMemory",       Row(KeepMemory)},
    {"KeepsWhenShort",    Row(KeepMemoryWhenShort)},
    {"KeepsDescriptor",   Row(KeepDescriptor)},
    {"CountsAnew",        Row(CountAnew)},
    {"LosesOnException",  Row(LoseOnException)},
    {"SharesState",       Row(ShareState, "TryZKT(text as String, number as Integer) as Integer")},
    {"CannotBeCompiled",  Row(Echo, "TryZKT(text as NoSuchType, number as Integer) as String")},
    {"ExportsMore",       Row(Echo)},
};
// clang-format on

zkt::REALmethodDefinition FaultyMethod() {
  for (const Fault& fault : kFaults)
    if (fault.name == ZKT_FAULT) return fault.method;
  std::abort();
}

zkt::REALmethodDefinition gMethod = FaultyMethod();

}  // namespace

extern "C" __attribute__((visibility("default"))) void REALPluginMain(zkt::Resolver resolver) {
  gResolve = resolver;
  Service<void, std::int32_t>("RegisterPluginVersion")(13);
  Service<void, zkt::REALmethodDefinition*>("PluginRegisterMethod")(&gMethod);
}
