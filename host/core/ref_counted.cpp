#include "core/ref_counted.h"

#include <array>
#include <cstdlib>
#include <sstream>

namespace host {

namespace {

// All live values, in a circular list.
RefCounted gAlive = {nullptr, &gAlive, &gAlive, 0};

std::vector<std::string> gErrors;

bool gCountsReferences = true;

// The memory of a destroyed value is freed late, so that an over-release does not affect a new value at that address.
std::array<void*, 1024> gQuarantine{};
std::size_t gNextInQuarantine = 0;

void Quarantine(void* memory) {
  std::free(std::exchange(gQuarantine[gNextInQuarantine], memory));
  gNextInQuarantine = (gNextInQuarantine + 1) % gQuarantine.size();
}

void Destroy(RefCounted* value) {
  // A finalizer may retain and release its object. The large count keeps the release from destroying the object again.
  constexpr std::int64_t kWhileDestroyed = std::int64_t{1} << 40;
  value->referenceCount = kWhileDestroyed;
  if (value->kind->destroyContent != nullptr) value->kind->destroyContent(value);
  if (value->referenceCount != kWhileDestroyed) gErrors.push_back("a finalizer retained or over-released its object");
  value->referenceCount = 0;
  value->previous->next = value->next;
  value->next->previous = value->previous;
  value->kind = nullptr;
  Quarantine(value);
}

bool IsAlive(const RefCounted* value, const char* error) {
  if (value->kind == nullptr) gErrors.push_back(error);
  return value->kind != nullptr;
}

}  // namespace

void Track(RefCounted* value, const RefCountedKind& kind) {
  *value = {&kind, gAlive.previous, &gAlive, 1};
  gAlive.previous->next = value;
  gAlive.previous = value;
}

void Retain(RefCounted* value) {
  if (value != nullptr && IsAlive(value, "a destroyed value was retained")) ++value->referenceCount;
}

void Release(RefCounted* value) {
  if (value == nullptr || !IsAlive(value, "a destroyed value was over-released")) return;
  if (--value->referenceCount == 0 && gCountsReferences) Destroy(value);
}

void StopCountingReferences() { gCountsReferences = false; }

ReferenceReport ReportReferences() {
  ReferenceReport report{{}, gErrors};
  for (const RefCounted* value = gAlive.next; value != &gAlive; value = value->next) ++report.leaked[value->kind->name];
  return report;
}

std::string DescribeReferences(const ReferenceReport& report) {
  if (report.IsBalanced()) return "references: balanced\n";
  std::ostringstream text;
  text << "references: ";
  for (const auto& [kind, count] : report.leaked) text << count << ' ' << kind << "(s) leaked, ";
  text << report.errors.size() << " error(s)\n";
  int shown = 0;
  for (const RefCounted* value = gAlive.next; value != &gAlive && shown < 10; value = value->next, ++shown)
    text << "  leaked: " << value->kind->describe(value) << " with " << value->referenceCount << " reference(s)\n";
  for (const std::string& error : report.errors) text << "  error: " << error << '\n';
  return text.str();
}

}  // namespace host
