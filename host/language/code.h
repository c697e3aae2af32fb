// Compiled Xojo code: typed expressions and statements as C++ functions.
#pragma once

#include <deque>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "declarations/conversion.h"
#include "declarations/errors.h"
#include "declarations/native_call.h"

namespace host {

// A local variable. For a ByRef parameter, `alias` points to the caller's variable.
struct Slot {
  Value value;
  Value* alias = nullptr;

  Value& Get() { return alias != nullptr ? *alias : value; }
};

// The state of one method call.
struct Frame {
  std::deque<Slot> slots;  // a deque does not move its elements, to which ByRef parameters point
  Value result;
  std::size_t loop = 0;  // the number of the loop that Exit or Continue refers to
};

// Releases the frames of all calls that began in its scope. Frames are on the heap, because recovery from a crash in a
// delegate jumps past the calls in progress, so those calls cannot release their own frames.
class FrameGuard {
 public:
  FrameGuard();
  FrameGuard(const FrameGuard&) = delete;
  FrameGuard& operator=(const FrameGuard&) = delete;
  ~FrameGuard();

  // Begins a call. Throws XojoException if calls are nested too deeply.
  static Frame& Begin();

 private:
  std::size_t count_;
};

using Load = std::function<Value(Frame&)>;

// A method of the script, or a built-in method of the host.
struct Function {
  std::string owner;  // the owner of a shared method, such as "StdOut"
  Signature signature;
  Position at;  // line 0 marks a function of the host
  std::function<Value(const std::vector<Argument>&)> call;
  std::list<std::string> defaults = {};  // default values; the signature points to them
};

// A compiled expression. It may point into the interpreter, which must outlive it.
struct Code : Operand {
  Position at = {};
  Load load = {};
  std::function<Value&(Frame&)> variable = {};           // null if the expression is not a variable
  std::function<void(Frame&, const Value&)> store = {};  // null if the expression cannot be assigned to
  std::vector<const Function*> functions = {};           // the overloads that AddressOf names
  std::string text = {};                                 // the name of the variable or method
  bool isAssigned = false;                               // whether loading the expression performs the assignment

  // Makes the expression a variable.
  void PlaceIn(std::function<Value&(Frame&)> place);
};

// Returns code that computes a value.
Code MakeCode(const Type& type, Position at, Load load);
Code MakeConstant(Operand operand, Position at);

// Returns code that can be neither assigned to nor passed ByRef.
Code WithoutVariable(Code code);

// Where execution continues after a statement.
enum class Flow { kNext, kExit, kContinue, kReturn };

using Action = std::function<Flow(Frame&)>;
using Condition = std::function<bool(Frame&)>;

struct Step {
  Position at;
  Action run;
};
using Steps = std::vector<Step>;

// Runs statements in order. An exception gets the line number of the innermost statement that raised it.
Flow Run(const Steps& steps, Frame& frame);

// Adds an article to a noun for a message: "an Int32".
std::string WithArticle(const std::string& noun);

// Describes an expression for a message: the name of its type, "Nil", "no value", or text such as "AddressOf Compare".
std::string NameOf(const Code& code);

// Returns a hint on how to convert an expression to a type, such as "; convert it with ToString"; empty if there is
// none.
std::string HintFor(const Code& code, const Type& wanted);

// Throws ScriptError for a member that Xojo has but this host does not support.
void RejectUnsupportedMember(std::string_view type, std::string_view member, Position at);

}  // namespace host
