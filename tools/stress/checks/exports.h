// Checks that the library exports REALPluginMain and nothing else.
#pragma once

#include "doctor/library.h"
#include "doctor/loadable.h"
#include "doctor/package.h"
#include "stress/check.h"

namespace stress {

class Exports final : public Check {
  std::int64_t Count(const Session&) const override { return 1; }

  void MakeCall(const Plugin& plugin, std::int64_t) const override {
    plugin.report.entry.Set("the library");
    const std::string file = doctor::LoadablePlugin(plugin.session.options.library);
    std::vector<std::string> others = doctor::ReadLibraries(doctor::ReadWholeFile(file)).front().exports;
    std::erase(others, "REALPluginMain");
    if (!others.empty()) throw Finding("exports more than REALPluginMain: " + doctor::Listed(others));
  }
};

}  // namespace stress
