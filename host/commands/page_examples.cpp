#include "commands/page_examples.h"

#include <algorithm>
#include <regex>
#include <stdexcept>
#include <string_view>

namespace host {

namespace {

constexpr std::string_view kFence = "```";
constexpr std::string_view kHeaderEnd = "| Code | Result |";
constexpr std::string_view kOtherLanguages[] = {"text", "sh", "cpp", "cmake", "json", "diff"};

struct Method {
  std::size_t line;
  std::string name;
  std::string code;
};

// Returns the name of the method that the block declares; empty for a block of statements.
std::string DeclaredName(const std::string& code) {
  static const std::regex declaration(R"((?:\s*'[^\n]*\n)*\s*(?:Function|Sub)\s+(\w+))", std::regex::icase);
  std::smatch match;
  return std::regex_search(code, match, declaration, std::regex_constants::match_continuous) ? match[1].str() : "";
}

class PageReader {
 public:
  explicit PageReader(const std::string& page) : page_(page) {}

  std::vector<Example> Read() {
    while (at_ < page_.size()) {
      const std::string_view line = TakeLine();
      if (line.starts_with(kFence))
        TakeBlock(line.substr(kFence.size()));
      else if (line.ends_with(kHeaderEnd))
        TakeTable();
    }
    CheckCodeIsUsed();
    CheckMethodsAreUsed();
    return std::move(examples_);
  }

 private:
  std::string_view TakeLine() {
    const std::size_t begin = at_;
    const std::size_t end = std::min(page_.find('\n', begin), page_.size());
    at_ = end + 1;
    ++line_;
    return std::string_view(page_).substr(begin, end - begin);
  }

  [[noreturn]] static void Fail(std::size_t line, const std::string& what) {
    throw std::runtime_error("line " + std::to_string(line) + ": " + what);
  }

  void TakeBlock(std::string_view language) {
    const std::size_t line = line_;
    const std::size_t begin = at_;
    std::size_t end = at_;
    while (at_ < page_.size() && TakeLine() != kFence) end = at_;
    if (language == "xojo")
      TakeCode(line, page_.substr(begin, end - begin));
    else if (std::ranges::find(kOtherLanguages, language) == std::end(kOtherLanguages))
      Fail(line, "unknown language '" + std::string(language) + "'; mark Xojo code as xojo");
    else if (language == "text" && !isUsed_)
      TakeOutput(begin, end);
  }

  void TakeCode(std::size_t line, const std::string& code) {
    CheckCodeIsUsed();
    if (const std::string name = DeclaredName(code); !name.empty()) {
      declared_.push_back({line, name, code});
      methods_ += code;
      return;
    }
    code_ = code;
    codeLine_ = line;
    isUsed_ = false;
  }

  void TakeOutput(std::size_t begin, std::size_t end) {
    examples_.push_back({codeLine_, code_, "", methods_, begin, end});
    code_.clear();
    isUsed_ = true;
  }

  void TakeTable() {
    TakeLine();
    while (at_ < page_.size() && page_[at_] == '|') TakeRow();
    isUsed_ = true;
  }

  // The pieces of code in a row are in backquotes. The setup code above the table runs before the code of each row.
  void TakeRow() {
    const std::size_t begin = at_;
    const std::string_view row = TakeLine();
    const std::size_t resultEnd = row.rfind(" |");
    const std::size_t result = row.rfind("| ", resultEnd - 1);
    const std::size_t codeBegin = result == std::string_view::npos ? result : row.rfind("| ", result - 1);
    if (codeBegin == std::string_view::npos) Fail(line_, "expected a cell with code and a cell with its result");
    Example example{line_, code_, "", methods_, begin + result + 2, begin + resultEnd};
    for (std::size_t open = row.find('`', codeBegin); open < result; open = row.find('`', open)) {
      const std::size_t close = row.find('`', open + 1);
      if (close > result) Fail(line_, "this row has unpaired backquotes");
      if (!example.last.empty()) example.code += example.last + '\n';
      example.last = row.substr(open + 1, close - open - 1);
      open = close + 1;
    }
    if (!example.IsRow()) Fail(line_, "this row has no code");
    examples_.push_back(std::move(example));
  }

  void CheckCodeIsUsed() const {
    if (!isUsed_) Fail(codeLine_, "neither a block of text nor a table of results follows this code");
  }

  // Rejects a method that no example and no other method mentions, because it would never run.
  void CheckMethodsAreUsed() const {
    for (const Method& method : declared_) {
      const auto mentions = [&](const std::string& code) { return code.find(method.name) != std::string::npos; };
      if (!std::ranges::any_of(examples_, [&](const Example& e) { return mentions(e.code) || mentions(e.last); }) &&
          !std::ranges::any_of(declared_, [&](const Method& m) { return &m != &method && mentions(m.code); }))
        Fail(method.line, "no example calls this method");
    }
  }

  const std::string& page_;
  std::size_t at_ = 0;
  std::size_t line_ = 0;
  std::vector<Example> examples_;
  std::vector<Method> declared_;
  std::string methods_;  // the code of the methods declared so far
  std::string code_;
  std::size_t codeLine_ = 0;
  bool isUsed_ = true;
};

}  // namespace

std::vector<Example> ReadExamples(const std::string& page) { return PageReader(page).Read(); }

}  // namespace host
