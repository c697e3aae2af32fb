// Methods that end the process do so by the right signal or with the right status.
#pragma once

#include <csignal>

#include "stress/check.h"

namespace stress {

class Endings final : public Check {
  static constexpr std::int64_t kArguments[] = {0, 3, 255, 256, -1, 0x1'0000'0005};

  void Run(Session& session) override {
    for (std::int64_t entry = 0; entry < std::ssize(session.labels); ++entry)
      for (std::int64_t argument = 0; argument < std::ssize(kArguments); ++argument)
        if (session.expectations.About(session.labels[static_cast<std::size_t>(entry)]).contains(kEndsWith))
          TryCall(session, session.Pack({entry, argument}));
  }

  Ran MakeCalls(Session& session, std::int64_t number, std::int64_t end, bool describes) override {
    Ran ran = Check::MakeCalls(session, number, end, describes);
    ++session.report.calls;
    const std::string expected = session.report.injected.Get();
    if (ran.what.empty() && !expected.empty())
      ran.what = "does not end the process";
    else if (expected.find(ran.what + ";") != std::string::npos)
      ran.what.clear();
    return ran;
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
    for (const int signal : {SIGABRT, SIGILL, SIGTRAP}) std::signal(signal, SIG_DFL);  // a sanitizer may handle it
    entry->call(std::vector<host::Argument>(entry->parameters.size(), {host::MakeValue(argument)}));
  }
};

}  // namespace stress
