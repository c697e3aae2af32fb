// Classes by their names: those of the host, and those that plug-ins have registered.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "core/objects.h"

namespace host {

// The class of that name, the host's own or a registered one; null if there is none. A test may change its methods.
ObjectClass* FindClass(std::string_view name);

// The classes that the host has by itself.
const std::vector<ObjectClass*>& OwnClasses();

// Makes the class of a record that a plug-in registers, and writes where its instance data will lie into the record.
std::unique_ptr<ObjectClass> MakeClass(zkt::REALclassDefinition* record, std::size_t number);

}  // namespace host
