// xojo-host run and repl: Xojo code as a whole, or line by line.
#include <histedit.h>
#include <sys/wait.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "commands/commands.h"
#include "core/host.h"
#include "declarations/catalogue.h"
#include "language/interpreter.h"
#include "language/lexer.h"
#include "services/plugin_library.h"

namespace host {

namespace {

// Programs that have been started and have ended are forgotten by the system when their status is taken.
void TakeStatuses(int options) {
  while (::waitpid(-1, nullptr, options) > 0) continue;
}

// The variables of a script are gone before its references are reported.
template <class Use>
int WithInterpreter(const std::string& plugin, std::ostream& errors, Use use) {
  LoadPlugin(plugin);
  const Catalogue catalogue(Host::Current());
  bool hasFailed = false;
  try {
    Interpreter interpreter(catalogue, std::cout);
    use(interpreter);
  } catch (const std::exception& error) {
    hasFailed = true;
    errors << "xojo-host: " << error.what() << '\n';
  }
  const ReferenceReport references = ReportReferences();
  if (!references.IsBalanced()) errors << DescribeReferences(references);
  return references.IsBalanced() && !hasFailed ? 0 : 1;
}

// Runs lines as they come, continued ones when they are complete.
class LineRunner {
 public:
  explicit LineRunner(Interpreter& interpreter) : interpreter_(interpreter) {}

  // Whether another line belongs to what has been given.
  bool IsContinued() const { return !pending_.empty(); }

  void Drop() { pending_.clear(); }

  void Take(const std::string& line) {
    pending_ += line + '\n';
    const std::vector<ScriptLine> lines = SplitIntoLines(pending_);
    if (lines.back().isContinued) return;
    pending_.clear();
    try {
      interpreter_.RunLine(lines.back().text);
    } catch (const std::exception& error) {
      std::cout << error.what() << '\n';
    }
    TakeStatuses(WNOHANG);
  }

 private:
  Interpreter& interpreter_;
  std::string pending_;
};

// The line editor takes characters beyond ASCII in a UTF-8 locale only; numbers keep their point.
void SetCharacterType() {
  if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
}

// What the line editor's callbacks show and tell; there is one line editor.
const char* gPrompt = "> ";
bool gIsLineDropped = false;

// A line editor with history for a terminal.
class LineEditor {
 public:
  LineEditor() {
    HistEvent event;
    history(history_.get(), &event, H_SETSIZE, 1000);
    el_set(editor_.get(), EL_EDITOR, "emacs");
    el_set(editor_.get(), EL_HIST, history, history_.get());
    el_set(
        editor_.get(), EL_PROMPT, +[](EditLine*) { return const_cast<char*>(gPrompt); });
    // The terminal is put back before a signal ends or stops the program. While a line is edited, Control-C is a key.
    el_set(editor_.get(), EL_SIGNAL, 1);
    el_set(editor_.get(), EL_SETTY, "-d", "-isig", nullptr);
    el_set(
        editor_.get(), EL_ADDFN, "drop-line", "Drop the line", +[](EditLine*, int) {
          gIsLineDropped = true;
          return static_cast<unsigned char>(CC_NEWLINE);
        });
    el_set(editor_.get(), EL_BIND, "^C", "drop-line", nullptr);
  }

  // Reads a line; nothing at the end of the input.
  std::optional<std::string> Read() {
    int length = 0;
    gIsLineDropped = false;
    const char* const text = el_gets(editor_.get(), &length);
    if (gIsLineDropped) std::cout << "^C\n" << std::flush;
    if (gIsLineDropped) return "";
    if (text == nullptr || length <= 0) return std::nullopt;
    HistEvent event;
    history(history_.get(), &event, H_ENTER, text);
    return std::string(text, static_cast<std::size_t>(length - (text[length - 1] == '\n' ? 1 : 0)));
  }

 private:
  std::unique_ptr<EditLine, decltype(&el_end)> editor_{el_init("xojo-host", stdin, stdout, stderr), el_end};
  std::unique_ptr<History, decltype(&history_end)> history_{history_init(), history_end};
};

}  // namespace

int RunScript(const std::string& plugin, const std::string& script, bool show, std::ostream& errors) {
  // What the script prints comes in order with what programs print that it starts; it ends when they have ended.
  std::cout << std::unitbuf;
  const int status =
      WithInterpreter(plugin, errors, [&](Interpreter& interpreter) { interpreter.RunScript(script, show); });
  TakeStatuses(0);
  return status;
}

int RunRepl(const std::string& plugin) {
  return WithInterpreter(plugin, std::cerr, [](Interpreter& interpreter) {
    LineRunner runner(interpreter);
    std::string line;
    if (isatty(STDIN_FILENO) == 0) {
      while (std::getline(std::cin, line)) runner.Take(line);
      return;
    }
    std::cout << "Xojo code, a line at a time; Control-C drops a line, Control-D ends.\n";
    SetCharacterType();
    LineEditor editor;
    while (const auto entered = editor.Read()) {
      if (gIsLineDropped)
        runner.Drop();
      else
        runner.Take(*entered);
      gPrompt = runner.IsContinued() ? "_ " : "> ";
    }
    std::cout << '\n';
  });
}

}  // namespace host
