// xojo-host split: splits a file with the plug-in and shows the result.
#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iostream>
#include <stdexcept>

#include "commands/commands.h"
#include "core/arrays.h"
#include "core/exceptions.h"
#include "core/files.h"
#include "core/strings.h"
#include "core/utf8_locale.h"
#include "services/members.h"
#include "services/plugin_library.h"

namespace host {

namespace {

using SplitFunction = Array* (*)(REALstringStruct*, REALstringStruct*, REALstringStruct*);

StringRef MakeArgument(std::string_view text) { return text.empty() ? StringRef() : StringRef(MakeString(text)); }

// Returns up to `most` fields from the start of the array.
std::vector<std::string> FieldsOf(const ArrayRef& array, std::size_t most = SIZE_MAX) {
  const auto count = std::min(most, static_cast<std::size_t>(array->count));
  std::vector<std::string> fields;
  for (std::size_t i = 0; i < count; ++i)
    fields.push_back(ToUTF8(ElementAt<REALstringStruct*>(array.Get(), static_cast<std::int64_t>(i))));
  return fields;
}

// Returns the first record: the text before the first line break outside quotes.
std::string_view HeadingOf(std::string_view text, char quote) {
  bool isInside = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == quote) isInside = !isInside;
    if (!isInside && (text[i] == '\n' || text[i] == '\r')) return text.substr(0, i);
  }
  return text;
}

// The delimiter, and the number of columns in the first record.
struct Heading {
  std::string delimiter;  // a description for the report
  std::size_t columns;
};

// Loads the plug-in and returns a function that calls its split method with a text and a delimiter.
auto LoadSplitMethod(const std::string& plugin, std::string_view quote) {
  LoadPlugin(plugin);
  const auto method =
      reinterpret_cast<SplitFunction>(FindNativeFunction(Host::Current(), "SplitCommaSeparatedValuesZKT"));
  if (method == nullptr) throw std::runtime_error("the plug-in does not declare SplitCommaSeparatedValuesZKT");
  return [method, quote = MakeArgument(quote)](const StringRef& text, std::string_view delimiter) {
    ArrayRef fields(method(text.Get(), MakeArgument(delimiter).Get(), quote.Get()));
    if (const auto raised = TakeRaised()) throw std::runtime_error(raised->className + ": " + raised->message);
    if (!fields) throw std::runtime_error("SplitCommaSeparatedValuesZKT returned nil instead of an array");
    return fields;
  };
}

// Returns the given delimiter or, if none was given, the one that the plug-in detected. To find the detected delimiter,
// splits the first record with each candidate and compares the result with `fields`.
Heading FindHeading(const auto& split, std::string_view record, std::string_view given, const ArrayRef& fields) {
  const auto columnsWith = [&](std::string_view delimiter) { return FieldsOf(split(MakeArgument(record), delimiter)); };
  if (!given.empty()) return {"given delimiter", columnsWith(given).size()};
  constexpr std::pair<const char*, const char*> kCandidates[] = {{";", "semicolon"}, {",", "comma"}, {"\t", "tab"}};
  std::vector<Heading> found;
  for (const auto& [delimiter, name] : kCandidates)
    if (const auto columns = columnsWith(delimiter); columns == FieldsOf(fields, columns.size()))
      found.push_back({std::string("detected delimiter: ") + name, columns.size()});
  return found.size() == 1 ? found.front() : Heading{"no delimiter detected", columnsWith("").size()};
}

constexpr std::size_t kWidestColumn = 28;

struct Cell {
  std::string text;
  std::size_t width = 0;
};

// The cell's width is in terminal columns, as wcwidth counts them.
Cell MakeCell(const std::string& content) {
  const Utf8Locale locale;
  Cell cell;
  for (std::size_t at = 0; at < content.size();) {
    wchar_t character = 0;
    const std::size_t length = Utf8Locale::Read(std::string_view(content).substr(at), character);
    const bool isPrintable = length > 0 && character >= L' ';
    const std::string shown = isPrintable ? content.substr(at, length) : content[at] == '\n' ? "⏎" : " ";
    cell.width += isPrintable ? static_cast<std::size_t>(std::max(wcwidth(character), 0)) : 1;
    if (cell.width > kWidestColumn) return {cell.text + "…", kWidestColumn + 1};
    cell.text += shown;
    at += isPrintable ? length : 1;
  }
  return cell;
}

// Prints the cells in rows of `columns` cells. Each column is as wide as its content. Long cells are truncated, and
// line breaks are shown as a symbol.
void PrintTable(const std::vector<std::string>& cells, std::size_t columns) {
  std::vector<Cell> all;
  std::vector<std::size_t> widths(columns, 0);
  for (const std::string& content : cells) {
    all.push_back(MakeCell(content));
    std::size_t& width = widths[(all.size() - 1) % columns];
    width = std::max(width, all.back().width);
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    const bool isLast = i % columns == columns - 1 || i == all.size() - 1;
    std::cout << (i % columns == 0 ? "  " : " | ") << all[i].text;
    std::cout << (isLast ? "\n" : std::string(widths[i % columns] - all[i].width, ' '));
  }
}

void SplitFile(const std::string& plugin, const SplitOptions& options) {
  const std::string text = ReadFile(options.file);
  const StringRef argument = MakeArgument(text);
  const auto split = LoadSplitMethod(plugin, options.quote);
  const auto start = std::chrono::steady_clock::now();
  const ArrayRef fields = split(argument, options.delimiter);
  const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
  if (options.showFields) {
    for (const std::string& field : FieldsOf(fields)) std::cout << field << '\n';
    return;
  }
  const std::string_view record = HeadingOf(text, options.quote.empty() ? '"' : options.quote.front());
  const Heading heading = FindHeading(split, record, options.delimiter, fields);
  std::cout << options.file << ": " << fields->count << " fields, " << heading.delimiter << '\n';
  PrintTable(FieldsOf(fields, heading.columns * options.records), heading.columns);
  std::cout << std::fixed << std::setprecision(2) << "  " << text.size() << " bytes in " << time.count() / 1e3
            << " ms: " << static_cast<double>(fields->count) / time.count() << " million fields/s, "
            << static_cast<double>(text.size()) / time.count() << " MB/s\n";
}

}  // namespace

int RunSplit(const std::string& plugin, const SplitOptions& options) {
  SplitFile(plugin, options);
  const ReferenceReport references = ReportReferences();
  (options.showFields ? std::cerr : std::cout) << "  " << DescribeReferences(references);
  return references.IsBalanced() ? 0 : 1;
}

}  // namespace host
