// xojo-host split: splits a real file through the plug-in and shows what came out.
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <stdexcept>

#include "commands/commands.h"
#include "commands/table.h"
#include "core/arrays.h"
#include "core/host.h"
#include "core/plugin_library.h"
#include "core/strings.h"

namespace host {

namespace {

using SplitFunction = Array* (*)(REALstringStruct*, REALstringStruct*, REALstringStruct*);

StringRef MakeArgument(std::string_view text) { return text.empty() ? StringRef() : StringRef(MakeString(text)); }

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> FieldsOf(const Array* array, std::size_t most) {
  const auto count = std::min(most, static_cast<std::size_t>(UpperBound(array) + 1));
  std::vector<std::string> fields;
  for (std::size_t i = 0; i < count; ++i)
    fields.push_back(ToUTF8(ElementAt<REALstringStruct*>(array, static_cast<std::int64_t>(i))));
  return fields;
}

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
    const auto count = static_cast<double>(UpperBound(fields.Get()) + 1);
    const double megabytes = static_cast<double>(text_ ? text_->length : 0) / 1e6;
    std::cout << options_.file << ": " << count << " fields, delimiter " << DelimiterInUse(fields.Get()) << '\n';
    ShowRecords(fields.Get());
    std::cout << "  " << megabytes << " MB in " << seconds.count() * 1e3 << " ms: " << count / seconds.count() / 1e6
              << " million fields/s, " << megabytes / seconds.count() << " MB/s\n";
  }

 private:
  ArrayRef Split(const StringRef& text, std::string_view delimiter) const {
    ArrayRef fields(split_(text.Get(), MakeArgument(delimiter).Get(), MakeArgument(options_.quote).Get()));
    if (const auto raised = Host::Current().TakeRaised())
      throw std::runtime_error(raised->className + ": " + raised->message);
    if (!fields) throw std::runtime_error("the plug-in gave no array");
    return fields;
  }

  // The delimiter that was given, else the one that gives the same fields as detection did.
  std::string DelimiterInUse(const Array* fields) const {
    if (!options_.delimiter.empty()) return "\"" + options_.delimiter + "\" (given)";
    constexpr std::pair<const char*, const char*> kCandidates[] = {{",", "comma"}, {";", "semicolon"}, {"\t", "tab"}};
    for (const auto& [delimiter, name] : kCandidates) {
      const ArrayRef other = Split(text_, delimiter);
      if (FieldsOf(other.Get(), SIZE_MAX) == FieldsOf(fields, SIZE_MAX)) return std::string(name) + " (detected)";
    }
    return "unknown";
  }

  // Records are told apart by the number of fields in the first line.
  void ShowRecords(const Array* fields) const {
    const std::string_view text = text_ ? text_->View() : std::string_view();
    const ArrayRef heading = Split(MakeArgument(text.substr(0, text.find_first_of("\r\n"))), options_.delimiter);
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
  const Ledger ledger = TakeLedger();
  (options.showFields ? std::cerr : std::cout) << "  " << DescribeLedger(ledger);
  return ledger.IsBalanced() ? 0 : 1;
}

}  // namespace host
