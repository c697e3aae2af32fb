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

// Runs the code and prints its errors. Returns false if the code is incomplete: more lines must follow.
bool RunComplete(Interpreter& interpreter, const std::string& code) {
  try {
    interpreter.Run(code);
  } catch (const IncompleteError&) {
    return false;
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
  }
  TakeStatuses(WNOHANG);
  return true;
}

bool ContainsName(std::string_view name, std::string_view part) {
  for (std::size_t i = 0; i + part.size() <= name.size(); ++i)
    if (zkt::IsSameName(name.substr(i, part.size()), part)) return true;
  return false;
}

// Runs a REPL command. Returns false if the line is not a command.
bool RunCommand(const std::string& line, const Catalogue& catalogue, const std::vector<std::string>& history) {
  const std::string name = line.starts_with("help ") ? line.substr(5) : "";
  if (line == "history") {
    for (const std::string& entered : history) std::cout << "  " << entered << '\n';
  } else if (!name.empty()) {
    for (const auto* const methods : {&catalogue.Methods(), &catalogue.FrameworkMethods()})
      for (const Method& method : *methods)
        if (ContainsName(method.signature.name, name)) std::cout << "  " << DeclarationOf(method) << '\n';
  } else if (line == "help" || line == "help ") {
    std::cout << "Enter Xojo code; a block runs when it is complete.\n"
                 "  help NAME  show the methods whose names contain NAME\n"
                 "  history    show the lines entered so far\n"
                 "  quit       leave; so does Control-D. Control-C drops a line.\n";
  } else {
    return false;
  }
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
    std::vector<std::string> history;
    std::string pending;  // the lines of an incomplete block
    std::optional<LineEditor> editor;
    if (isatty(STDIN_FILENO) != 0) {
      std::cout << "Xojo code; 'help' shows the commands, 'quit' leaves.\n";
      editor.emplace(interpreter);
    }
    std::string line;
    while (editor ? editor->Read(pending.empty() ? "> " : "_ ", line)
                  : static_cast<bool>(std::getline(std::cin, line))) {
      if (editor && editor->IsDropped()) {
        pending.clear();
        continue;
      }
      if (line == "quit" && pending.empty()) break;
      if (!pending.empty() || !RunCommand(line, catalogue, history)) {
        pending += line + '\n';
        if (RunComplete(interpreter, pending)) pending.clear();
      }
      if (!line.empty()) history.push_back(line);
    }
    if (editor) std::cout << '\n';
    return 0;
  });
}

}  // namespace host
