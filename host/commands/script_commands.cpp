// xojo-host run and repl: Xojo code from a file, or line by line.
#include <histedit.h>
#include <unistd.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>

#include "commands/commands.h"
#include "core/host.h"
#include "core/plugin_library.h"
#include "language/catalogue.h"
#include "language/errors.h"
#include "language/interpreter.h"

namespace host {

namespace {

// The variables of a script are gone before the ledger is closed.
template <class Use>
int WithInterpreter(const std::string& plugin, Use use) {
  LoadPlugin(plugin);
  const Catalogue catalogue(Host::Current());
  {
    Interpreter interpreter(catalogue, std::cout);
    use(interpreter);
  }
  const Ledger ledger = TakeLedger();
  if (!ledger.IsBalanced()) std::cerr << DescribeLedger(ledger);
  return ledger.IsBalanced() ? 0 : 1;
}

void RunAndReport(Interpreter& interpreter, std::string_view line) {
  try {
    interpreter.RunLine(line);
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
  }
}

// A line editor with history for a terminal.
class LineEditor {
 public:
  LineEditor() : editor_(el_init("xojo-host", stdin, stdout, stderr)), history_(history_init()) {
    HistEvent event;
    history(history_.get(), &event, H_SETSIZE, 1000);
    el_set(editor_.get(), EL_EDITOR, "emacs");
    el_set(editor_.get(), EL_HIST, history, history_.get());
    el_set(
        editor_.get(), EL_PROMPT, +[](EditLine*) { return const_cast<char*>("> "); });
  }

  // False at the end of the input.
  bool Read(std::string& line) {
    int length = 0;
    const char* const text = el_gets(editor_.get(), &length);
    if (text == nullptr || length <= 0) return false;
    line.assign(text, static_cast<std::size_t>(length));
    HistEvent event;
    history(history_.get(), &event, H_ENTER, text);
    if (line.ends_with('\n')) line.pop_back();
    return true;
  }

 private:
  struct End {
    void operator()(EditLine* editor) const { el_end(editor); }
    void operator()(History* history) const { history_end(history); }
  };

  std::unique_ptr<EditLine, End> editor_;
  std::unique_ptr<History, End> history_;
};

}  // namespace

int RunScript(const std::string& plugin, const std::string& file) {
  std::ifstream input(file, std::ios::binary);
  const std::string script(std::istreambuf_iterator<char>(input), {});
  return WithInterpreter(plugin, [&](Interpreter& interpreter) { interpreter.RunScript(script); });
}

int RunRepl(const std::string& plugin) {
  return WithInterpreter(plugin, [](Interpreter& interpreter) {
    std::string line;
    if (isatty(STDIN_FILENO) == 0) {
      while (std::getline(std::cin, line)) RunAndReport(interpreter, line);
      return;
    }
    std::cout << "Xojo code, a line at a time; Control-D ends.\n";
    LineEditor editor;
    while (editor.Read(line)) RunAndReport(interpreter, line);
    std::cout << '\n';
  });
}

}  // namespace host
