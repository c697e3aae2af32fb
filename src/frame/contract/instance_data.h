// Finds the instance data of a class in an object.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns an object's instance data. Each class has its own offset, which the host writes into the class record during
// registration. The offset is stored nowhere else.
template <class Data>
Data* InstanceData(const REALclassDefinition& record, REALobject object) {
  return reinterpret_cast<Data*>(reinterpret_cast<char*>(object) + record.forSystemUse);
}

}  // namespace zkt
