// Arguments made of a declared parameter and a seed.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "declarations/catalogue.h"
#include "declarations/native_call.h"
#include "validate/entries.h"
#include "validate/random.h"

namespace host::validate {

// Makes the arguments of one call. It owns the variables that are passed by reference, and has to outlive the call.
class ArgumentMaker {
 public:
  ArgumentMaker(const Catalogue& catalogue, std::uint64_t seed, Driving driving)
      : catalogue_(catalogue), random_(seed), driving_(driving) {}

  Argument Make(const Parameter& parameter);
  std::vector<Argument> MakeAll(const Signature& signature);

  // A value of the type, for something of this name.
  Value MakeValue(const Type& type, std::string_view name);

  // An instance of a class of the plug-in's, constructed with arguments perhaps.
  Value MakeInstance(const ObjectClass* type);

 private:
  std::int64_t MakeInteger(Basic basic);
  double MakeReal(Basic basic);
  Value MakeObjectOf(std::string_view className);
  ObjectRef MakeUsableObject(std::string_view className);
  Value MakeVariant();
  Value MakeArrayOf(const Type& type, std::string_view name);
  Value MakeDelegateOf(const Type& type);
  DelegateTarget MakeAnswers();
  std::int64_t ArraySize();

  const Catalogue& catalogue_;
  Random random_;
  Driving driving_;
  std::deque<Value> variables_;
  std::vector<Value> arrays_;
};

// The value for people, with what decides: length and encoding of a text, the size of an array.
std::string Describe(const Value& value);

}  // namespace host::validate
