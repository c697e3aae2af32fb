#include "core/counted.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace host {

namespace {

// All values that are alive, in a ring.
Counted gAlive = {nullptr, &gAlive, &gAlive, 0};

std::vector<std::string> gFaults;

bool gCountsReferences = true;

// Memory of destroyed values is kept for a while, so that one release too many is seen instead of hitting a new value.
std::array<void*, 1024> gQuarantine{};
std::size_t gNextInQuarantine = 0;

void Quarantine(void* memory) {
  std::free(std::exchange(gQuarantine[gNextInQuarantine], memory));
  gNextInQuarantine = (gNextInQuarantine + 1) % gQuarantine.size();
}

void Destroy(Counted* value) {
  // A finalizer may lock and unlock its object, which must not end it a second time.
  constexpr std::int64_t kWhileDestroyed = std::int64_t{1} << 40;
  value->references = kWhileDestroyed;
  if (value->kind->destroyContent != nullptr) value->kind->destroyContent(value);
  if (value->references != kWhileDestroyed) gFaults.push_back("a finalizer left its object locked or unlocked");
  value->references = 0;
  value->previous->next = value->next;
  value->next->previous = value->previous;
  value->kind = nullptr;
  Quarantine(value);
}

bool IsAlive(const Counted* value, const char* action) {
  if (value->kind != nullptr) return true;
  gFaults.push_back(std::string(action) + " after the last reference was dropped");
  return false;
}

}  // namespace

void Enter(Counted* value, const CountedKind& kind) {
  value->kind = &kind;
  value->references = 1;
  value->previous = gAlive.previous;
  value->next = &gAlive;
  gAlive.previous->next = value;
  gAlive.previous = value;
}

void Lock(Counted* value) {
  if (value != nullptr && IsAlive(value, "lock")) ++value->references;
}

void Unlock(Counted* value) {
  if (value == nullptr || !IsAlive(value, "unlock")) return;
  if (--value->references == 0 && gCountsReferences) Destroy(value);
}

void StopCountingReferences() { gCountsReferences = false; }

Ledger TakeLedger() {
  Ledger ledger;
  for (const Counted* value = gAlive.next; value != &gAlive; value = value->next) ++ledger.alive[value->kind->plural];
  ledger.faults = gFaults;
  return ledger;
}

std::string DescribeLedger(const Ledger& ledger) {
  std::ostringstream text;
  text << "ledger: ";
  for (const auto& [kind, count] : ledger.alive) text << count << ' ' << kind << " alive, ";
  text << ledger.faults.size() << " faults" << (ledger.IsBalanced() ? " (balanced)" : "") << '\n';
  int shown = 0;
  for (const Counted* value = gAlive.next; value != &gAlive && shown < 10; value = value->next, ++shown)
    text << "  still alive: " << value->kind->describe(value) << " with " << value->references << " reference(s)\n";
  for (const std::string& fault : ledger.faults) text << "  fault: " << fault << '\n';
  return text.str();
}

}  // namespace host
