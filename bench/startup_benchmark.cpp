// Loading the library and registering everything, the start of every application that uses the plug-in.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include "core/host.h"

namespace {

void LoadAndRegister(benchmark::State& state) {
  using Entry = void (*)(zkt::Resolver);
  for (auto _ : state) {
    void* const library = dlopen(ZKT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    reinterpret_cast<Entry>(dlsym(library, "REALPluginMain"))(&host::Resolve);
    state.PauseTiming();
    host::Host::Current() = {};
    dlclose(library);
    state.ResumeTiming();
  }
}

BENCHMARK(LoadAndRegister)->Name("startup")->Unit(benchmark::kMicrosecond);

}  // namespace
