// xojo-host examples: runs the Xojo code in pages of the documentation and compares what it prints with what the pages
// show, so that no example can become wrong unnoticed.
#include <algorithm>
#include <iostream>
#include <stdexcept>

#include "commands/commands.h"
#include "core/child_output.h"
#include "core/files.h"

namespace host {

namespace {

constexpr std::string_view kCodeFence = "```xojo\n";
constexpr std::string_view kOutputFence = "```text\n";
constexpr std::string_view kFence = "```\n";

// A block of a page: what stands between its fences.
struct Block {
  std::size_t begin;
  std::size_t end;

  std::string In(const std::string& page) const { return page.substr(begin, end - begin); }
};

Block BlockAfter(const std::string& page, std::size_t begin) {
  return {begin, std::min(page.find(kFence, begin), page.size())};
}

// What the code prints. Wrong code, an end by a signal and leaked references show in it too.
std::string Run(const std::string& plugin, const std::string& code) {
  ChildOutput output = RunInChild([&] { return RunScript(plugin, "", code, false, std::cout); });
  if (output.status != 0) output.text += "(ended with status " + std::to_string(output.status) + ")\n";
  return output.text;
}

// Whether all of a page's examples print what it shows. Updating makes it so. Code whose output is not shown cannot be
// checked and is an error.
bool CheckPage(const std::string& plugin, const std::string& file, bool update, std::size_t& count) {
  std::string page = ReadFile(file);
  bool isRight = true;
  for (std::size_t at = 0; (at = page.find(kCodeFence, at)) != std::string::npos;) {
    const std::string line =
        std::to_string(std::count(page.begin(), page.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1);
    const Block code = BlockAfter(page, at + kCodeFence.size());
    const std::size_t next = page.find_first_not_of('\n', code.end + kFence.size());
    if (next == std::string::npos || page.compare(next, kOutputFence.size(), kOutputFence) != 0)
      throw std::runtime_error("line " + line + ": no block of text shows what this prints");
    const Block output = BlockAfter(page, next + kOutputFence.size());
    const std::string printed = Run(plugin, code.In(page));
    if (printed != output.In(page)) {
      isRight = false;
      std::cerr << file << ":" << line << ": prints\n" << printed << "and not\n" << output.In(page);
      page.replace(output.begin, output.end - output.begin, printed);
    }
    at = output.begin;
    ++count;
  }
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
