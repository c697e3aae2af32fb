#include "language/code.h"

#include <memory>
#include <utility>

#include "core/classes.h"

namespace host {

namespace {

// Deeper nesting could overflow the process's stack.
constexpr std::size_t kDeepestCalls = 400;

std::vector<std::unique_ptr<Frame>> gFrames;

}  // namespace

FrameGuard::FrameGuard() : count_(gFrames.size()) {}
FrameGuard::~FrameGuard() { gFrames.resize(count_); }

Frame& FrameGuard::Begin() {
  if (gFrames.size() >= kDeepestCalls)
    throw XojoException("StackOverflowException", "method calls are nested too deeply");
  return *gFrames.emplace_back(std::make_unique<Frame>());
}

void Code::PlaceIn(std::function<Value&(Frame&)> place) {
  variable = std::move(place);
  load = variable;
  store = [stored = variable](Frame& frame, const Value& value) { stored(frame) = value; };
}

Code MakeCode(const Type& type, Position at, Load load) {
  Code code;
  code.type = type;
  code.at = at;
  code.load = std::move(load);
  return code;
}

Code MakeConstant(Operand operand, Position at) {
  Code code = MakeCode({}, at, [value = *operand.constant](Frame&) { return value; });
  static_cast<Operand&>(code) = std::move(operand);
  return code;
}

Code WithoutVariable(Code code) {
  code.variable = nullptr;
  code.store = nullptr;
  return code;
}

Flow Run(const Steps& steps, Frame& frame) {
  for (const Step& step : steps) try {
      if (const Flow flow = step.run(frame); flow != Flow::kNext) return flow;
    } catch (XojoException& exception) {
      exception.NoteLine(step.at.line);
      throw;
    } catch (ScriptError& error) {
      error.NotePosition(step.at);
      throw;
    }
  return Flow::kNext;
}

std::string WithArticle(const std::string& noun) {
  const bool isVowel = std::string_view("AEIOaeio").find(noun.front()) != std::string_view::npos;
  return (isVowel ? "an " : "a ") + noun;
}

std::string NameOf(const Code& code) {
  if (!code.functions.empty()) return "AddressOf " + code.text;
  if (code.type.kind != TypeKind::kNothing) return NameOf(code.type);
  return code.isLiteral ? "Nil" : "no value";
}

std::string HintFor(const Code& code, const Type& wanted) {
  const Type& given = code.type;
  if (wanted == kStringType && given.isArray)
    return given.kind == TypeKind::kString ? "; join it with String.FromArray" : "; convert each element with ToString";
  if (wanted == kStringType && (given.IsNumber() || given.Is(TypeKind::kBoolean) || given.Is(TypeKind::kColor)))
    return "; convert it with ToString";
  if (wanted.IsNumber() && given == kStringType) return "; convert it with ToInteger or ToDouble";
  if (wanted.IsNumber() && given.Is(TypeKind::kBoolean)) return "; convert it with If(value, 1, 0)";
  if (wanted.Is(TypeKind::kVariant) && given.isArray) return "; an array in a Variant is not supported here";
  if (wanted.Is(TypeKind::kObject) && given.Is(TypeKind::kObject) && FindClass(wanted.name)->IsA(given.name))
    return "; cast it: " + NameOf(wanted) + "(…)";
  if (wanted.IsNumber() && given.IsNumber() && code.constant) return "; " + Show(*code.constant) + " does not fit";
  if (wanted.isArray && given.isArray && code.text == "Array")
    return "; Array takes its type from its elements: declare an empty array and call Add for each element";
  return "";
}

void RejectUnsupportedMember(std::string_view type, std::string_view member, Position at) {
  const ObjectClass* const known = FindClass(type);
  const bool isOfException = known != nullptr && known->IsA("RuntimeException");
  const bool isUnsupported = isOfException
                                 ? zkt::IsOneOf(member, "Reason", "Stack", "StackFrames")
                                 : zkt::IsSameName(type, "Variant") && zkt::IsSameName(member.substr(0, 4), "Type");
  if (isUnsupported) throw ScriptError(std::string(type) + "." + std::string(member) + " is not supported here", at);
}

}  // namespace host
