// Makes memory allocations or calls to the host fail on purpose.
#pragma once

#include <cstdint>

namespace host {

class FaultInjector {
 public:
  // Arms the injector: the nth request from now fails and, if `andLater` is set, so do all later requests.
  void Arm(std::int64_t nth, bool andLater) {
    left_ = nth;
    andLater_ = andLater;
    hasTriggered_ = false;
  }
  void Disarm() { left_ = kNever; }

  bool IsArmed() const { return left_ != kNever; }
  // Whether a request has failed since the injector was armed. Disarm does not reset it.
  bool HasTriggered() const { return hasTriggered_; }

  // Counts a request, and returns whether it must fail.
  bool ShouldFail() {
    if (!IsArmed()) return false;
    if (left_ > 0) --left_;
    if (left_ > 0 || (hasTriggered_ && !andLater_)) return false;
    return hasTriggered_ = true;
  }

 private:
  static constexpr std::int64_t kNever = -1;

  std::int64_t left_ = kNever;
  bool andLater_ = false;
  bool hasTriggered_ = false;
};

}  // namespace host
