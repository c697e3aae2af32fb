// Compiles a syntax tree: looks up names, checks types and resolves overloads. Throws ScriptError for code that Xojo
// rejects.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "declarations/calls.h"
#include "declarations/catalogue.h"
#include "language/code.h"
#include "language/syntax.h"

namespace host {

// The state that all methods of a script share.
struct Program {
  const Catalogue& catalogue;
  std::vector<std::unique_ptr<Function>> functions = {};
};

// A method that a call may resolve to.
struct Candidate {
  const Signature* signature;
  std::function<Value(const std::vector<Argument>&)> call;
};

// HasSameParameters compares the parameter types. IsSameType also compares the result types.
bool IsSameType(const Signature& a, const Signature& b);
bool HasSameParameters(const Signature& a, const Signature& b);

// Returns code that makes an array with these elements.
Load LoadArray(const Type& element, std::vector<Load> elements);

// Compiles the statements of one method, or the script's statements that belong to no method.
class Compiler {
 public:
  explicit Compiler(Program& program) : program_(program) {}

  Steps Compile(const Block& block);
  Step Compile(const Statement& statement);

  // Declare adds a method to the program without its body, so that methods can call each other. CompileBody compiles
  // the body.
  static Function& Declare(Program& program, const FunctionDeclaration& declaration, Position at);
  static void CompileBody(Program& program, const FunctionDeclaration& declaration, Function& function);

  // VariableCount returns the number of variables in scope. Forget drops all variables after the first `variableCount`;
  // it is called when a block ends or a source does not compile. BeginSource begins another source, which may declare
  // the current variables again; it closes the blocks that the previous source left open if it did not compile.
  std::size_t VariableCount() const { return variables_.size(); }
  void Forget(std::size_t variableCount) { variables_.resize(variableCount); }
  void BeginSource();
  std::size_t SlotCount() const { return slotCount_; }
  std::vector<std::string_view> Names() const;

 private:
  struct Loop {
    std::size_t number;
    std::string word;
    std::string variable;
  };

  // Runs the body of a loop once. Returns where execution continues after the loop, or nullopt if the loop continues.
  using Iteration = std::function<std::optional<Flow>(Frame&)>;

  // Statements.
  Steps CompileScope(const Block& block);
  Action CompileContent(const Declaration& declaration);
  Action CompileContent(const ConstantDeclaration& declaration);
  Action CompileContent(const Assignment& assignment);
  Action CompileContent(const CallStatement& statement);
  Action CompileContent(const IfStatement& statement);
  Action CompileContent(const SelectStatement& statement);
  Action CompileContent(const ForStatement& statement);
  Action CompileContent(const ForEachStatement& statement);
  Action CompileContent(const LoopStatement& statement);
  Action CompileContent(const JumpStatement& statement);
  Action CompileContent(const TryStatement& statement);
  Action CompileContent(const RaiseStatement& statement);
  Action CompileContent(const ReturnStatement& statement);
  Action CompileContent(const FunctionDeclaration& declaration);
  Action CompileContent(const DeclareStatement& statement);
  Action CompileForCompiler(const IfStatement& statement);
  Load CompileInitial(const Declaration& declaration, const DeclaredName& name, const Type& type);
  Condition CompileCondition(const Expression& expression);
  Code CompileCounter(const Expression& counter, const std::optional<TypeName>& type);
  Iteration CompileLoop(const Block& block, const std::string& word, const std::string& variable);

  // Names.
  // AddVariable throws if the name is already declared. Shadow does not check the name: it adds hidden variables, whose
  // names contain a space, and the variable of a Catch without a type.
  Code& AddVariable(const std::string& name, const Type& type, Position at = {});
  Code& Shadow(const std::string& name, const Type& type);
  Type FindType(const TypeName& type) const;
  const Code* FindVariable(std::string_view name) const;

  // Expressions. `assigned` is the value that the statement assigns; null if the statement is not an assignment.
  Code CompileExpression(const Expression& expression, const Code* assigned = nullptr);
  std::vector<Code> CompileAll(const std::vector<Expression>& expressions);
  Code CompileLiteral(const Expression& expression);
  Code CompileNew(const Expression& expression);
  Code CompileAddressOf(const Expression& expression);
  Code CompileIsA(const Expression& expression);
  Code CompileNegative(const Expression& expression);
  Code CompileNot(const Expression& expression);
  Code CompileChain(const Expression& expression);
  Code CompileIf(const Expression& expression);
  Code CompileConvert(const Expression& expression);
  Code CompileArray(const Expression& expression);

  // Names and members.
  Code CompileName(const Expression& expression, const Code* assigned);
  Code CompileMember(const Expression& expression, const Code* assigned);
  std::optional<Code> CompileShared(const std::string& owner, const Expression& expression, const Code* assigned);
  Code CompileMemberOf(const Code& object, const Expression& expression, const Code* assigned);
  std::optional<Code> CompileClassMember(const Code& object, const Expression& expression, const Code* assigned);
  std::optional<Code> CompileArrayMember(const Code& array, const Expression& expression);
  Code CompileSort(const Code& array, const Expression& expression);
  Code CompileElement(const Code& array, const Expression& expression);
  Code CompileInvoke(const Code& object, const Expression& expression);
  Code CompileCast(const Type& type, const Expression& expression);
  // Compiles a property or method that the plug-in declares for an owner. `object` is null for members of
  // modules and shared members.
  std::optional<Code> CompileDeclared(OwnerKind kind, std::string_view owner, const Expression& expression,
                                      const Code* object, const Code* assigned);
  // Compiles a property, or an element of an array property.
  Code PropertyOrElement(Code property, const Expression& expression);

  // Makes the method for a declaration, but does not compile the body.
  std::unique_ptr<Function> MakeFunction(const FunctionDeclaration& declaration) const;

  // Calls.
  std::vector<Candidate> FindMethods(const MethodQuery& query) const;
  std::optional<Code> CompileCall(MethodQuery query, const Expression& expression, const Code* object,
                                  const Code* assigned);
  Code Call(const std::string& name, const std::vector<Candidate>& candidates, std::vector<Code> arguments,
            const Code* self, bool isExtending, Position at) const;

  // Conversions. `what` names the receiver of the value in messages.
  std::optional<std::pair<int, Code>> TryConvert(const Code& code, const Type& type) const;
  // Collects the arguments from index `first` onward into an array for a ParamArray parameter.
  std::optional<std::pair<int, Code>> TryCollect(const std::vector<Code>& arguments, std::size_t first,
                                                 const Type& array) const;
  Code Convert(const Code& code, const Type& type, const std::string& what) const;

  Program& program_;
  std::vector<Code> variables_;
  std::vector<Loop> loops_;
  std::vector<std::unique_ptr<Function>> declared_;  // functions from Declare statements
  std::size_t openBlocks_ = 0;
  std::size_t slotCount_ = 0;
  std::size_t loopCount_ = 0;
  std::size_t redeclarableCount_ = 0;
  const Signature* signature_ = nullptr;  // of the current method; null outside a method
};

}  // namespace host
