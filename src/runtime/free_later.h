// Releases the references in two of the caller's variables at the end of the scope. The class name is fixed by the
// host's interface.
#pragma once

#include <utility>

#include "frame/contract/host_services.h"

namespace zkt {

class rbFreeLater {
 public:
  // Takes the addresses of two variables, each of which may own a reference when the scope ends. Either address may be
  // null.
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
