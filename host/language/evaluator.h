// Runs what lines have been read into, with the variables that they share.
#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>

#include "declarations/calls.h"
#include "language/syntax.h"

namespace host {

class Evaluator {
 public:
  Evaluator(const Catalogue& catalogue, std::ostream& out) : catalogue_(catalogue), out_(out) {}

  void Run(const Statement& statement);

 private:
  // What a name stands for: one of a variable, a property that the plug-in has declared, one that the host holds, what
  // a member of the language itself has given, and methods. The owner is the object, or what is extended.
  struct Place {
    Value* variable = nullptr;
    const Property* property = nullptr;
    Value* held = nullptr;  // a property that the host holds, of this name
    std::string_view heldName = {};
    std::optional<Operand> builtIn = {};
    std::optional<MethodQuery> method = {};
    Operand owner = {};
  };

  void Declare(const DeclaredGroup& group);
  Value MakeDeclaredArray(const Type& type, const Expression* upperBound);
  void Print(const std::vector<Expression>& expressions);
  void Assign(const Expression& target, const Expression& value);

  Operand Load(const Expression& expression);
  Operand LoadChain(const Expression& expression);
  Operand LoadNamed(const Expression& expression);
  std::vector<Operand> LoadAll(const std::vector<Expression>& expressions);
  Value As(const Type& type, const Operand& operand) const;

  // evaluator_members.cpp
  Place Find(const Expression& expression);
  Place FindOwned(std::string_view owner, std::string_view name) const;
  Place FindMember(const Operand& base, std::string_view name) const;
  std::optional<Place> FindInClass(const ObjectClass* type, const Operand& base, std::string_view name) const;
  bool HasMethod(MethodQuery query) const;
  std::optional<Operand> LoadBuiltIn(const Operand& base, const Expression& expression);
  Operand LoadFrom(const Place& place);
  void StoreTo(const Place& place, const Operand& operand);
  Operand Call(const Place& place, std::vector<Operand> arguments, bool isAssigning);
  Operand LoadElement(const Operand& base, const std::vector<Operand>& arguments);
  void StoreElement(const Operand& base, const std::vector<Operand>& arguments, const Operand& operand);
  std::int64_t IndexIn(const Operand& base, const std::vector<Operand>& arguments) const;

  const Catalogue& catalogue_;
  std::ostream& out_;
  std::map<std::string, Value, NameOrder> variables_;
};

}  // namespace host
