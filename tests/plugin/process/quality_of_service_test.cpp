// Tests the quality-of-service classes as an ordinary user: each test runs in a child process that has dropped root
// privileges.
#include "process/quality_of_service.h"

#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>

#include <cerrno>
#include <thread>

#include "support/child_process.h"
#include "support/host_fixture.h"

namespace {

using tests::TraceOf;

template <class Body>
void RunAsOrdinaryUser(Body body) {
  tests::RunInChild([&] {
    constexpr unsigned kNobody = 65534;
    ASSERT_TRUE(::getuid() != 0 || ::setuid(kNobody) == 0);
    body();
  });
}

// The kernel's scheduling policy and I/O priority class (2 is best effort, 3 is idle).
using Kernel = std::pair<int, long>;
Kernel AskKernel() { return {::sched_getscheduler(0), ::syscall(SYS_ioprio_get, 1, 0) >> 13}; }

TEST(QualityOfService, CanBeSetReadAndReset) {
  RunAsOrdinaryUser([] {
    EXPECT_EQ(zkt::GetQOSClass(), 3) << "a thread without a class";
    const struct {
      std::int64_t set;
      std::int64_t want;
      Kernel kernel;
    } cases[] = {
        {1, 1, {SCHED_BATCH, 3}}, {2, 2, {SCHED_BATCH, 2}},         {3, 3, {SCHED_OTHER, 2}},
        {4, 4, {SCHED_OTHER, 2}}, {5, 5, {SCHED_OTHER, 2}},         {1, 1, {SCHED_BATCH, 3}},
        {5, 5, {SCHED_OTHER, 2}}, {0, 3, {SCHED_OTHER, 2}},         {2, 2, {SCHED_BATCH, 2}},
        {6, 3, {SCHED_OTHER, 2}}, {1, 1, {SCHED_BATCH, 3}},         {-1, 3, {SCHED_OTHER, 2}},
        {2, 2, {SCHED_BATCH, 2}}, {INT64_MIN, 3, {SCHED_OTHER, 2}}, {INT64_MAX, 3, {SCHED_OTHER, 2}},
    };
    for (const auto& c : cases) {
      EXPECT_EQ(zkt::SetQOSClass(c.set), 0) << c.set;
      EXPECT_EQ(zkt::GetQOSClass(), c.want) << c.set;
      EXPECT_EQ(AskKernel(), c.kernel) << c.set;
    }
  });
}

TEST(QualityOfService, BelongsToTheThread) {
  RunAsOrdinaryUser([] {
    EXPECT_EQ(zkt::SetQOSClass(5), 0);
    std::thread([] {
      EXPECT_EQ(zkt::GetQOSClass(), 3);
      EXPECT_EQ(zkt::SetQOSClass(1), 0);
      EXPECT_EQ(zkt::GetQOSClass(), 1);
    }).join();
    EXPECT_EQ(zkt::GetQOSClass(), 5);
  });
}

TEST(QualityOfService, TrustsThePolicyMoreThanItsOwnRecord) {
  RunAsOrdinaryUser([] {
    const auto setPolicy = [](int policy) {
      const sched_param noPriority{};
      ASSERT_EQ(::sched_setscheduler(0, policy, &noPriority), 0);
    };
    setPolicy(SCHED_BATCH);
    EXPECT_EQ(zkt::GetQOSClass(), 2) << "no class has been set yet";
    zkt::SetQOSClass(5);
    setPolicy(SCHED_BATCH);
    EXPECT_EQ(zkt::GetQOSClass(), 2);
    zkt::SetQOSClass(1);
    setPolicy(SCHED_OTHER);
    EXPECT_EQ(zkt::GetQOSClass(), 3);
    setPolicy(SCHED_IDLE);
    EXPECT_EQ(zkt::GetQOSClass(), 1);
  });
}

// At nice value 19, an ordinary user's thread cannot leave SCHED_IDLE.
TEST(QualityOfService, ReturnsTheErrorNumberAndLeavesTheThreadUnchanged) {
  RunAsOrdinaryUser([] {
    ASSERT_EQ(::setpriority(PRIO_PROCESS, 0, 19), 0);
    const sched_param noPriority{};
    ASSERT_EQ(::sched_setscheduler(0, SCHED_IDLE, &noPriority), 0);
    const Kernel before = AskKernel();
    EXPECT_EQ(TraceOf([] { EXPECT_EQ(zkt::SetQOSClass(1), EPERM); }), "pthread_set_qos_class_self_np failed 1|");
    EXPECT_EQ(AskKernel(), before);
  });
}

TEST(QualityOfService, WritesToTheDebugLog) {
  RunAsOrdinaryUser([] {
    EXPECT_EQ(TraceOf([] { zkt::SetQOSClass(4), zkt::GetQOSClass(); }),
              "pthread_set_qos_class_self_np success|class 25|priority 0|");
  });
}

}  // namespace
