// Tests protected calls while other threads run and while the host's signal handlers are installed.
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>

#include <atomic>
#include <barrier>
#include <fstream>
#include <thread>

#include "arrays/array_access.h"
#include "plugin/arrays/array_fixture.h"
#include "plugin/process/crash_safe_fixture.h"

namespace {

using namespace tests;

// The arguments that one of the host's signal handlers received, and the thread and signal mask with which it ran.
struct Delivered {
  int signal = 0;
  int code = 0;
  const void* address = nullptr;
  bool hasContext = false;
  pthread_t thread{};
  bool blocksSignal = false;
  bool blocksOther = false;
};
Delivered gDelivered;

void* gPage = nullptr;

void Note(int signal, siginfo_t* info, void* context) {
  sigset_t blocked;
  ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
  gDelivered = {signal,
                info != nullptr ? info->si_code : 0,
                info != nullptr ? info->si_addr : nullptr,
                context != nullptr,
                ::pthread_self(),
                sigismember(&blocked, signal) == 1,
                sigismember(&blocked, SIGUSR1) == 1};
}
void NoteSignal(int signal) { Note(signal, nullptr, nullptr); }

// Makes the page accessible and lets the thread continue, as a garbage collector does.
void NoteAndUnprotect(int signal, siginfo_t* info, void* context) {
  Note(signal, info, context);
  ::mprotect(gPage, 4096, PROT_READ | PROT_WRITE);
}

void SetAction(int signal, void (*handler)(int, siginfo_t*, void*)) {
  struct sigaction action {};
  action.sa_sigaction = handler;
  action.sa_flags = SA_SIGINFO | SA_RESTART;
  sigaddset(&action.sa_mask, SIGUSR1);
  ASSERT_EQ(::sigaction(signal, &action, nullptr), 0);
}

void OnAnotherThread(const std::function<void()>& body) { std::thread(body).join(); }

TEST_F(CrashSafeCall, LeavesSignalsOfOtherThreadsToTheHost) {
  for (const auto& signal : kCrashSignals) {
    RunInChild([&] {
      std::signal(signal.number, NoteSignal);
      const auto raiseElsewhere = [&] { OnAnotherThread([&] { std::raise(signal.number); }); };
      EXPECT_EQ(Call(raiseElsewhere), "") << signal.name;
      EXPECT_EQ(gDelivered.signal, signal.number);
      EXPECT_FALSE(::pthread_equal(gDelivered.thread, ::pthread_self()));
      EXPECT_TRUE(gDelivered.blocksSignal && !gDelivered.blocksOther) << signal.name;
      gDelivered = {};
      SetAction(signal.number, Note);
      EXPECT_EQ(Call(raiseElsewhere), "");
      EXPECT_TRUE(gDelivered.signal == signal.number && gDelivered.hasContext && gDelivered.blocksOther);
      std::signal(signal.number, SIG_IGN);
      EXPECT_EQ(Call(raiseElsewhere), "") << signal.name << " is ignored";
      EXPECT_EQ(zkt::getCrashCounter(), 0);
    });
    const int status = StatusOf([&] {
      std::signal(signal.number, SIG_DFL);
      Call([&] { OnAnotherThread([&] { std::raise(signal.number); }); });
    });
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal.number) << signal.name << ": " << status;
  }
}

TEST_F(CrashSafeCall, LeavesFaultsOfOtherThreadsToTheHost) {
  gPage = ::mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(gPage, MAP_FAILED);
  const auto touchElsewhere = [] { OnAnotherThread([] { *static_cast<volatile int*>(gPage) = 5; }); };
  RunInChild([&] {
    SetAction(SIGSEGV, NoteAndUnprotect);
    EXPECT_EQ(Call(touchElsewhere), "");
    EXPECT_EQ(*static_cast<int*>(gPage), 5) << "the thread continues at the fault";
    EXPECT_TRUE(gDelivered.address == gPage && gDelivered.code == SEGV_ACCERR && gDelivered.hasContext);
  });
  // A fault on another thread ends the process even if the host ignores the signal.
  for (const auto disposition : {SIG_IGN, SIG_DFL}) {
    const int status = StatusOf([&] {
      std::signal(SIGSEGV, disposition);
      Call(touchElsewhere);
    });
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGSEGV) << status;
  }
  ::munmap(gPage, 4096);
}

// An ignored signal does not interrupt another thread's system call.
TEST_F(CrashSafeCall, DoesNotInterruptOtherThreads) {
  RunInChild([] {
    std::signal(SIGPIPE, SIG_IGN);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_EQ(Call([&] {
                ssize_t count = 0;
                char byte = 0;
                std::thread reader([&] { count = ::read(ends[0], &byte, 1); });
                for (int i = 0; i < 10; ++i) {
                  std::this_thread::sleep_for(std::chrono::milliseconds(10));
                  ::pthread_kill(reader.native_handle(), SIGPIPE);
                }
                EXPECT_EQ(::write(ends[1], "x", 1), 1);
                reader.join();
                EXPECT_EQ(count, 1);
              }),
              "");
  });
}

TEST_F(CrashSafeCall, AdmitsOneThreadAndLeavesNoHandlerBehind) {
  RunInChild([] {
    constexpr int kThreads = 8;
    constexpr int kRounds = 2000;
    tests::SetHandlersOfHost();
    // The development host can store only one raised exception, so the test counts the rejected calls itself.
    static std::atomic<int> refused{0};
    zkt::HostBindingTestAccess::Bind(zkt::REALBuildStringWithEncoding,
                                     [](const void*, std::int64_t, std::uint32_t) -> REALstring { return nullptr; });
    zkt::HostBindingTestAccess::Bind(zkt::REALnewInstance, [](const char* name) -> REALobject {
      if (name == std::string_view("DelegateCrashExceptionZKT")) ++refused;
      return nullptr;
    });
    static std::atomic<int> inside{0};
    static std::atomic<int> crowded{0};
    const host::ObjectRef delegate = host::MakeNativeDelegate(reinterpret_cast<void*>(+[](REALobject) {
      crowded += ++inside > 1;
      std::this_thread::yield();
      --inside;
    }));
    {
      std::barrier begin(kThreads);
      std::vector<std::jthread> threads;
      for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
          begin.arrive_and_wait();
          for (int round = 0; round < kRounds; ++round) zkt::CallDelegateCrash(delegate.Get());
        });
    }
    EXPECT_EQ(crowded, 0);
    EXPECT_EQ(zkt::getCallCounter() + refused, kThreads * kRounds);
    EXPECT_GT(refused, 0) << "the threads never overlapped";
    tests::ExpectHandlersOfHost("after all calls");
  });
}

sigset_t SetOfCrashSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const auto& signal : kCrashSignals) sigaddset(&set, signal.number);
  return set;
}

void ExpectAllBlocked(const char* note) {
  sigset_t blocked;
  ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
  for (const auto& signal : kCrashSignals) EXPECT_EQ(sigismember(&blocked, signal.number), 1) << note << signal.name;
}

TEST_F(CrashSafeCall, ReceivesSignalsThatTheHostBlocks) {
  const sigset_t all = SetOfCrashSignals();
  for (const auto& signal : kCrashSignals)
    RunInChild([&] {
      DropLog();
      ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
      EXPECT_EQ(Call([] {}), "");
      ExpectAllBlocked("clean return: ");
      EXPECT_EQ(Call([] { throw std::runtime_error("x"); }),
                "DelegateCrashExceptionZKT: Caught std::runtime_error: x 0");
      ExpectAllBlocked("exception: ");
      EXPECT_EQ(Call([&] { std::raise(signal.number); }), CrashBy(signal.number));
      ExpectAllBlocked("crash: ");
    });
}

// A signal that arrives before the delegate is called stays pending.
TEST_F(CrashSafeCall, LeavesAPendingSignalPending) {
  RunInChild([] {
    const sigset_t all = SetOfCrashSignals();
    ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
    std::raise(SIGPIPE);
    EXPECT_EQ(Call([] {}), "");
    sigset_t pending;
    ::sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 1);
    EXPECT_EQ(zkt::getCrashCounter(), 0);
  });
}

// If a crash interrupts the check of array access, the next caller repeats the check.
TEST_F(CrashSafeCall, LeavesNoArrayCheckUnfinished) {
  RunInChild([] {
    DropLog();
    static std::atomic<bool> crashes;
    crashes = true;
    const tests::ServiceReplaced upperBound(zkt::REALGetArrayUBound, [](host::Array* array) -> std::int64_t {
      if (crashes.exchange(false)) std::raise(SIGSEGV);
      return host::UpperBound(array);
    });
    const tests::TestArray<tests::element::Int32> numbers({1, 2, 3});
    const auto use = [&] { return zkt::GetArrayBasePointer(numbers.Get()) != nullptr; };
    EXPECT_EQ(Call([&] { use(); }), CrashBy(SIGSEGV));
    std::atomic<int> proven{0};
    OnAnotherThread([&] { proven += use(); });
    EXPECT_EQ(proven + use(), 2);
  });
}

// An inaccessible page lies below the alternate stack.
TEST_F(CrashSafeCall, GuardsTheAlternateStack) {
  RunInChild([] {
    EXPECT_EQ(Call([] {
                stack_t stack{};
                ::sigaltstack(nullptr, &stack);
                const auto lowest = reinterpret_cast<std::uintptr_t>(stack.ss_sp);
                std::ifstream maps("/proc/self/maps");
                std::string rights;
                for (std::string line; std::getline(maps, line);) {
                  std::uintptr_t begin = 0;
                  std::uintptr_t end = 0;
                  char found[5] = "";
                  ASSERT_EQ(std::sscanf(line.c_str(), "%lx-%lx %4s", &begin, &end, found), 3) << line;
                  if (begin < lowest && lowest <= end) rights = found;
                }
                EXPECT_EQ(rights, "---p");
              }),
              "");
  });
}

// Without an alternate stack, the handler runs on the thread's own stack.
TEST_F(CrashSafeCall, WorksWithoutAnAlternateStack) {
  const auto expectCrash = [](const char* note, const std::function<void()>& prepare) {
    RunInChild([&] {
      DropLog();
      prepare();
      EXPECT_EQ(Call([&] {
                  stack_t stack{};
                  ::sigaltstack(nullptr, &stack);
                  EXPECT_LT(stack.ss_size, 256u * 1024) << note;
                  std::raise(SIGSEGV);
                }),
                CrashBy(SIGSEGV))
          << note;
    });
  };
  expectCrash("the process has no thread-specific data keys left", [] {
    pthread_key_t key;
    while (::pthread_key_create(&key, nullptr) == 0) continue;
  });
  if (tests::kIsSanitized) return;  // the sanitizer needs memory for itself
  expectCrash("no memory is left", [] {
    const rlimit none{0, 0};
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &none), 0);
  });
}

}  // namespace
