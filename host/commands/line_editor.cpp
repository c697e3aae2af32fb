#include "commands/line_editor.h"

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <set>

#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

// The line editor's callbacks have no parameter for this state.
const char* gPrompt = "";
bool gIsDropped = false;
const Interpreter* gInterpreter = nullptr;

unsigned char DropLine(EditLine*, int) {
  gIsDropped = true;
  return CC_NEWLINE;
}

// Returns the part of a name that precedes the cursor.
std::string NameBefore(const LineInfo& line) {
  const char* start = line.cursor;
  const auto isInName = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; };
  while (start > line.buffer && isInName(start[-1])) --start;
  return {start, line.cursor};
}

// Extends the name before the cursor to the longest prefix that all matching names share. Lists the matching names if
// the prefix is no longer than the name.
unsigned char CompleteName(EditLine* editor, int) {
  const std::string prefix = NameBefore(*el_line(editor));
  std::set<std::string> candidates;
  for (const std::string_view name : gInterpreter->Names())
    if (!prefix.empty() && zkt::IsSameName(name.substr(0, prefix.size()), prefix)) candidates.emplace(name);
  if (candidates.empty()) return CC_ERROR;
  std::string common = *candidates.begin();
  for (const std::string& candidate : candidates)
    while (!zkt::IsSameName(std::string_view(candidate).substr(0, common.size()), common)) common.pop_back();
  if (candidates.size() > 1 && common.size() == prefix.size()) {
    std::cout << '\n';
    for (const std::string& candidate : candidates) std::cout << candidate << "  ";
    std::cout << '\n' << std::flush;
    return CC_REDISPLAY;
  }
  el_deletestr(editor, static_cast<int>(prefix.size()));
  return el_insertstr(editor, common.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
}

// Editing non-ASCII characters requires a UTF-8 locale. The other categories stay unchanged, so numbers are still
// written with a decimal point.
EditLine* MakeEditor() {
  if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
  return el_init("xojo-host", stdin, stdout, stderr);
}

}  // namespace

LineEditor::LineEditor(const Interpreter& interpreter)
    : editor_(MakeEditor(), el_end), history_(history_init(), history_end) {
  gInterpreter = &interpreter;
  HistEvent event;
  history(history_.get(), &event, H_SETSIZE, 1000);
  el_set(editor_.get(), EL_EDITOR, "emacs");
  el_set(editor_.get(), EL_HIST, history, history_.get());
  el_set(
      editor_.get(), EL_PROMPT, +[](EditLine*) { return const_cast<char*>(gPrompt); });
  // Restore the terminal before a signal terminates or suspends the program. Treat Control-C as an ordinary key while
  // the user edits a line.
  el_set(editor_.get(), EL_SIGNAL, 1);
  el_set(editor_.get(), EL_SETTY, "-d", "-isig", nullptr);
  el_set(editor_.get(), EL_ADDFN, "drop-line", "Drop the line", DropLine);
  el_set(editor_.get(), EL_BIND, "^C", "drop-line", nullptr);
  el_set(editor_.get(), EL_ADDFN, "complete-name", "Complete the name", CompleteName);
  el_set(editor_.get(), EL_BIND, "^I", "complete-name", nullptr);
}

bool LineEditor::Read(const char* prompt, std::string& line) {
  gPrompt = prompt;
  gIsDropped = false;
  int length = 0;
  const char* const text = el_gets(editor_.get(), &length);
  if (gIsDropped) {
    std::cout << "^C\n" << std::flush;
    line.clear();
    return true;
  }
  if (text == nullptr || length <= 0) return false;
  HistEvent event;
  history(history_.get(), &event, H_ENTER, text);
  line.assign(text, static_cast<std::size_t>(length - (text[length - 1] == '\n' ? 1 : 0)));
  return true;
}

bool LineEditor::IsDropped() const { return gIsDropped; }

}  // namespace host
