// Checks that the library exports REALPluginMain and nothing else.
#pragma once

#include <array>
#include <cstdio>

#include "doctor/loadable.h"
#include "stress/check.h"

namespace stress {

class Exports final : public Check {
  std::int64_t Count(const Session&) const override { return 1; }

  void MakeCall(const Plugin& plugin, std::int64_t) const override {
    plugin.report.entry.Set("the library");
    const std::string library = Quoted(doctor::LoadablePlugin(plugin.session.options.library));
    std::FILE* const output = ::popen(("nm --dynamic --defined-only --format=just-symbols " + library).c_str(), "r");
    std::string others;
    for (std::array<char, 1000> line; std::fgets(line.data(), line.size(), output) != nullptr;)
      if (line.data() != std::string_view("REALPluginMain\n")) others += line.data();
    if (::pclose(output) != 0) throw Finding("cannot read its exports: nm failed");
    if (!others.empty()) throw Finding("exports more than REALPluginMain:\n" + others);
  }
};

}  // namespace stress
