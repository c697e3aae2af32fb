// Runs straight-line Xojo code: declarations, assignments, calls, properties, Print.
#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "declarations/calls.h"
#include "language/syntax.h"

namespace host {

class Interpreter {
 public:
  // The catalogue has to outlive the interpreter; Print writes to `out`.
  Interpreter(const Catalogue& catalogue, std::ostream& out) : catalogue_(catalogue), out_(out) {}

  // Runs one line; nothing of it, if it cannot be read. Throws XojoException for an exception that the code raises,
  // ScriptError for code that is wrong.
  void RunLine(std::string_view line);

  // Runs all lines. An exception that a line raises is shown, and the next line runs; everything else that goes wrong
  // ends the script with a ScriptError that tells the line's number. `show` prints each line before what it prints.
  void RunScript(std::string_view script, bool show = false);

 private:
  // What a name stands for: a property that the plug-in has declared, a variable or a property that the host holds,
  // what a member of the language itself has given, or methods. The owner is the object, or what is extended.
  struct Place {
    const Property* property = nullptr;
    Value* value = nullptr;          // a variable, or a property that the host holds
    std::string_view heldName = {};  // of such a property
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

  // interpreter_members.cpp
  Place Find(const Expression& expression);
  std::optional<Place> FindDeclared(OwnerKind kind, std::string_view owner, std::string_view name) const;
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
