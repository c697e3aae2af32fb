// xojo-host examples: runs the Xojo code in pages of the documentation and compares what it prints with what the pages
// show, so that no example can become wrong unnoticed.
#include <clocale>
#include <iostream>
#include <sstream>

#include "commands/commands.h"
#include "commands/markdown.h"
#include "core/host.h"
#include "core/plugin_library.h"
#include "language/catalogue.h"
#include "language/interpreter.h"

namespace host {

namespace {

// A block of code and the block behind it that shows what it prints, as line numbers from 0: begin of each, and the
// fence that ends it.
struct Example {
  std::size_t code;
  std::size_t codeEnd;
  std::size_t output;
  std::size_t outputEnd;
};

std::size_t FindFence(const std::vector<std::string>& page, std::size_t from, const std::string& fence) {
  while (from < page.size() && page[from] != fence) ++from;
  return from;
}

// The first example from a line on; its code begins behind the page if there is none. Code whose output is not shown
// cannot be checked and is an error.
Example FindExample(const std::vector<std::string>& page, std::size_t from) {
  Example example{};
  example.code = FindFence(page, from, "```xojo") + 1;
  if (example.code > page.size()) return example;
  example.codeEnd = FindFence(page, example.code, "```");
  std::size_t next = example.codeEnd + 1;
  while (next < page.size() && page[next].empty()) ++next;
  if (next >= page.size() || page[next] != "```text")
    throw std::runtime_error("line " + std::to_string(example.code) + ": no block of text shows what this prints");
  example.output = next + 1;
  example.outputEnd = FindFence(page, example.output, "```");
  return example;
}

std::string Join(const std::vector<std::string>& page, std::size_t begin, std::size_t end) {
  std::string text;
  for (; begin < end; ++begin) text += page[begin] + '\n';
  return text;
}

// Every example stands for itself, as in a new program.
std::string Run(const Catalogue& catalogue, const std::string& code) {
  std::ostringstream out;
  std::setlocale(LC_ALL, "C");
  Interpreter(catalogue, out).RunScript(code);
  return out.str();
}

// Whether all of a page's examples print what it shows. Updating makes it so.
bool CheckPage(const Catalogue& catalogue, const std::string& file, bool update, std::size_t& count) {
  std::vector<std::string> page = ReadPage(file);
  bool isRight = true;
  for (std::size_t from = 0;;) {
    Example example = FindExample(page, from);
    if (example.code > page.size()) break;
    ++count;
    const std::string shown = Join(page, example.output, example.outputEnd);
    const std::string printed = Run(catalogue, Join(page, example.code, example.codeEnd));
    if (printed != shown) {
      isRight = false;
      std::cerr << file << ":" << example.code << ": prints\n" << printed << "and not\n" << shown;
      const std::vector<std::string> lines = SplitLines(printed);
      ReplaceLines(page, example.output, example.outputEnd, lines);
      example.outputEnd = example.output + lines.size();
    }
    from = example.outputEnd;
  }
  if (update && !isRight) WritePage(file, page);
  return isRight || update;
}

}  // namespace

int RunExamples(const std::string& plugin, const std::vector<std::string>& files, bool update) {
  LoadPlugin(plugin);
  const Catalogue catalogue(Host::Current());
  bool isRight = true;
  std::size_t count = 0;
  for (const std::string& file : files) try {
      isRight = CheckPage(catalogue, file, update, count) && isRight;
    } catch (const std::exception& error) {
      std::cerr << file << ": " << error.what() << '\n';
      isRight = false;
    }
  const Ledger ledger = TakeLedger();
  if (!ledger.IsBalanced()) std::cerr << DescribeLedger(ledger);
  std::cout << count << " examples in " << files.size() << " pages\n";
  return isRight && ledger.IsBalanced() && count > 0 ? 0 : 1;
}

}  // namespace host
