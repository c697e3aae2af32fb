// Makes many protected calls on one thread and on many threads. The calls must not leak memory or file descriptors.
#include <fstream>
#include <thread>

#include "plugin/process/crash_safe_fixture.h"

namespace {

using namespace tests;

long ResidentPages() {
  long size = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident;
}

TEST_F(CrashSafeCall, CanBeRepeatedWithoutGrowing) {
  const struct {
    const char* fault;
    int count;
  } cases[] = {{"CrashByNullPointer", 10'000}, {"CrashByClosedPipe", 1'000}, {"CrashByRecursion", 1'000}};
  for (const auto& c : cases) {
    RunInChild(
        [&] {
          DropLog();
          const stress::Fault& fault = tests::FaultNamed(c.fault);
          const std::string want = CrashBy(fault.signal);
          const auto crash = [&](int times) {
            for (int i = 0; i < times; ++i) ASSERT_EQ(Call(fault.commit), want) << i;
          };
          crash(c.count / 10);
          const long descriptors = DescriptorCount();
          ResidentPages();  // the first call to this function allocates memory
          const long pages = ResidentPages();
          crash(c.count);
          EXPECT_EQ(DescriptorCount(), descriptors) << c.fault;
          const long grown = ResidentPages() - pages;
          EXPECT_TRUE(kIsSanitized || grown <= 64) << c.fault << ": " << grown << " more pages";
        },
        240);
  }
}

// The alternate stack belongs to the thread, and is freed when the thread ends.
TEST_F(CrashSafeCall, WorksOnEveryThread) {
  RunInChild([] {
    DropLog();
    long pages = 0;
    for (int i = 0; i < 200; ++i) {
      std::thread([] { EXPECT_EQ(Call(tests::FaultNamed("CrashByRecursion").commit), CrashBy(SIGSEGV)); }).join();
      if (i == 20) pages = ResidentPages();
    }
    EXPECT_TRUE(kIsSanitized || ResidentPages() <= pages + 64)
        << "from " << pages << " to " << ResidentPages() << " pages";
  });
}

}  // namespace
