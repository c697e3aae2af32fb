// Threads that call plug-ins at once. The host is for one thread at a time: each holds it, except while native code of
// a plug-in runs.
#pragma once

#include <mutex>

namespace host {

// Whether several threads call plug-ins. Set before they start.
inline bool gIsShared = false;
inline std::mutex gHostMutex;
inline thread_local bool gHoldsHost = false;

// Holds the host for a scope, or gives it up, unless the calling thread has it that way already. Does nothing as long
// as the host is not shared.
template <bool kHolds>
class HostAccess {
 public:
  HostAccess() : changes_(gIsShared && gHoldsHost != kHolds) { Change(kHolds); }
  HostAccess(const HostAccess&) = delete;
  HostAccess& operator=(const HostAccess&) = delete;
  ~HostAccess() { Change(!kHolds); }

 private:
  void Change(bool holds) const {
    if (!changes_) return;
    holds ? gHostMutex.lock() : gHostMutex.unlock();
    gHoldsHost = holds;
  }

  bool changes_;
};

using HoldHost = HostAccess<true>;
using GiveUpHost = HostAccess<false>;

}  // namespace host
