// Compiled Xojo: expressions and statements as functions, with the types that they were compiled with.
#pragma once

#include <deque>
#include <functional>
#include <list>
#include <string>
#include <vector>

#include "declarations/conversion.h"
#include "declarations/errors.h"
#include "declarations/native_call.h"

namespace host {

// A local variable; of a ByRef parameter the caller's.
struct Slot {
  Value value;
  Value* alias = nullptr;

  Value& Get() { return alias != nullptr ? *alias : value; }
};

// What one call of a method works on.
struct Frame {
  std::deque<Slot> slots;  // grows in place: ByRef parameters point into it
  Value result;
  std::size_t loop = 0;  // the loop that Exit or Continue is for
};

// Releases on every way out the frames of calls that have begun in its scope. They lie on the heap: a native function
// that survives a crash in a delegate abandons the frames of the delegate's calls.
class FrameGuard {
 public:
  FrameGuard();
  FrameGuard(const FrameGuard&) = delete;
  FrameGuard& operator=(const FrameGuard&) = delete;
  ~FrameGuard();

  // Begins a call. Throws XojoException where calls are nested too deeply.
  static Frame& Begin();

 private:
  std::size_t count_;
};

using Load = std::function<Value(Frame&)>;

// A method of the script, or one that only the host can provide.
struct Function {
  std::string owner;  // of a shared one: "StdOut"
  Signature signature;
  Position at;  // line 0: the host's own
  std::function<Value(const std::vector<Argument>&)> call;
  std::list<std::string> defaults = {};  // the default values that the signature points at
};

// A compiled expression. What its parts point at lives as long as the interpreter.
struct Code : Operand {
  Position at = {};
  Load load = {};
  std::function<Value&(Frame&)> variable = {};           // null: not a variable
  std::function<void(Frame&, const Value&)> store = {};  // null: cannot be assigned
  std::vector<const Function*> functions = {};           // of AddressOf
  std::string text = {};                                 // the name, for messages
  bool isAssigned = false;                               // loading it assigns what was to be assigned
};

// How a statement ends.
enum class Flow { kNext, kExit, kContinue, kReturn };

struct Step {
  Position at;
  std::function<Flow(Frame&)> run;
};
using Steps = std::vector<Step>;

// Runs statements in order. Exceptions that pass get the line of the innermost statement.
Flow Run(const Steps& steps, Frame& frame);

// "an Int32": a type or a name in a message.
std::string WithArticle(const std::string& noun);

// What an expression is, for messages: the name of its type, "Nil", "no value" or "AddressOf Compare".
std::string NameOf(const Code& code);

// "; convert it with ToString": what would make an expression suit a type; empty if nothing is known.
std::string HintFor(const Code& code, const Type& wanted);

}  // namespace host
