// Checks that methods that end the process do so with the right signal or exit status.
#pragma once

#include <csignal>

#include "stress/check.h"

namespace stress {

class Termination final : public Check {
  static constexpr std::int64_t kArguments[] = {0, 3, 255, 256, -1, 0x1'0000'0005};

  void Run(Session& session) override {
    for (std::int64_t entry = 0; entry < std::ssize(session.labels); ++entry)
      for (std::int64_t argument = 0; argument < std::ssize(kArguments); ++argument)
        if (session.expectations.About(session.labels[static_cast<std::size_t>(entry)]).contains(kEndsWith))
          TryCall(session, session.Pack({entry, argument}));
  }

  ChildResult MakeCalls(Session& session, std::int64_t number, std::int64_t end, bool isVerbose) override {
    ChildResult result = Check::MakeCalls(session, number, end, isVerbose);
    ++session.report.calls;
    const std::string expected = session.report.injected.Get();
    if (result.problem.empty() && !expected.empty())
      result.problem = "does not end the process";
    else if (expected.find(result.problem + ";") != std::string::npos)
      result.problem.clear();
    return result;
  }

  void MakeCall(const Plugin& plugin, std::int64_t number) const override {
    const CallParts parts = plugin.session.Unpack(number);
    const std::int64_t argument = kArguments[parts.variant % std::ssize(kArguments)];
    const Entry* const entry = plugin.Find(parts.entry, true);
    if (entry == nullptr) return;
    std::string expected = "expected: ";
    for (const std::string& ending : entry->expectations.at(kEndsWith))
      expected += "ended with " + (ending == "argument" ? "status " + std::to_string(argument & 0xFF) : ending) + ";";
    plugin.Describe(*entry, expected);
    for (const int signal : {SIGABRT, SIGILL, SIGTRAP})
      std::signal(signal, SIG_DFL);  // a sanitizer may handle these signals
    entry->call(std::vector<host::Argument>(entry->parameters.size(), {host::MakeValue(argument)}));
  }
};

}  // namespace stress
