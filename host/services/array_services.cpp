// Arrays: making them, their upper bound, inserting elements.
#include "core/arrays.h"
#include "core/strings.h"
#include "frame/plugin_interface.h"
#include "services/services.h"

namespace host {

namespace {

Array* CreateArray(std::int64_t elementType, std::int64_t upperBound) {
  if (elementType == zkt::kArrayOfString) return MakeArray({Basic::kString, false, {}}, upperBound);
  if (elementType == zkt::kArrayOfInteger) return MakeArray({Basic::kInt64, false, {}}, upperBound);
  return nullptr;
}

std::int64_t GetUpperBound(const Array* array) { return UpperBound(array); }

void InsertString(Array* array, std::int64_t index, REALstringStruct* value) {
  void* const place = InsertElement(array, index);
  if (place == nullptr) return;
  Lock(value);
  *static_cast<REALstringStruct**>(place) = value;
}

auto StringInserter(const Array* /*array*/) { return &InsertString; }

}  // namespace

std::span<const Service> ArrayServices() {
  static const Service services[] = {
      MakeService("RuntimeArrayCreateSingleDimBoundedArray", CreateArray),
      MakeService("RuntimeUBound", GetUpperBound),
      MakeService("PluginStringArrayInsertProc", StringInserter),
  };
  return services;
}

}  // namespace host
