// xojo-host split: splits a real file through the plug-in and shows what came out.
#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iostream>
#include <stdexcept>

#include "commands/commands.h"
#include "commands/table.h"
#include "core/arrays.h"
#include "core/exceptions.h"
#include "core/files.h"
#include "core/strings.h"
#include "declarations/members.h"
#include "services/plugin_library.h"

namespace host {

namespace {

using SplitFunction = Array* (*)(REALstringStruct*, REALstringStruct*, REALstringStruct*);

StringRef MakeArgument(std::string_view text) { return text.empty() ? StringRef() : StringRef(MakeString(text)); }

// The first fields, as many as there are up to a number.
std::vector<std::string> FieldsOf(const ArrayRef& array, std::size_t most = SIZE_MAX) {
  const auto count = std::min(most, static_cast<std::size_t>(array->count));
  std::vector<std::string> fields;
  for (std::size_t i = 0; i < count; ++i)
    fields.push_back(ToUTF8(ElementAt<REALstringStruct*>(array.Get(), static_cast<std::int64_t>(i))));
  return fields;
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

// What the first record tells about the others.
struct Heading {
  std::string delimiter;  // for people
  std::size_t columns;
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
      for (const std::string& field : FieldsOf(fields)) std::cout << field << '\n';
      return;
    }
    const auto bytes = static_cast<double>(text_ ? text_->length : 0);
    const auto count = static_cast<double>(fields->count);
    const Heading heading = FindHeading(fields);
    std::cout << options_.file << ": " << fields->count << " fields, " << heading.delimiter << '\n';
    WriteTable(std::cout, FieldsOf(fields, heading.columns * options_.records), heading.columns);
    std::cout << std::fixed << "  " << std::setprecision(0) << bytes << " bytes in " << std::setprecision(2)
              << seconds.count() * 1e3 << " ms: " << count / seconds.count() / 1e6 << " million fields/s, "
              << bytes / seconds.count() / 1e6 << " MB/s\n";
  }

 private:
  ArrayRef Split(const StringRef& text, std::string_view delimiter) const {
    ArrayRef fields(split_(text.Get(), MakeArgument(delimiter).Get(), MakeArgument(options_.quote).Get()));
    if (const auto raised = TakeRaised()) throw std::runtime_error(raised->className + ": " + raised->message);
    if (!fields) throw std::runtime_error("the plug-in gave no array");
    return fields;
  }

  // A delimiter that was not given is the one that splits the first record as it has been split.
  Heading FindHeading(const ArrayRef& fields) const {
    const char quote = options_.quote.empty() ? '"' : options_.quote.front();
    const StringRef record = MakeArgument(HeadingOf(text_ ? text_->View() : std::string_view(), quote));
    const auto columnsWith = [&](std::string_view delimiter) { return FieldsOf(Split(record, delimiter)); };
    if (!options_.delimiter.empty()) return {"delimiter as given", columnsWith(options_.delimiter).size()};
    constexpr std::pair<const char*, const char*> kCandidates[] = {{";", "semicolon"}, {",", "comma"}, {"\t", "tab"}};
    std::vector<Heading> found;
    for (const auto& [delimiter, name] : kCandidates)
      if (const auto columns = columnsWith(delimiter); columns == FieldsOf(fields, columns.size()))
        found.push_back({std::string("detected delimiter: ") + name, columns.size()});
    return found.size() == 1 ? found.front() : Heading{"no delimiter to be seen", columnsWith("").size()};
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
