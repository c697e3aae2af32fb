// xojo-host examples: runs the Xojo code in pages of the documentation and compares what it prints with what the pages
// show, so that no example can become wrong unnoticed.
#include <iostream>
#include <stdexcept>

#include "commands/commands.h"
#include "commands/page_examples.h"
#include "core/child_output.h"
#include "core/files.h"

namespace host {

namespace {

constexpr std::string_view kNothing = "nothing happens";

// The methods come last, so that the line numbers of error messages are those of the block.
ChildOutput Run(const std::string& plugin, const Example& example, const std::string& end) {
  return RunInChild(
      [&] { return RunScript(plugin, "", example.code + end + '\n' + example.methods, false, std::cout); });
}

// What a block prints. Wrong code, an end by a signal and leaked references show in it too.
std::string OutputOfBlock(const std::string& plugin, const Example& example) {
  ChildOutput output = Run(plugin, example, "");
  if (output.status != 0) output.text += "(ended with status " + std::to_string(output.status) + ")\n";
  return output.text;
}

// A result as a table shows it: on one line, and of an exception the class and the message.
std::string AsCell(const std::string& text) {
  if (text.empty()) return std::string(kNothing);
  return text.substr(0, std::min(text.find(" (error "), text.find('\n')));
}

// The last piece of code is a value to show, unless the row shows the effect of a statement.
std::string ResultOfRow(const std::string& plugin, const Example& example, const std::string& shown) {
  std::string value = AsCell(Run(plugin, example, "Var shown As Variant = " + example.last + "\nPrint shown").text);
  if (value == shown) return value;
  std::string effect = AsCell(Run(plugin, example, example.last).text);
  return effect == shown ? effect : value;
}

// Whether all of a page's examples print what it shows. Updating makes it so.
bool CheckPage(const std::string& plugin, const std::string& file, bool update, std::size_t& count) {
  std::string page = ReadFile(file);
  const std::vector<Example> examples = ReadExamples(page);
  bool isRight = true;
  // From the last to the first: a replacement does not move what comes before it.
  for (auto it = examples.rbegin(); it != examples.rend(); ++it) {
    const Example& example = *it;
    const std::string shown = page.substr(example.begin, example.end - example.begin);
    const std::string printed = example.IsRow() ? ResultOfRow(plugin, example, shown) : OutputOfBlock(plugin, example);
    if (printed == shown) continue;
    isRight = false;
    std::cerr << file << ":" << example.line << ": prints\n" << printed << "\nand not\n" << shown << '\n';
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
