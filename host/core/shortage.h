// Something that runs out when it is told to: memory, or what the host makes.
#pragma once

#include <cstdint>

namespace host {

class Shortage {
 public:
  // From now on the nth request fails, alone or with all that follow.
  void Begin(std::int64_t nth, bool fromThereOn) {
    left_ = nth;
    fromThereOn_ = fromThereOn;
    hasStruck_ = false;
  }
  void End() { left_ = kNever; }

  bool IsOn() const { return left_ != kNever; }
  // Whether a request has failed since the beginning, beyond the end too.
  bool HasStruck() const { return hasStruck_; }

  // Counts a request, and tells whether it fails.
  bool Strikes() {
    if (!IsOn()) return false;
    if (left_ > 0) --left_;
    if (left_ > 0 || (hasStruck_ && !fromThereOn_)) return false;
    return hasStruck_ = true;
  }

 private:
  static constexpr std::int64_t kNever = -1;

  std::int64_t left_ = kNever;
  bool fromThereOn_ = false;
  bool hasStruck_ = false;
};

}  // namespace host
