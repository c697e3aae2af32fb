#include "core/objects.h"

#include <cstdlib>

namespace host {

namespace {

using Properties = std::map<std::string, PropertyValue>;

const Properties kExceptionProperties = {{"Message", StringRef()}, {"ErrorNumber", std::int64_t{0}}};

const ObjectClass kRuntimeException = {"RuntimeException", nullptr, kExceptionProperties};

const ObjectClass kClasses[] = {
    kRuntimeException,
    {"NilObjectException", &kRuntimeException, kExceptionProperties},
    {"OutOfBoundsException", &kRuntimeException, kExceptionProperties},
    {"OutOfMemoryException", &kRuntimeException, kExceptionProperties},
    {"UnsupportedFormatException", &kRuntimeException, kExceptionProperties},
    {"UnsupportedOperationException", &kRuntimeException, kExceptionProperties},
};

}  // namespace

const ObjectClass* FindClass(std::string_view name) {
  for (const ObjectClass& type : kClasses)
    if (type.name == name) return &type;
  return nullptr;
}

REALobjectStruct* MakeObject(const ObjectClass* type) {
  auto* const object = static_cast<REALobjectStruct*>(std::calloc(1, sizeof(REALobjectStruct)));
  if (object == nullptr) return nullptr;
  object->type = type;
  object->properties = new Properties(type->properties);
  Enter(object, Kind::kObject);
  return object;
}

void DestroyContent(REALobjectStruct* object) {
  delete object->properties;
  object->properties = nullptr;
}

}  // namespace host
