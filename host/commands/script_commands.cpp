// xojo-host run and repl: run a Xojo script as a whole, or line by line.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include "commands/commands.h"
#include "commands/line_editor.h"
#include "core/host.h"
#include "declarations/catalogue.h"
#include "language/interpreter.h"
#include "services/plugin_library.h"

namespace host {

namespace {

// Reaps child processes. With WNOHANG, reaps only those that have ended.
void TakeStatuses(int options) {
  while (::waitpid(-1, nullptr, options) > 0) continue;
}

// Unless LOCPATH is set, points it to the locales that the build creates in a folder next to the program's folder.
void FindLocales() {
  const std::filesystem::path folder =
      std::filesystem::canonical("/proc/self/exe").parent_path().parent_path() / "locales";
  if (std::filesystem::is_directory(folder)) ::setenv("LOCPATH", folder.c_str(), 0);
}

// Runs `use` with an interpreter, destroys the interpreter and the script's variables, and then reports leaked
// references.
template <class Use>
int WithInterpreter(const std::string& plugin, std::ostream& errors, Use use) {
  FindLocales();
  if (!plugin.empty()) LoadPlugin(plugin);
  const Catalogue catalogue(Host::Current());
  int status = 0;
  {
    Interpreter interpreter(catalogue, std::cout);
    status = use(interpreter, catalogue);
  }
  const ReferenceReport references = ReportReferences();
  if (!references.IsBalanced()) errors << DescribeReferences(references);
  return references.IsBalanced() ? status : 1;
}

// Runs each line as it arrives. Blocks and continued lines run when they are complete.
class LineRunner {
 public:
  explicit LineRunner(Interpreter& interpreter) : interpreter_(interpreter) {}

  // Whether the next line continues the pending one.
  bool IsContinued() const { return !pending_.empty(); }

  void Drop() { pending_.clear(); }

  void Take(const std::string& line) {
    pending_ += line + '\n';
    try {
      interpreter_.Run(pending_);
    } catch (const IncompleteError&) {
      return;
    } catch (const ScriptError& error) {
      std::cout << error.what() << '\n';
    } catch (const std::exception& error) {
      std::cout << error.what() << '\n';
    }
    pending_.clear();
    TakeStatuses(WNOHANG);
  }

 private:
  Interpreter& interpreter_;
  std::string pending_;
};

bool ContainsName(std::string_view name, std::string_view part) {
  for (std::size_t i = 0; i + part.size() <= name.size(); ++i)
    if (zkt::IsSameName(name.substr(i, part.size()), part)) return true;
  return false;
}

// "help" lists the commands, and "help NAME" lists the declarations of methods whose names contain NAME.
void Help(const Catalogue& catalogue, const std::string& name) {
  if (name.empty()) {
    std::cout << "Enter Xojo code; a block runs when it is complete.\n"
                 "  help NAME  show the methods whose names contain NAME\n"
                 "  history    show the lines entered so far\n"
                 "  quit       leave; so does Control-D. Control-C drops a line.\n";
    return;
  }
  for (const auto* const methods : {&catalogue.Methods(), &catalogue.FrameworkMethods()})
    for (const Method& method : *methods)
      if (ContainsName(method.signature.name, name)) std::cout << "  " << DeclarationOf(method) << '\n';
}

// Runs a REPL command. Returns false if the line is not a command.
bool RunCommand(const std::string& line, const Catalogue& catalogue, const std::vector<std::string>& history) {
  if (line == "history") {
    for (const std::string& entered : history) std::cout << "  " << entered << '\n';
    return true;
  }
  if (line != "help" && !line.starts_with("help ")) return false;
  Help(catalogue, line.size() > 5 ? line.substr(5) : "");
  return true;
}

}  // namespace

int RunScript(const std::string& plugin, const std::string& file, const std::string& script, bool show,
              std::ostream& errors) {
  // Without buffering, the output of the script and of the programs that it starts appears in order. RunScript waits
  // for those programs to end.
  std::cout << std::unitbuf;
  const int status = WithInterpreter(plugin, errors, [&](Interpreter& interpreter, const Catalogue&) {
    try {
      interpreter.Run(script, show);
      return 0;
    } catch (const ScriptError& error) {
      errors << Describe(error, file) << '\n';
    } catch (const XojoException& exception) {
      errors << Describe(exception, file) << '\n';
    } catch (const std::exception& error) {
      errors << file << ": " << error.what() << '\n';
    }
    return 1;
  });
  TakeStatuses(0);
  return status;
}

int RunRepl(const std::string& plugin) {
  return WithInterpreter(plugin, std::cerr, [](Interpreter& interpreter, const Catalogue& catalogue) {
    LineRunner runner(interpreter);
    std::vector<std::string> history;
    const bool isTerminal = isatty(STDIN_FILENO) != 0;
    std::optional<LineEditor> editor;
    if (isTerminal) {
      std::cout << "Xojo code; 'help' shows the commands, 'quit' leaves.\n";
      SetCharacterType();
      editor.emplace(interpreter);
    }
    for (;;) {
      std::string line;
      if (editor) {
        const auto entered = editor->Read(runner.IsContinued() ? "_ " : "> ");
        if (!entered) break;
        if (editor->IsDropped()) {
          runner.Drop();
          continue;
        }
        line = *entered;
      } else if (!std::getline(std::cin, line)) {
        break;
      }
      if (line == "quit" && !runner.IsContinued()) break;
      if (runner.IsContinued() || !RunCommand(line, catalogue, history)) runner.Take(line);
      if (!line.empty()) history.push_back(line);
    }
    if (isTerminal) std::cout << '\n';
    return 0;
  });
}

}  // namespace host
