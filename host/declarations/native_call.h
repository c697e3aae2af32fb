// Calling native functions by their declared types, and being called by them, through libffi.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "core/objects.h"
#include "core/value.h"
#include "declarations/catalogue.h"

namespace host {

// An argument of the type that is declared. A variable is passed by reference, and holds afterwards what was put there.
struct Argument {
  Value value;
  Value* variable = nullptr;
};

// Calls the function; arguments are lent to it, and the reference that a result carries belongs to the value given.
// Throws XojoException for an exception that was raised.
Value CallNative(void* function, const std::vector<Argument>& arguments, const Type& result);

using DelegateTarget = std::function<Value(std::span<const Value>)>;

// Makes a delegate whose invoker takes the delegate and then what the signature says.
ObjectRef MakeDelegate(const Signature& signature, DelegateTarget target);

}  // namespace host
