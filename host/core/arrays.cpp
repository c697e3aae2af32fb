#include "core/arrays.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "core/host.h"
#include "core/strings.h"

namespace host {

namespace {

constexpr std::int64_t kElementSize = 8;

// Keeps what plug-ins read in step.
void SetCount(Array* array, std::int64_t count) {
  array->count = count;
  const auto upperBound = static_cast<std::int32_t>(count - 1);
  if (Host::Current().version >= 2021.0)
    array->dimensions.since2021 = {1, {}, upperBound};
  else
    array->dimensions.before2021 = {1, {}, upperBound};
}

}  // namespace

Array* MakeArray(zkt::ArrayElementType elementType, std::int64_t upperBound) {
  if (elementType != zkt::kArrayOfString && elementType != zkt::kArrayOfInteger) return nullptr;
  auto* const array = static_cast<Array*>(std::calloc(1, sizeof(Array)));
  if (array == nullptr) return nullptr;
  array->elementType = elementType;
  SetCount(array, upperBound + 1);
  array->capacity = std::max<std::int64_t>(upperBound + 1, 4);
  array->data = static_cast<char*>(std::calloc(static_cast<std::size_t>(array->capacity), kElementSize));
  if (array->data == nullptr) {
    std::free(array);
    return nullptr;
  }
  Enter(array, Kind::kArray);
  return array;
}

void* InsertElement(Array* array, std::int64_t index) {
  const std::int64_t count = array->count;
  if (index < 0 || index > count) return nullptr;
  if (count == array->capacity) {
    void* const grown = std::realloc(array->data, static_cast<std::size_t>(2 * array->capacity * kElementSize));
    if (grown == nullptr) return nullptr;
    array->data = static_cast<char*>(grown);
    array->capacity *= 2;
  }
  char* const place = array->data + index * kElementSize;
  std::memmove(place + kElementSize, place, static_cast<std::size_t>((count - index) * kElementSize));
  std::memset(place, 0, kElementSize);
  SetCount(array, count + 1);
  return place;
}

void DestroyContent(Array* array) {
  if (array->elementType == zkt::kArrayOfString)
    for (std::int64_t index = 0; index <= UpperBound(array); ++index)
      Unlock(ElementAt<REALstringStruct*>(array, index));
  std::free(array->data);
  array->data = nullptr;
}

}  // namespace host
