// xojo-host run and repl: run Xojo code as a whole, or line by line.
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

// Reaps programs that have been started and have ended.
void TakeStatuses(int options) {
  while (::waitpid(-1, nullptr, options) > 0) continue;
}

// Releases the variables of a script before its references are reported.
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

// Runs each line as it arrives, and a continued line once it is complete.
class LineRunner {
 public:
  explicit LineRunner(Interpreter& interpreter) : interpreter_(interpreter) {}

  // Whether the next line continues the pending one.
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

// The line editor accepts non-ASCII characters only in a UTF-8 locale. The other categories stay, so numbers keep their
// decimal point.
void SetCharacterType() {
  if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
}

// Shared with the callbacks of the line editor; there is only one line editor.
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
    // Restore the terminal before a signal ends or stops the program. While a line is edited, Control-C is an ordinary
    // key.
    el_set(editor_.get(), EL_SIGNAL, 1);
    el_set(editor_.get(), EL_SETTY, "-d", "-isig", nullptr);
    el_set(
        editor_.get(), EL_ADDFN, "drop-line", "Drop the line", +[](EditLine*, int) {
          gIsLineDropped = true;
          return static_cast<unsigned char>(CC_NEWLINE);
        });
    el_set(editor_.get(), EL_BIND, "^C", "drop-line", nullptr);
  }

  // Reads a line; nothing at the end of input.
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
  // Output is unbuffered, so it stays in order with that of the programs that the script starts. Wait for them before
  // returning.
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
