// Calls native functions by their declared types, and makes delegates that native code can call, through libffi.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "core/objects.h"
#include "core/value.h"
#include "declarations/catalogue.h"

namespace host {

// An argument of the declared type. A variable is passed by reference and receives what the function stores there.
struct Argument {
  Value value;
  Value* variable = nullptr;
};

// Calls the function. Arguments are borrowed by the function; the caller owns the reference in a result. Throws
// XojoException if the function raised an exception.
Value CallNative(void* function, const std::vector<Argument>& arguments, const Type& result);

using DelegateTarget = std::function<Value(std::span<const Value>)>;

// Makes a delegate whose invoker takes the delegate and then the parameters of the signature.
ObjectRef MakeDelegate(const Signature& signature, DelegateTarget target);

}  // namespace host
