// xojo-host examples: runs the Xojo code in documentation pages and compares its output with the output that the pages
// show.
#include <iostream>
#include <stdexcept>

#include "commands/commands.h"
#include "commands/page_examples.h"
#include "core/child_output.h"
#include "core/files.h"

namespace host {

namespace {

// Runs the example's code, followed by `end`. The methods come last, so that the line numbers in error messages match
// those of the block.
ChildOutput Run(const std::string& plugin, const Example& example, const std::string& end) {
  return RunInChild(
      [&] { return RunScript(plugin, "", example.code + end + '\n' + example.methods, false, std::cout); });
}

// Returns a block's output, including error messages, leaked references and a nonzero exit status.
std::string OutputOfBlock(const std::string& plugin, const Example& example) {
  ChildOutput output = Run(plugin, example, "");
  if (output.status != 0) output.text += "(ended with status " + std::to_string(output.status) + ")\n";
  return output.text;
}

// Formats a result for a table cell: the first line of the output or, for an exception, its class and message.
std::string AsCell(const std::string& text) {
  if (text.empty()) return "nothing happens";
  return text.substr(0, std::min(text.find(" (error "), text.find('\n')));
}

// Runs the row's last piece of code as an expression. If the page shows a different result, also tries the code as a
// statement.
std::string ResultOfRow(const std::string& plugin, const Example& example, const std::string& shown) {
  std::string value = AsCell(Run(plugin, example, "Var shown As Variant = " + example.last + "\nPrint shown").text);
  if (value == shown) return value;
  std::string effect = AsCell(Run(plugin, example, example.last).text);
  return effect == shown ? effect : value;
}

// Runs a page's examples and adds their number to `count`. Returns whether all of them print what the page shows; with
// `update`, corrects the page instead and returns true.
bool CheckPage(const std::string& plugin, const std::string& file, bool update, std::size_t& count) {
  std::string page = ReadFile(file);
  const std::vector<Example> examples = ReadExamples(page);
  bool isRight = true;
  // Go from last to first, because a replacement moves everything after it.
  for (auto it = examples.rbegin(); it != examples.rend(); ++it) {
    const Example& example = *it;
    const std::string shown = page.substr(example.begin, example.end - example.begin);
    const std::string printed = example.IsRow() ? ResultOfRow(plugin, example, shown) : OutputOfBlock(plugin, example);
    if (printed == shown) continue;
    isRight = false;
    std::cerr << file << ":" << example.line << ": prints\n" << printed << "\nbut the page shows\n" << shown << '\n';
    page.replace(example.begin, example.end - example.begin, printed);
  }
  count += examples.size();
  if (update && !isRight) WriteFile(file, page);
  return isRight || update;
}

}  // namespace

int RunExamples(const std::string& plugin, const std::vector<std::string>& files, bool update) {
  bool isRight = true;
  std::size_t count = 0;
  for (const std::string& file : files) try {
      isRight = CheckPage(plugin, file, update, count) && isRight;
    } catch (const std::exception& error) {
      std::cerr << file << ": " << error.what() << '\n';
      isRight = false;
    }
  std::cout << count << " examples in " << files.size() << " pages\n";
  return isRight && count > 0 ? 0 : 1;
}

}  // namespace host
