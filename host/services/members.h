// Lists the members that a plug-in has registered.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/host.h"

namespace host {

enum class OwnerKind {
  kNone,            // a global method
  kModule,          // a member of a module
  kShared,          // a shared member of a class
  kInstance,        // a member of an object
  kClassExtension,  // a member added to a host class
};

struct Member {
  OwnerKind ownerKind;
  const char* owner;  // the name of the module or class; empty for a global method
  std::variant<const zkt::REALmethodDefinition*, const zkt::REALproperty*, const zkt::REALdelegate*> record;

  // Returns the record if it has that type, otherwise null.
  template <class Record>
  const Record* As() const {
    const auto* const found = std::get_if<const Record*>(&record);
    return found != nullptr ? *found : nullptr;
  }
};

// Returns the members of one registration, grouped by kind.
std::vector<Member> MembersOf(const Registration& registration);

// Returns the members of all registrations.
std::vector<Member> MembersOf(const Host& host);

// Returns the native function of the global or module method with that name; null if no such method is registered.
void* FindNativeFunction(const Host& host, std::string_view methodName);

}  // namespace host
