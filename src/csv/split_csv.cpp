#include "csv/split_csv.h"

#include <optional>

#include "csv/array_of_fields.h"
#include "csv/delimiter_detection.h"
#include "csv/splitter.h"
#include "frame/contract/host_reference.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/log_text.h"
#include "runtime/text_reader.h"

namespace zkt {

namespace {

void TraceByte(const char* label, char byte) {
  Trace(label, static_cast<int>(static_cast<unsigned char>(byte)));
  Trace(label, LogText({&byte, 1}).Get());
}

// Writes the splitter's events to the debug log. For an event with a position, also writes the text from that position
// to the end.
class TraceObserver {
 public:
  explicit TraceObserver(const csv::PaddedText& text) : text_(text) {}

  void OnText(const char* begin, const char* end, bool hadByteOrderMark) {
    if (hadByteOrderMark) Trace("ignored UTF-8 BOM");
    Trace("text length", static_cast<std::uint64_t>(text_.size()));
    Trace("t", static_cast<const void*>(begin));
    Trace("e", static_cast<const void*>(end));
  }
  void OnStartQuote(const char* position) { TraceRest("start quote found", position); }
  void OnEndQuote(const char* position) { TraceRest("end quote found", position); }
  void OnTwoQuotes(const char* position) { TraceRest("found two quotes", position); }
  void OnDelimiter(const char* position) { TraceRest("delimiter found", position); }
  void OnNewline(const char* position) { TraceRest("newline found", position); }
  void OnLonelyQuote(char previous, char next) {
    Trace("lonly quote in value", static_cast<int>(static_cast<unsigned char>(previous)),
          static_cast<int>(static_cast<unsigned char>(next)));
  }

 private:
  void TraceRest(const char* message, const char* position) const {
    const std::string_view rest(position, static_cast<std::size_t>(text_.end() - position));
    Trace(message, LogText(rest).Get());
  }

  const csv::PaddedText& text_;
};

char DetectAndTrace(const csv::PaddedText& text) {
  Trace("DetectDelimiter");
  const char delimiter = csv::DetectDelimiter(text);
  Trace(delimiter == '\t' ? "use tab" : delimiter == ',' ? "use comma" : "use semicolon");
  return delimiter;
}

csv::PaddedText CopyText(REALstring string) { return csv::PaddedText(rbText(string).GetUTF8()); }

// Returns the first UTF-8 byte of a string, or nullopt if the string is empty.
std::optional<char> FirstByte(REALstring string) {
  rbText text(string);
  const std::string_view bytes = text.GetUTF8();
  return bytes.empty() ? std::nullopt : std::optional(bytes.front());
}

csv::Dialect ChooseDialect(const csv::PaddedText& text, REALstring delimiter, REALstring quote) {
  const std::optional<char> givenDelimiter = FirstByte(delimiter);
  const std::optional<char> givenQuote = FirstByte(quote);
  return {givenDelimiter ? *givenDelimiter : DetectAndTrace(text), givenQuote.value_or('"')};
}

void SplitInto(_REALarrayString* array, REALstring string, REALstring delimiter, REALstring quote) {
  const csv::PaddedText text = CopyText(string);
  const csv::Dialect dialect = ChooseDialect(text, delimiter, quote);
  if (!IsDebugging()) {
    csv::SplitText(text, dialect, csv::ArrayOfFields(array), csv::NoObserver());
    return;
  }
  TraceByte("delimiter", dialect.delimiter);
  TraceByte("quote", dialect.quote);
  csv::SplitText(text, dialect, csv::ArrayOfFields(array), TraceObserver(text));
  Trace("done");
}

}  // namespace

_REALarrayString* SplitCSV(REALstring text, REALstring delimiter, REALstring quote) {
  Trace("SplitCSV");
  return TranslateExceptions([&] {
    OwnedObject array(REALCreateArray(kArrayOfString, -1));
    const auto strings = reinterpret_cast<_REALarrayString*>(array.Get());
    if (strings == nullptr) return strings;
    SplitInto(strings, text, delimiter, quote);
    return reinterpret_cast<_REALarrayString*>(array.Release());
  });
}

}  // namespace zkt
