#include "language/interpreter.h"

#include <functional>
#include <optional>
#include <ostream>

#include "core/arrays.h"
#include "core/strings.h"
#include "language/calls.h"
#include "language/errors.h"
#include "language/lexer.h"
#include "language/ready_functions.h"

namespace host {

namespace {

constexpr Type kInteger{Basic::kInt64, false, {}};

bool IsText(const Value& value) { return !value.type.isArray && value.type.basic == Basic::kString; }

std::string TextOf(const Value& value) { return ToUTF8(static_cast<const REALstringStruct*>(value.Reference())); }

REALobjectStruct* ObjectOf(const Value& value) {
  const bool isObject =
      !value.type.isArray && (value.type.basic == Basic::kObject || value.type.basic == Basic::kVariant);
  return isObject ? static_cast<REALobjectStruct*>(value.Reference()) : nullptr;
}

Value Compute(char sign, const Value& a, const Value& b, const Catalogue& catalogue) {
  if (sign == '+' && IsText(a) && IsText(b)) return MakeValue(std::string_view(TextOf(a) + TextOf(b)));
  if (!a.type.IsNumber() || !b.type.IsNumber()) throw ScriptError(std::string("cannot compute with ") + sign);
  const bool isExact = sign != '/' && a.type.IsInteger() && b.type.IsInteger();
  const Type type = isExact ? kInteger : Type{Basic::kDouble, false, {}};
  const Value left = Convert({a}, type, catalogue)->value;
  const Value right = Convert({b}, type, catalogue)->value;
  const auto compute = [sign](auto x, auto y) { return sign == '+' ? x + y : sign == '-' ? x - y : x * y; };
  if (!isExact) return MakeValue(sign == '/' ? left.Real() / right.Real() : compute(left.Real(), right.Real()));
  // Integers wrap.
  return MakeValue(static_cast<std::int64_t>(
      compute(static_cast<std::uint64_t>(left.Integer()), static_cast<std::uint64_t>(right.Integer()))));
}

// Something that can be read and, perhaps, assigned. Nothing happens before one of them is done.
struct Reference {
  std::function<Operand()> load;
  std::function<void(const Operand&)> store;  // empty: it cannot be assigned
};

Reference Constant(Operand operand) {
  return {[operand = std::move(operand)] { return operand; }, {}};
}

}  // namespace

// Reads and runs one line, from left to right.
class LineReader {
 public:
  LineReader(Interpreter& interpreter, std::string_view line)
      : catalogue_(interpreter.catalogue_),
        out_(interpreter.out_),
        variables_(interpreter.variables_),
        tokens_(SplitIntoTokens(line)) {}

  void Run() {
    if (Current().kind == TokenKind::kEnd) return;
    if (TakeWord("Var") || TakeWord("Dim"))
      Declare();
    else if (TakeWord("Print"))
      Print();
    else
      RunStatement();
    RequireEnd();
  }

 private:
  const Token& Current() const { return tokens_[next_]; }

  bool TakeSign(char sign) {
    if (Current().kind != TokenKind::kSign || Current().text[0] != sign) return false;
    ++next_;
    return true;
  }

  bool TakeWord(std::string_view word) {
    if (Current().kind != TokenKind::kWord || !zkt::IsSameName(Current().text, word)) return false;
    ++next_;
    return true;
  }

  void RequireSign(char sign) {
    if (!TakeSign(sign)) throw ScriptError(std::string("missing ") + sign);
  }

  void RequireEnd() const {
    if (Current().kind != TokenKind::kEnd) throw ScriptError("cannot read on at " + Current().text);
  }

  std::string TakeName() {
    if (Current().kind != TokenKind::kWord) throw ScriptError("missing a name");
    return tokens_[next_++].text;
  }

  // Var a, b As Integer = 1; Var list() As String; Var thing As New Class(1)
  void Declare() {
    std::vector<std::string> names;
    bool isArray = false;
    do {
      names.push_back(TakeName());
      if (TakeSign('(')) {
        RequireSign(')');
        isArray = true;
      }
    } while (TakeSign(','));
    if (!TakeWord("As")) throw ScriptError("missing As and a type");
    const bool isNew = TakeWord("New");
    const std::string typeName = TakeName();
    const Type type = catalogue_.FindType(typeName, isArray);
    Value value = isArray ? Value{type, Owned<Counted>(Owned<Array>(MakeArray({type.basic, false, type.name}, -1)))}
                          : DefaultValue(type);
    if (isNew)
      value = MakeNew(catalogue_, typeName, TakeArguments());
    else if (TakeSign('='))
      value = As(type, TakeExpression());
    for (const std::string& name : names) variables_[name] = value;
  }

  void Print() {
    std::string text;
    if (Current().kind != TokenKind::kEnd) text = Show(TakeExpression().value);
    while (TakeSign(',')) text += " " + Show(TakeExpression().value);
    RequireEnd();
    out_ << text << '\n';
  }

  void RunStatement() {
    TakeWord("Call");
    isStatement_ = true;
    const Reference reference = TakeReference();
    isStatement_ = false;
    if (!TakeSign('=')) {
      reference.load();
      return;
    }
    const Operand value = TakeExpression();
    if (!reference.store) throw ScriptError("this cannot be assigned");
    reference.store(value);
  }

  Value As(const Type& type, const Operand& operand) const {
    auto converted = Convert(operand, type, catalogue_);
    if (!converted) throw ScriptError("cannot use " + Show(operand.value) + " as " + NameOf(type));
    return converted->value;
  }

  Operand TakeExpression() {
    Operand sum = TakeProduct();
    for (;;) {
      const char sign = TakeSign('+') ? '+' : TakeSign('-') ? '-' : '\0';
      if (sign == '\0') return sum;
      sum = {Compute(sign, sum.value, TakeProduct().value, catalogue_)};
    }
  }

  Operand TakeProduct() {
    Operand product = TakeFactor();
    for (;;) {
      const char sign = TakeSign('*') ? '*' : TakeSign('/') ? '/' : '\0';
      if (sign == '\0') return product;
      product = {Compute(sign, product.value, TakeFactor().value, catalogue_)};
    }
  }

  Operand TakeFactor() {
    if (!TakeSign('-')) return TakeReference().load();
    const Token& token = Current();
    if (token.kind == TokenKind::kInteger || token.kind == TokenKind::kReal) {
      ++next_;
      return *ReadLiteral("-" + token.text);
    }
    return {Compute('-', MakeValue(std::int64_t{0}), TakeFactor().value, catalogue_)};
  }

  // A literal, a name, or an expression in parentheses, and what is done with it behind points and in parentheses.
  Reference TakeReference() {
    Reference reference = TakeFirst();
    for (;;) {
      if (TakeSign('.')) {
        reference = Member(reference.load(), TakeName());
      } else if (Current().kind == TokenKind::kSign && Current().text == "(" && IsArray(reference)) {
        reference = Element(reference.load());
      } else {
        return reference;
      }
    }
  }

  // Only variables and properties that hold arrays can be indexed; everything else has taken its parentheses.
  static bool IsArray(const Reference& reference) { return reference.store && reference.load().value.type.isArray; }

  Reference TakeFirst() {
    const Token token = Current();
    if (token.kind != TokenKind::kWord && token.kind != TokenKind::kSign && token.kind != TokenKind::kEnd) {
      ++next_;
      if (token.kind == TokenKind::kText) return Constant({MakeValue(std::string_view(token.text))});
      if (token.kind == TokenKind::kColor)
        return Constant({{{Basic::kColor, false, {}}, std::int64_t{std::stoll(token.text)}}});
      return Constant(*ReadLiteral(token.text));
    }
    if (TakeSign('(')) {
      Operand inner = TakeExpression();
      RequireSign(')');
      return Constant(std::move(inner));
    }
    return TakeNamed(TakeName());
  }

  Reference TakeNamed(const std::string& name) {
    if (const auto found = variables_.find(name); found != variables_.end()) return Variable(&found->second);
    if (zkt::IsSameName(name, "New")) {
      const std::string className = TakeName();
      return Constant({MakeNew(catalogue_, className, TakeArguments())});
    }
    if (zkt::IsSameName(name, "Array")) return Constant(ArrayOf(TakeArguments()));
    if (zkt::IsSameName(name, "AddressOf")) return Constant(TakeAddress());
    if (zkt::IsSameName(name, "EndOfLine")) return Constant({MakeValue(std::string_view("\n"))});
    if (const auto literal = ReadLiteral(name)) return Constant(*literal);
    if (const std::string_view owner = catalogue_.FindOwner(name); !owner.empty() && TakeSign('.'))
      return OwnedMember(owner, TakeName());
    const MethodQuery query{OwnerKind::kNone, {}, name};
    if (!HasMethod(catalogue_, query)) throw ScriptError("there is no " + name);
    return Call(query, TakeArguments());
  }

  Operand TakeAddress() {
    const std::string name = TakeName();
    DelegateTarget target = FindReadyFunction(name);
    if (!target) throw ScriptError("there is no function " + name + " to take the address of");
    return {{}, nullptr, false, std::move(target)};
  }

  // An array that is written out: of the type of its first element until it is used as another.
  static Operand ArrayOf(const std::vector<Operand>& elements) {
    if (elements.empty()) throw ScriptError("Array needs elements");
    const Type& type = elements.front().value.type;
    bool isReal = false;
    for (const Operand& element : elements) isReal = isReal || element.value.type.IsReal();
    const Type elementType = isReal ? Type{Basic::kDouble, false, {}} : type;
    Owned<Array> array(MakeArray(elementType, static_cast<std::int64_t>(elements.size()) - 1));
    for (std::size_t i = 0; i < elements.size(); ++i) {
      Value value = elements[i].value;
      if (isReal && value.type.IsInteger()) value = MakeValue(static_cast<double>(value.Integer()));
      if (value.type.basic != elementType.basic) throw ScriptError("the elements of Array have several types");
      SetElement(array.Get(), static_cast<std::int64_t>(i), value);
    }
    return {{{elementType.basic, true, elementType.name}, Owned<Counted>(array)}, nullptr, true, {}};
  }

  // The arguments in parentheses, or without them where a line is nothing but a call.
  std::vector<Operand> TakeArguments() {
    const bool isBare = isStatement_ && Current().kind != TokenKind::kSign && Current().kind != TokenKind::kEnd;
    std::vector<Operand> arguments;
    if (!isBare && (!TakeSign('(') || TakeSign(')'))) return arguments;
    const bool wasStatement = isStatement_;
    isStatement_ = false;
    do {
      arguments.push_back(TakeExpression());
    } while (TakeSign(','));
    isStatement_ = wasStatement;
    if (!isBare) RequireSign(')');
    return arguments;
  }

  Reference Variable(Value* variable) {
    return {[=] {
              return Operand{*variable, variable, false, {}};
            },
            [=, this](const Operand& operand) { *variable = As(variable->type, operand); }};
  }

  Reference Call(const MethodQuery& query, std::vector<Operand> arguments,
                 const std::optional<Value>& self = std::nullopt) {
    // The name has to outlive this call.
    return {[this, query, name = std::string(query.name), arguments = std::move(arguments), self] {
              return Operand{CallMethod(catalogue_, {query.ownerKind, query.owner, name, query.isExtending}, arguments,
                                        self ? &*self : nullptr)};
            },
            {}};
  }

  Reference PropertyOf(const Property& property, const Value& owner) {
    return {[&property, owner] { return Operand{GetProperty(property, ObjectOf(owner))}; },
            [&property, owner, this](const Operand& operand) {
              SetProperty(property, ObjectOf(owner), As(property.type, operand));
            }};
  }

  // What a module has, or a class without an object.
  Reference OwnedMember(std::string_view owner, const std::string& name) {
    for (const OwnerKind kind : {OwnerKind::kModule, OwnerKind::kShared}) {
      if (const Property* const property = catalogue_.FindProperty(kind, owner, name)) return PropertyOf(*property, {});
      const MethodQuery query{kind, owner, name};
      if (HasMethod(catalogue_, query)) return Call(query, TakeArguments());
    }
    throw ScriptError(std::string(owner) + " has no " + name);
  }

  Reference Member(const Operand& base, const std::string& name) {
    const Value& value = base.value;
    if (value.type.isArray && (zkt::IsSameName(name, "Count") || zkt::IsSameName(name, "LastIndex")))
      return Constant({MakeValue(UpperBound(ArrayOf(value)) + (zkt::IsSameName(name, "Count") ? 1 : 0))});
    if (value.type.isArray && zkt::IsSameName(name, "Add")) return Append(value, TakeArguments());
    if (IsText(value) && zkt::IsSameName(name, "Bytes"))
      return Constant({MakeValue(static_cast<std::int64_t>(TextOf(value).size()))});
    if (REALobjectStruct* const object = ObjectOf(value)) {
      for (const ObjectClass* type = object->type; type != nullptr; type = type->super) {
        if (const Property* const property = catalogue_.FindProperty(OwnerKind::kInstance, type->name, name))
          return PropertyOf(*property, value);
        const MethodQuery method{OwnerKind::kInstance, type->name, name};
        if (HasMethod(catalogue_, method)) return Call(method, TakeArguments(), value);
      }
      if (Value* const property = FindProperty(object, name)) return HeldProperty(value, property);
    }
    const MethodQuery extension{OwnerKind::kNone, {}, name, true};
    if (!HasMethod(catalogue_, extension)) {
      if (value.type.IsReference() && value.Reference() == nullptr && !IsText(value))
        throw XojoException({"NilObjectException", name + " of Nil", 0});
      throw ScriptError(NameOf(value.type) + " has no " + name);
    }
    std::vector<Operand> arguments = TakeArguments();
    arguments.insert(arguments.begin(), base);
    return Call(extension, std::move(arguments));
  }

  static Array* ArrayOf(const Value& value) {
    if (value.Reference() == nullptr) throw XojoException({"NilObjectException", "the array is Nil", 0});
    return static_cast<Array*>(value.Reference());
  }

  // A property that the host holds: its object is kept while the reference is in use.
  Reference HeldProperty(const Value& owner, Value* property) {
    return {[owner, property] { return Operand{*property}; },
            [owner, property, this](const Operand& operand) { *property = As(property->type, operand); }};
  }

  Reference Append(const Value& value, const std::vector<Operand>& arguments) {
    if (arguments.size() != 1) throw ScriptError("Add takes one element");
    return {[=, this] {
              Array* const array = ArrayOf(value);
              const Value element = As(array->elementType, arguments.front());
              InsertElement(array, UpperBound(array) + 1);
              SetElement(array, UpperBound(array), element);
              return Operand{};
            },
            {}};
  }

  Reference Element(const Operand& base) {
    const std::vector<Operand> arguments = TakeArguments();
    if (arguments.size() != 1) throw ScriptError("an array has one index");
    const std::int64_t index = As(kInteger, arguments.front()).Integer();
    const Value value = base.value;
    const auto checked = [=] {
      Array* const array = ArrayOf(value);
      if (index < 0 || index > UpperBound(array))
        throw XojoException({"OutOfBoundsException", "index " + std::to_string(index), 0});
      return array;
    };
    return {[=] { return Operand{GetElement(checked(), index)}; },
            [=, this](const Operand& operand) {
              Array* const array = checked();
              SetElement(array, index, As(array->elementType, operand));
            }};
  }

  const Catalogue& catalogue_;
  std::ostream& out_;
  std::map<std::string, Value, NameOrder>& variables_;
  std::vector<Token> tokens_;
  std::size_t next_ = 0;
  bool isStatement_ = false;  // a call may go without parentheses
};

void Interpreter::RunLine(std::string_view line) { LineReader(*this, line).Run(); }

void Interpreter::RunScript(std::string_view script) {
  for (const ScriptLine& line : SplitIntoLines(script)) {
    try {
      RunLine(line.text);
    } catch (const XojoException& exception) {
      out_ << exception.what() << '\n';
    } catch (const ScriptError& error) {
      throw ScriptError("line " + std::to_string(line.number) + ": " + error.what());
    }
  }
}

}  // namespace host
