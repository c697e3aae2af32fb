// Finds the instance data of a class in an object.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns the instance data of an object. The offset differs from class to class: the host writes it into the class's
// record during registration, and it is stored nowhere else.
template <class Data>
Data* InstanceData(const REALclassDefinition& record, REALobject object) {
  return reinterpret_cast<Data*>(reinterpret_cast<char*>(object) + record.forSystemUse);
}

}  // namespace zkt
