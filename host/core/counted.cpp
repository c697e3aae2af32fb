#include "core/counted.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <utility>

#include "core/arrays.h"
#include "core/objects.h"
#include "core/strings.h"

namespace host {

namespace {

// All values that are alive, in a ring.
Counted gAlive = {Kind::kDead, &gAlive, &gAlive, 0};

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
  if (value->kind == Kind::kObject) {
    // A finalizer may lock and unlock its object, which must not end it a second time.
    constexpr std::int64_t kWhileFinalized = std::int64_t{1} << 40;
    value->references = kWhileFinalized;
    DestroyContent(static_cast<REALobjectStruct*>(value));
    if (value->references != kWhileFinalized) gFaults.push_back("a finalizer left its object locked or unlocked");
    value->references = 0;
  }
  if (value->kind == Kind::kArray) DestroyContent(static_cast<Array*>(value));
  value->previous->next = value->next;
  value->next->previous = value->previous;
  value->kind = Kind::kDead;
  Quarantine(value);
}

std::string Describe(const Counted* value) {
  const std::string references = " with " + std::to_string(value->references) + " reference(s)";
  switch (value->kind) {
    case Kind::kString:
      return "string \"" + ToUTF8(static_cast<const REALstringStruct*>(value)).substr(0, 60) + "\"" + references;
    case Kind::kObject:
      return "object of class " + static_cast<const REALobjectStruct*>(value)->type->name + references;
    case Kind::kArray:
      return "array with upper bound " + std::to_string(UpperBound(static_cast<const Array*>(value))) + references;
    default:
      return "destroyed value" + references;
  }
}

bool IsAlive(const Counted* value, const char* action) {
  if (value->kind != Kind::kDead) return true;
  gFaults.push_back(std::string(action) + " after the last reference was dropped");
  return false;
}

}  // namespace

void Enter(Counted* value, Kind kind) {
  value->kind = kind;
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
  for (const Counted* value = gAlive.next; value != &gAlive; value = value->next) {
    if (value->kind == Kind::kString) ++ledger.strings;
    if (value->kind == Kind::kObject) ++ledger.objects;
    if (value->kind == Kind::kArray) ++ledger.arrays;
  }
  ledger.faults = gFaults;
  return ledger;
}

std::string DescribeLedger(const Ledger& ledger) {
  std::ostringstream text;
  text << "ledger: " << ledger.strings << " strings, " << ledger.objects << " objects, " << ledger.arrays
       << " arrays alive, " << ledger.faults.size() << " faults" << (ledger.IsBalanced() ? " (balanced)" : "") << '\n';
  int shown = 0;
  for (const Counted* value = gAlive.next; value != &gAlive && shown < 10; value = value->next, ++shown)
    text << "  still alive: " << Describe(value) << '\n';
  for (const std::string& fault : ledger.faults) text << "  fault: " << fault << '\n';
  return text.str();
}

}  // namespace host
