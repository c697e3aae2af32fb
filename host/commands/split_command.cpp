// xojo-host split: splits a real file through the plug-in and shows what came out.
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <span>
#include <stdexcept>

#include "commands/commands.h"
#include "commands/table.h"
#include "core/arrays.h"
#include "core/exceptions.h"
#include "core/host.h"
#include "core/strings.h"
#include "services/plugin_library.h"

namespace host {

namespace {

using SplitFunction = Array* (*)(REALstringStruct*, REALstringStruct*, REALstringStruct*);

StringRef MakeArgument(std::string_view text) { return text.empty() ? StringRef() : StringRef(MakeString(text)); }

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

REALstringStruct* FieldAt(const Array* array, std::int64_t index) { return ElementAt<REALstringStruct*>(array, index); }

std::vector<std::string> FieldsOf(const Array* array, std::size_t most) {
  const auto count = std::min(most, static_cast<std::size_t>(UpperBound(array) + 1));
  std::vector<std::string> fields;
  for (std::size_t i = 0; i < count; ++i) fields.push_back(ToUTF8(FieldAt(array, static_cast<std::int64_t>(i))));
  return fields;
}

bool HaveSameFields(const Array* a, const Array* b) {
  const auto view = [](const REALstringStruct* field) { return field != nullptr ? field->View() : std::string_view(); };
  if (UpperBound(a) != UpperBound(b)) return false;
  for (std::int64_t i = 0; i <= UpperBound(a); ++i)
    if (view(FieldAt(a, i)) != view(FieldAt(b, i))) return false;
  return true;
}

// The first record: up to the first line break outside quotes.
std::string_view HeadingOf(std::string_view text, char quote) {
  bool isInside = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == quote) isInside = !isInside;
    if (!isInside && (text[i] == '\n' || text[i] == '\r')) return text.substr(0, i);
  }
  return text;
}

struct DelimiterInUse {
  std::string delimiter;
  std::string description;
};

class FileSplitter {
 public:
  FileSplitter(const std::string& plugin, const SplitOptions& options)
      : options_(options), text_(MakeArgument(ReadFile(options.file))) {
    LoadPlugin(plugin);
    split_ = reinterpret_cast<SplitFunction>(FindNativeFunction(Host::Current(), "SplitCommaSeparatedValuesZKT"));
    if (split_ == nullptr) throw std::runtime_error("the plug-in declares no SplitCommaSeparatedValuesZKT");
  }

  void Run() const {
    const auto start = std::chrono::steady_clock::now();
    const ArrayRef fields = Split(text_, options_.delimiter);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    if (options_.showFields) {
      for (const std::string& field : FieldsOf(fields.Get(), SIZE_MAX)) std::cout << field << '\n';
      return;
    }
    const std::int64_t count = UpperBound(fields.Get()) + 1;
    const std::int64_t bytes = text_ ? text_->length : 0;
    const DelimiterInUse inUse = FindDelimiter(fields.Get());
    std::cout << options_.file << ": " << count << " fields, " << inUse.description << '\n';
    ShowRecords(fields.Get(), inUse.delimiter);
    std::cout << std::fixed << std::setprecision(2) << "  " << bytes << " bytes in " << seconds.count() * 1e3
              << " ms: " << static_cast<double>(count) / seconds.count() / 1e6 << " million fields/s, "
              << static_cast<double>(bytes) / seconds.count() / 1e6 << " MB/s\n";
  }

 private:
  ArrayRef Split(const StringRef& text, std::string_view delimiter) const {
    ArrayRef fields(split_(text.Get(), MakeArgument(delimiter).Get(), MakeArgument(options_.quote).Get()));
    if (const auto raised = TakeRaised()) throw std::runtime_error(raised->className + ": " + raised->message);
    if (!fields) throw std::runtime_error("the plug-in gave no array");
    return fields;
  }

  // The delimiter that was given, else the one which gives the same fields when it is given.
  DelimiterInUse FindDelimiter(const Array* fields) const {
    if (!options_.delimiter.empty()) return {options_.delimiter, "delimiter as given"};
    constexpr std::pair<const char*, const char*> kCandidates[] = {{";", "semicolon"}, {",", "comma"}, {"\t", "tab"}};
    DelimiterInUse found;
    int matches = 0;
    for (const auto& [delimiter, name] : kCandidates) {
      if (!HaveSameFields(Split(text_, delimiter).Get(), fields)) continue;
      ++matches;
      found = {delimiter, std::string("detected delimiter: ") + name};
    }
    return matches == 1 ? found : DelimiterInUse{"", "no delimiter to be seen"};
  }

  // Records are told apart by the number of fields in the first one.
  void ShowRecords(const Array* fields, std::string_view delimiter) const {
    const std::string_view text = text_ ? text_->View() : std::string_view();
    const char quote = options_.quote.empty() ? '"' : options_.quote.front();
    const ArrayRef heading = Split(MakeArgument(HeadingOf(text, quote)), delimiter);
    const auto columns = static_cast<std::size_t>(UpperBound(heading.Get()) + 1);
    WriteTable(std::cout, FieldsOf(fields, columns * options_.records), columns);
  }

  const SplitOptions& options_;
  StringRef text_;
  SplitFunction split_ = nullptr;
};

}  // namespace

int RunSplit(const std::string& plugin, const SplitOptions& options) {
  FileSplitter(plugin, options).Run();
  const ReferenceReport references = ReportReferences();
  (options.showFields ? std::cerr : std::cout) << "  " << DescribeReferences(references);
  return references.IsBalanced() ? 0 : 1;
}

}  // namespace host
