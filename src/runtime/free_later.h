// Releases the references in two variables of the caller at the end of a scope. The name is fixed by the host's
// interface.
#pragma once

#include <utility>

#include "frame/contract/host_services.h"

namespace zkt {

class rbFreeLater {
 public:
  // Takes the addresses of variables that may own a reference by the end of the scope. Either address may be null.
  rbFreeLater(REALobject* object, REALstring* string) : object_(object), string_(string) {}
  rbFreeLater(const rbFreeLater&) = delete;
  rbFreeLater& operator=(const rbFreeLater&) = delete;
  ~rbFreeLater() {
    if (object_ != nullptr && *object_ != nullptr) REALUnlockObject(std::exchange(*object_, nullptr));
    if (string_ != nullptr && *string_ != nullptr) REALUnlockString(std::exchange(*string_, nullptr));
  }

 private:
  REALobject* object_;
  REALstring* string_;
};

}  // namespace zkt
