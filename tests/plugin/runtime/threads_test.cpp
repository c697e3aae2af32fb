// Uses the plug-in's shared state on several threads at once. The thread sanitizer reports unsynchronized accesses:
//   ./dev tsan -R Threads
#include <algorithm>
#include <barrier>
#include <deque>
#include <thread>
#include <vector>

#include "support/host_fixture.h"

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 1000;

// Runs body(round) on every thread. All threads start a round together, after every thread has finished the previous
// round.
template <class Body>
void RunAtOnce(Body body) {
  std::barrier roundBegins(kThreads);
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < kThreads; ++thread)
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        roundBegins.arrive_and_wait();
        body(round);
      }
    });
}

std::atomic<int> gLookups{0};

int Answer() { return 42; }

void* ResolveAnswer(const char*) {
  ++gLookups;
  return reinterpret_cast<void*>(&Answer);
}

TEST(Threads, BindAServiceOnTheirFirstCall) {
  const zkt::Resolver former = zkt::gResolver.exchange(&ResolveAnswer);
  std::deque<zkt::HostService<int()>> services;
  for (int round = 0; round < kRounds; ++round) services.emplace_back("Answer");
  std::atomic<int> wrong{0};
  RunAtOnce([&](int round) { wrong += services[static_cast<std::size_t>(round)]() != 42; });
  EXPECT_EQ(wrong, 0);
  const int lookups = gLookups;
  EXPECT_GE(lookups, kRounds);
  for (auto& service : services) EXPECT_EQ(service(), 42);
  EXPECT_EQ(gLookups, lookups) << "the services stay bound";
  zkt::gResolver = former;
}

// In even rounds, all threads turn debugging on, and exactly one of them logs the change. In odd rounds, all threads
// turn debugging off.
TEST(Threads, SwitchDebuggingAndTrace) {
  tests::CapturedLog log;
  std::atomic<int> wrong{0};
  RunAtOnce([&](int round) {
    const bool on = round % 2 == 0;
    zkt::setDebugging(on);
    wrong += zkt::IsDebugging() != on;
    zkt::Trace("on", round);
  });
  zkt::setDebugging(false);
  EXPECT_EQ(wrong, 0);
  std::string want;
  for (int round = 0; round < kRounds; round += 2) {
    want += "ZKT Debug: ZKT debug logging enabled.\n";
    for (int thread = 0; thread < kThreads; ++thread) want += "ZKT Debug: on " + std::to_string(round) + "\n";
  }
  // The order of the lines within a round is not defined.
  const auto sortedLines = [](const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
      lines.push_back(text.substr(at, end - at));
    std::sort(lines.begin(), lines.end());
    return lines;
  };
  EXPECT_EQ(sortedLines(log.Take()), sortedLines(want));
}

}  // namespace
