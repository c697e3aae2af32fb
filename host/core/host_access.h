// Lets several threads call plug-ins. The host serves one thread at a time: a thread holds the host except while it
// runs plug-in code.
#pragma once

#include <mutex>

namespace host {

// Whether several threads call plug-ins. Set before those threads start.
inline bool gIsShared = false;
inline std::mutex gHostMutex;
inline thread_local bool gHoldsHost = false;

// Acquires or releases the host until the end of the scope, unless the calling thread has already done so. Does nothing
// if the host is not shared.
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
using ReleaseHost = HostAccess<false>;

}  // namespace host
