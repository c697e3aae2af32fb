// Where the instance data of a class lies inside an object.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The data of an object of the class. The host has written the offset into the class's record when it registered it;
// it differs from class to class, so that nothing but the record knows it.
template <class Data>
Data* InstanceData(const REALclassDefinition& record, REALobject object) {
  return reinterpret_cast<Data*>(reinterpret_cast<char*>(object) + record.forSystemUse);
}

}  // namespace zkt
