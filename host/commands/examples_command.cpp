// xojo-host examples: runs the Xojo code in pages of the documentation and compares what it prints with what the pages
// show, so that no example can become wrong unnoticed.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "commands/commands.h"
#include "commands/markdown.h"
#include "core/host.h"
#include "declarations/catalogue.h"
#include "language/interpreter.h"
#include "services/plugin_library.h"

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

// What a process of its own does, whose standard output goes to the file: a new program, which ends when the programs
// that it has started have ended. Answers its exit status.
int RunInThisProcess(const std::string& plugin, const std::string& code, std::FILE* output) {
  if (::dup2(::fileno(output), STDOUT_FILENO) < 0) return 1;
  std::cout << std::unitbuf;  // in order with what other programs print
  try {
    LoadPlugin(plugin);
    const Catalogue catalogue(Host::Current());
    Interpreter(catalogue, std::cout).RunScript(code);
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
  }
  while (::waitpid(-1, nullptr, 0) > 0) continue;
  const ReferenceReport references = ReportReferences();
  if (!references.IsBalanced()) std::cout << DescribeReferences(references);
  return 0;
}

// What the code prints. Wrong code, an end by a signal and references that are left are shown as output too.
std::string Run(const std::string& plugin, const std::string& code) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(std::tmpfile(), std::fclose);
  std::cout.flush();
  const pid_t child = output ? ::fork() : -1;
  if (child < 0) throw std::runtime_error("no process can be started");
  if (child == 0) ::_exit(RunInThisProcess(plugin, code, output.get()));
  int status = 0;
  ::waitpid(child, &status, 0);
  std::string text;
  char buffer[4096];
  std::rewind(output.get());
  while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, output.get())) text.append(buffer, count);
  return status == 0 ? text : text + "(ended with status " + std::to_string(status) + ")\n";
}

// Whether all of a page's examples print what it shows. Updating makes it so.
bool CheckPage(const std::string& plugin, const std::string& file, bool update, std::size_t& count) {
  std::vector<std::string> page = ReadPage(file);
  bool isRight = true;
  for (std::size_t from = 0;;) {
    Example example = FindExample(page, from);
    if (example.code > page.size()) break;
    ++count;
    const std::string shown = Join(page, example.output, example.outputEnd);
    const std::string printed = Run(plugin, Join(page, example.code, example.codeEnd));
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
