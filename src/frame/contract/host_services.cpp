// The slow path of binding, which looks up the service.
#include "frame/contract/host_services.h"

namespace zkt {

void* HostBinding::Ask() {
  void* const answer = lookup_(name_);
  slot_.store(answer, std::memory_order_relaxed);
  return answer;
}

void* ResolveHostService(const char* name) {
  const Resolver resolver = gResolver.load(std::memory_order_relaxed);
  return resolver != nullptr ? resolver(name) : nullptr;
}

void* LoadFrameworkMethod(const char* declaration) { return REALLoadFrameworkMethod(nullptr, declaration); }

}  // namespace zkt
