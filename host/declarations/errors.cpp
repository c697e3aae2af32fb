#include "declarations/errors.h"

#include "core/classes.h"

namespace host {

ObjectRef ObjectOf(const RaisedException& raised) {
  if (raised.object) return raised.object;
  ObjectRef object(MakeObject(FindClass(raised.className)));
  SetContent(object.Get(), raised.message, raised.errorNumber);
  return object;
}

}  // namespace host
