// Looks up classes by name: the host's own and those that plug-ins have registered.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "core/objects.h"

namespace host {

// Returns the class with that name, the host's own or a registered one, or null. Tests may change its methods.
ObjectClass* FindClass(std::string_view name);

// The host's own classes.
const std::vector<ObjectClass*>& OwnClasses();

// Makes the class for a record that a plug-in registers, and sets the offset of the instance data in the record.
std::unique_ptr<ObjectClass> MakeClass(zkt::REALclassDefinition* record, std::size_t number);

}  // namespace host
