// Resolves names and members.
#include <utility>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/host.h"
#include "core/text_order.h"
#include "declarations/suggestions.h"
#include "language/compiler.h"

namespace host {

namespace {

// Finds a constant that #If can test.
std::optional<Value> FindBuildConstant(std::string_view name) {
  const auto truth = [](bool isTrue) { return Value{kBooleanType, std::int64_t{isTrue}}; };
  if (zkt::IsSameName(name, "DebugBuild")) return truth(!Host::Current().isBuiltApplication);
  if (zkt::IsSameName(name, "XojoVersion")) return MakeValue(Host::Current().version);
  if (zkt::IsOneOf(name, "TargetLinux", "TargetConsole", "Target64Bit")) return truth(true);
  if (zkt::IsOneOf(name, "TargetMacOS", "TargetWindows", "TargetDesktop", "TargetWeb", "Target32Bit"))
    return truth(false);
  return std::nullopt;
}

// Returns a dotted name, such as "Picture.Formats.PNG", as a string; empty for any other expression.
std::string DottedName(const Expression& expression) {
  if (expression.hasArguments) return "";
  if (expression.kind == ExpressionKind::kName) return expression.text;
  if (expression.kind != ExpressionKind::kMember) return "";
  const std::string base = DottedName(expression.operands.front());
  return base.empty() ? "" : base + "." + expression.text;
}

// Returns a function that loads the object that a member belongs to, which must not be Nil.
std::function<ObjectRef(Frame&)> LoadOwner(const Code& object, const std::string& member) {
  return [load = object.load, member](Frame& frame) {
    const Value owner = load(frame);
    if (owner.Reference() == nullptr) throw XojoException("NilObjectException", member + " of Nil");
    return Retained(owner.Object());
  };
}

// Compiles a property that a plug-in declares. `object` is null for a shared property or a property of a module.
Code CompileProperty(const Property& property, const Code* object, Position at) {
  std::function<ObjectRef(Frame&)> owner = [](Frame&) { return ObjectRef(); };
  if (object != nullptr) owner = LoadOwner(*object, std::string(property.name));
  Code code = MakeCode(property.type, at,
                       [&property, owner](Frame& frame) { return GetProperty(property, owner(frame).Get()); });
  if (property.setter != nullptr)
    code.store = [&property, owner](Frame& frame, const Value& assigned) {
      SetProperty(property, owner(frame).Get(), assigned);
    };
  return code;
}

// Compiles a property of one of the host's own classes.
Code CompileHeld(const ObjectClass& type, const Code& object, const std::string& name, const Type& held, Position at) {
  const auto owner = LoadOwner(object, name);
  Code code = MakeCode(held, at, [owner, name](Frame& frame) {
    const ObjectRef self = owner(frame);
    const Value* const property = FindProperty(self.Get(), name);
    if (property == nullptr) throw ScriptError("this version of the host has no " + name);
    return *property;
  });
  if (!type.isReadOnly)
    code.store = [owner, name](Frame& frame, const Value& value) {
      if (!AssignProperty(owner(frame).Get(), name, value)) throw ScriptError(name + " cannot be " + Show(value));
    };
  return code;
}

}  // namespace

Code& Compiler::AddVariable(const std::string& name, const Type& type, Position at) {
  for (std::size_t i = openBlocks_ > 0 ? 0 : redeclarableCount_; i < variables_.size(); ++i)
    if (IsSameIdentifier(variables_[i].text, name)) throw ScriptError(name + " is already declared", at);
  return Shadow(name, type);
}

Code& Compiler::Shadow(const std::string& name, const Type& type) {
  Code& code = variables_.emplace_back();
  code.type = type;
  code.text = name;
  code.PlaceIn([slot = slotCount_++](Frame& frame) -> Value& { return frame.slots[slot].Get(); });
  return code;
}

Type Compiler::FindType(const TypeName& type) const try {
  return program_.catalogue.FindType(type.name, type.isArray);
} catch (ScriptError& error) {
  error.NotePosition(type.at);
  throw;
}

const Code* Compiler::FindVariable(std::string_view name) const {
  for (auto variable = variables_.rbegin(); variable != variables_.rend(); ++variable)
    if (IsSameIdentifier(variable->text, name)) return &*variable;
  return nullptr;
}

std::vector<std::string_view> Compiler::Names() const {
  std::vector<std::string_view> names;
  for (const Code& variable : variables_)
    if (variable.text.find(' ') == std::string::npos) names.push_back(variable.text);
  for (const auto& function : program_.functions)
    names.push_back(function->owner.empty() ? function->signature.name : function->owner);
  for (const auto* const methods : {&program_.catalogue.Methods(), &program_.catalogue.FrameworkMethods()})
    for (const Method& method : *methods) {
      if (method.IsGlobal()) names.push_back(method.signature.name);
      if (!method.owner.empty()) names.push_back(method.owner);
    }
  return names;
}

Code Compiler::CompileName(const Expression& expression, const Code* assigned) {
  const std::string& name = expression.text;
  if (const Code* const variable = FindVariable(name)) {
    Code code = *variable;
    code.at = expression.at;
    return PropertyOrElement(std::move(code), expression);
  }
  if (zkt::IsSameName(name, "Array")) return CompileArray(expression);
  if (auto call = CompileCall({OwnerKind::kNone, {}, name}, expression, nullptr, assigned)) return std::move(*call);
  if (const auto constant = FindBuildConstant(name)) return MakeConstant({constant->type, constant}, expression.at);
  if (const auto type = program_.catalogue.TryFindType(name, false)) {
    if (expression.hasArguments) return CompileCast(*type, expression);
    throw ScriptError(name + " is a type, not a value", expression.at);
  }
  if (program_.catalogue.IsOwner(name)) throw ScriptError(name + " is a module, not a value", expression.at);
  throw ScriptError("'" + name + "' is not defined" + DidYouMean(name, Names()), expression.at);
}

Code Compiler::CompileMember(const Expression& expression, const Code* assigned) {
  const Expression& base = expression.operands.front();
  const bool isVariable = base.kind == ExpressionKind::kName && FindVariable(base.text) != nullptr;
  if (const Value* const constant = isVariable ? nullptr : FindConstant(DottedName(expression)))
    return MakeConstant({constant->type, *constant}, expression.at);
  if (base.kind == ExpressionKind::kName && !base.hasArguments && !isVariable)
    if (auto shared = CompileShared(base.text, expression, assigned)) return std::move(*shared);
  return CompileMemberOf(CompileExpression(base), expression, assigned);
}

// Compiles a member of a module, or a shared member of a class.
std::optional<Code> Compiler::CompileShared(const std::string& owner, const Expression& expression,
                                            const Code* assigned) {
  for (const OwnerKind kind : {OwnerKind::kModule, OwnerKind::kShared})
    if (auto member = CompileDeclared(kind, owner, expression, nullptr, assigned)) return member;
  std::vector<std::string_view> members;
  bool isOwner = program_.catalogue.IsOwner(owner);
  for (const auto& function : program_.functions)
    if (zkt::IsSameName(function->owner, owner)) isOwner = true;
  if (!isOwner) return std::nullopt;
  for (const Method& method : program_.catalogue.Methods())
    if (zkt::IsSameName(method.owner, owner)) members.push_back(method.signature.name);
  for (const Property& property : program_.catalogue.Properties())
    if (zkt::IsSameName(property.owner, owner)) members.push_back(property.name);
  RejectUnsupportedMember(owner, expression.text, expression.at);
  throw ScriptError(owner + " has no " + expression.text + DidYouMean(expression.text, members), expression.at);
}

Code Compiler::CompileMemberOf(const Code& object, const Expression& expression, const Code* assigned) {
  const std::string& name = expression.text;
  if (object.type.isArray)
    if (auto member = CompileArrayMember(object, expression)) return std::move(*member);
  if (object.type.Is(TypeKind::kDelegate) && zkt::IsSameName(name, "Invoke")) return CompileInvoke(object, expression);
  if (object.type.Is(TypeKind::kObject))
    if (auto member = CompileClassMember(object, expression, assigned)) return std::move(*member);
  if (auto extension = CompileCall({OwnerKind::kNone, {}, name, true}, expression, &object, assigned))
    return std::move(*extension);
  RejectUnsupportedMember(NameOf(object), name, expression.at);
  if (object.type.Is(TypeKind::kVariant))
    throw ScriptError("Variant has no " + name + "; assign it to a variable of the type that it holds first",
                      expression.at);
  std::vector<std::string_view> members;
  for (const auto* const methods : {&program_.catalogue.Methods(), &program_.catalogue.FrameworkMethods()})
    for (const Method& method : *methods)
      if ((!method.signature.parameters.empty() && method.signature.parameters.front().isExtends &&
           method.signature.parameters.front().type == object.type) ||
          zkt::IsSameName(method.owner, object.type.name))
        members.push_back(method.signature.name);
  throw ScriptError(NameOf(object) + " has no " + name + DidYouMean(name, members), expression.at);
}

std::optional<Code> Compiler::CompileClassMember(const Code& object, const Expression& expression,
                                                 const Code* assigned) {
  const std::string& name = expression.text;
  const ObjectClass* const first = FindClass(object.type.name);
  for (const ObjectClass* type = first; type != nullptr; type = type->super)
    for (const OwnerKind kind : {OwnerKind::kShared, OwnerKind::kInstance, OwnerKind::kClassExtension}) {
      const Code* const self = kind == OwnerKind::kShared ? nullptr : &object;
      if (auto member = CompileDeclared(kind, type->name, expression, self, assigned)) return member;
    }
  const Value* const held = first != nullptr ? FindDefault(*first, name) : nullptr;
  if (held == nullptr) return std::nullopt;
  return PropertyOrElement(CompileHeld(*first, object, name, held->type, expression.at), expression);
}

std::optional<Code> Compiler::CompileDeclared(OwnerKind kind, std::string_view owner, const Expression& expression,
                                              const Code* object, const Code* assigned) {
  if (const Property* const property = program_.catalogue.FindProperty(kind, owner, expression.text))
    return PropertyOrElement(CompileProperty(*property, object, expression.at), expression);
  return CompileCall({kind, owner, expression.text}, expression, object, assigned);
}

Code Compiler::PropertyOrElement(Code property, const Expression& expression) {
  if (!expression.hasArguments) return property;
  if (property.type.isArray) return CompileElement(property, expression);
  throw ScriptError(expression.text + " is " + WithArticle(NameOf(property.type)) + ", which has no elements",
                    expression.at);
}

Code Compiler::CompileElement(const Code& array, const Expression& expression) {
  if (expression.arguments.size() != 1) throw ScriptError("an array takes one index", expression.at);
  const Code index = Convert(CompileExpression(expression.arguments.front()), kIntegerType, "an index");
  const auto find = [array = array.load, index = index.load](Frame& frame, Value& owner) {
    owner = array(frame);
    if (owner.Reference() == nullptr) throw XojoException("NilObjectException", "the array is Nil");
    const std::int64_t i = index(frame).Integer();
    if (i < 0 || i > UpperBound(owner.Array()))
      throw XojoException("OutOfBoundsException", "index " + std::to_string(i));
    return i;
  };
  Code code = MakeCode(array.type.Element(), expression.at, [find](Frame& frame) {
    Value owner;
    const std::int64_t i = find(frame, owner);
    return GetElement(owner.Array(), i);
  });
  code.store = [find](Frame& frame, const Value& value) {
    Value owner;
    const std::int64_t i = find(frame, owner);
    SetElement(owner.Array(), i, value);
  };
  return code;
}

// Compiles a cast, such as CounterZKT(object).
Code Compiler::CompileCast(const Type& type, const Expression& expression) {
  if (expression.arguments.size() != 1) throw ScriptError(expression.text + " takes one value", expression.at);
  const Code value = CompileExpression(expression.arguments.front());
  const bool isPointer = (type.Is(TypeKind::kPtr) && value.type.IsInteger()) ||
                         (type.IsInteger() && (value.type.Is(TypeKind::kPtr) || value.type.Is(TypeKind::kEnumeration)));
  if (isPointer)
    return MakeCode(type, expression.at, [type, load = value.load](Frame& frame) {
      return Value{type, load(frame).payload};
    });
  const bool isObject = value.type.Is(TypeKind::kObject) || value.type.Is(TypeKind::kVariant);
  if (!type.Is(TypeKind::kObject) || !isObject)
    throw ScriptError(expression.text + "(…) casts objects, but got " + NameOf(value) +
                          (type.IsNumber() && value.type.IsNumber() ? "; use CType" : ""),
                      expression.at);
  return MakeCode(type, expression.at, [type, load = value.load](Frame& frame) {
    const Value object = load(frame);
    if (object.Reference() != nullptr && !object.Object()->type->IsA(type.name))
      throw XojoException("IllegalCastException",
                          object.Object()->type->name + " is not " + WithArticle(std::string(type.name)));
    return Value{type, object.payload};
  });
}

}  // namespace host
