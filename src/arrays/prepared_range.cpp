#include "arrays/prepared_range.h"

#include "arrays/range.h"
#include "frame/contract/host_services.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"

namespace zkt {

namespace {

// Raises an exception with the message, unless the message is null. Returns whether it raised an exception.
bool Raised(const char* message) {
  if (message == nullptr) [[likely]]
    return false;
  RaiseException("OutOfBoundsException", message);
  return true;
}

// Returns true if neither array is nil. Otherwise, handles the nil array as the operation requires and returns false.
bool AreGiven(NilArrays nilArrays, const void* source, const void* dest) {
  if (source != nullptr && dest != nullptr) [[likely]]
    return true;
  if (source == nullptr && nilArrays == NilArrays::kOfCopy) return false;
  if (nilArrays == NilArrays::kOfEquals) Trace(source == nullptr ? "source" : "dest", "is nil");
  RaiseException("NilObjectException", source == nullptr ? "source array is nil" : "dest array is nil");
  return false;
}

// Returns whether the caller wants all elements up to the end of an empty array.
bool IsEmptySource(std::int64_t count, std::int64_t upperBound) {
  if (count != kToTheEnd || upperBound >= 0) return false;
  Trace("empty array in source");
  return true;
}

std::int64_t ResolveCount(std::int64_t count, std::int64_t index, std::int64_t upperBound) {
  const std::int64_t resolved = count == kToTheEnd ? CountToEnd(index, upperBound) : count;
  Trace("sourceCount", resolved);
  return resolved;
}

bool IsNothing(std::int64_t count) {
  if (count < 1) Trace("nothing to do");
  return count < 1;
}

}  // namespace

void RaiseNoAccess() { RaiseException("UnsupportedOperationException", "Failed to access array?"); }

PreparedRange PrepareRange(const char* family, const void* source, std::int64_t index, std::int64_t count) {
  Trace(family, index, count);
  if (count == 0 || source == nullptr) return {};
  const std::int64_t upperBound = REALGetArrayUBound(source);
  Trace("ubound", upperBound);
  if (IsEmptySource(count, upperBound)) return {};
  void* const elements = GetArrayData(source);
  if (elements == nullptr) [[unlikely]] {
    RaiseNoAccess();
    return {};
  }
  if (Raised(index < 0 ? "sourceIndex < 0" : index > upperBound ? "sourceIndex > ubound source" : nullptr)) return {};
  const std::int64_t resolved = ResolveCount(count, index, upperBound);
  if (Raised(GoesBeyond(index, resolved, upperBound) ? "count too big for source" : nullptr)) return {};
  if (IsNothing(resolved)) return {};
  return {elements, resolved};
}

PreparedRanges PrepareRanges(const char* family, NilArrays nilArrays, const void* source, const void* dest,
                             std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex) {
  Trace(family, sourceIndex, sourceCount, destIndex);
  if (!AreGiven(nilArrays, source, dest)) return {};
  if (sourceCount == 0) return {};
  const std::int64_t sourceBound = REALGetArrayUBound(source);
  const std::int64_t destBound = REALGetArrayUBound(dest);
  Trace("ubound", sourceBound, destBound);
  if (IsEmptySource(sourceCount, sourceBound)) return {};
  void* const sourceElements = GetArrayData(source);
  void* const destElements = GetArrayData(dest);
  if (sourceElements == nullptr || destElements == nullptr) [[unlikely]] {
    RaiseNoAccess();
    return {};
  }
  if (Raised(sourceIndex < 0             ? "sourceIndex < 0"
             : destIndex < 0             ? "destIndex < 0"
             : sourceIndex > sourceBound ? "sourceIndex > ubound source"
             : destIndex > destBound     ? "destIndex > ubound dest"
                                         : nullptr))
    return {};
  const std::int64_t count = ResolveCount(sourceCount, sourceIndex, sourceBound);
  if (Raised(GoesBeyond(sourceIndex, count, sourceBound) ? "count too big for source"
             : GoesBeyond(destIndex, count, destBound)   ? "count too big for destination"
                                                         : nullptr))
    return {};
  if (IsNothing(count)) return {};
  return {sourceElements, destElements, count};
}

}  // namespace zkt
