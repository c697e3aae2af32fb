// Benchmarks loading the library and registering its declarations, which every application does at startup.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <filesystem>
#include <string>

#include "services/services.h"

namespace {

// A loaded library stays loaded until the process ends, so each run loads a new copy.
void LoadAndRegister(benchmark::State& state) {
  using Entry = void (*)(zkt::Resolver);
  static int copies = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const std::filesystem::path copy = ZKT_PLUGIN + std::string(".copy") + std::to_string(++copies);
    std::filesystem::copy_file(ZKT_PLUGIN, copy, std::filesystem::copy_options::overwrite_existing);
    state.ResumeTiming();
    void* const library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
    reinterpret_cast<Entry>(dlsym(library, "REALPluginMain"))(&host::Resolve);
    state.PauseTiming();
    host::Host::Current() = {};
    std::filesystem::remove(copy);
    state.ResumeTiming();
  }
}

BENCHMARK(LoadAndRegister)->Name("startup")->Unit(benchmark::kMicrosecond)->Iterations(20);

}  // namespace
