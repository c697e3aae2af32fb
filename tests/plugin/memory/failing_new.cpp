#include "plugin/memory/failing_new.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

using tests::Failure;

bool gArmed = false;
bool gHasFailed = false;
int gLeft = 0;  // remaining allocations, including the first that fails
Failure gFailure = Failure::kNone;

void* Allocate(std::size_t size) {
  if (gArmed && --gLeft <= 0 && (gLeft == 0 || gFailure == Failure::kAllLater)) {
    gHasFailed = true;
    return nullptr;
  }
  return std::malloc(size != 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size) {
  if (void* const memory = Allocate(size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

// The forms for over-aligned types are not replaced, because the plug-in has no such types.
void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace tests {

FailingNew::FailingNew(int nth, Failure failure) {
  gHasFailed = false;
  gLeft = nth;
  gFailure = failure;
  gArmed = true;
}

bool FailingNew::Stop() {
  gArmed = false;
  return gHasFailed;
}

ReliableNew::ReliableNew() : before_(std::exchange(gArmed, false)) {}
ReliableNew::~ReliableNew() { gArmed = before_; }

}  // namespace tests
