// Uses libffi to call native functions by their declared types, and to make delegates that native code can call.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "core/objects.h"
#include "core/value.h"
#include "declarations/catalogue.h"

namespace host {

// An argument of the declared type. The variable, if set, is passed by reference and receives the value that the
// function stores.
struct Argument {
  Value value;
  Value* variable = nullptr;
};

// Calls the function. The function borrows its arguments, and the caller owns a returned reference. Throws
// XojoException if the function raised an exception.
Value CallNative(void* function, const std::vector<Argument>& arguments, const Type& result);

using DelegateTarget = std::function<Value(std::span<const Value>)>;

// Makes a delegate whose invoker takes the delegate, followed by the parameters of the signature.
ObjectRef MakeDelegate(const Signature& signature, DelegateTarget target);

}  // namespace host
