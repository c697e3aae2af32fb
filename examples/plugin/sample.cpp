// A plug-in with three faults, for trying the checks of xojo-host.
#include <cstdint>
#include <cstdio>

struct String;  // belongs to the host
struct Method {
  void* function;
  void* setter;
  const char* declaration;
  std::uint64_t flags;
  std::uint64_t attributeCount;
  const void* attributes;
};

static void* (*gResolver)(const char* name);

// Calls a service of the host. Without the service, does nothing and returns zero.
template <class Result, class... Arguments>
static Result Call(const char* name, Arguments... arguments) {
  const auto service = reinterpret_cast<Result (*)(Arguments...)>(gResolver(name));
  return service != nullptr ? service(arguments...) : Result();
}

// An empty string arrives as nil.
static const char* BytesOf(String* text) {
  const char* bytes = text != nullptr ? Call<const char*>("StringGetCString", text) : nullptr;
  return bytes != nullptr ? bytes : "";
}

static void Beep() { reinterpret_cast<void (*)()>(gResolver("RuntimeSampleBeep"))(); }

static std::int64_t FirstByte(String* text) { return Call<const char*>("StringGetCString", text)[0]; }

static String* Greet(String* name) {
  Call<void>("REALLockString", name);
  char text[100];
  const int size = std::snprintf(text, sizeof text, "Hello, %.80s!", BytesOf(name));
  return *BytesOf(name) == '\0' ? nullptr : Call<String*>("REALBuildString", text, std::int64_t{size});
}

static Method gMethods[] = {
    {reinterpret_cast<void*>(Beep), nullptr, "BeepSample()", 0x14, 0, nullptr},
    {reinterpret_cast<void*>(FirstByte), nullptr, "FirstByteSample(text as String) as Integer", 0x14, 0, nullptr},
    {reinterpret_cast<void*>(Greet), nullptr, "GreetSample(name as String) as String", 0x14, 0, nullptr}};

extern "C" __attribute__((visibility("default"))) void REALPluginMain(void* (*resolver)(const char*)) {
  gResolver = resolver;
  Call<void>("RegisterPluginVersion", std::int32_t{13});
  for (Method& method : gMethods) Call<void>("PluginRegisterMethod", &method);
}
