#pragma once

// The simplest implementation of the CSV rules, which reads one byte at a time. The splitter's tests use it as an
// oracle, and the benchmark uses it as the reference loop. Keep it slow and obvious. It must not share code with the
// splitter: otherwise, comparing the two would prove nothing.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace naive {

// Passes every field to emit(std::string_view). The view is valid only during the call. The delimiter and the quote may
// be any bytes, including NUL and line breaks, and may be equal: the first matching branch is taken.
template <class Sink>
void SplitInto(std::string_view text, char delimiter, char quote, Sink&& emit) {
  std::string field;
  field.reserve(200);
  bool inQuote = false;
  bool fieldPending = true;  // false only directly after a closing quote, when the field has already been emitted
  char previous = '\0';      // NUL at the start of the text

  const auto emitField = [&] {
    if (fieldPending || !field.empty()) emit(std::string_view(field));
    field.clear();
  };

  std::size_t at = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  while (at < text.size()) {
    const char current = text[at];
    const char next = at + 1 < text.size() ? text[at + 1] : '\0';

    if (inQuote && current != quote) {
      field.push_back(current);
      previous = current;
      at += 1;
    } else if (inQuote && next == quote) {  // may step past the end if the quote is NUL
      field.push_back(quote);
      previous = quote;
      at += 2;
    } else if (inQuote && (next == delimiter || next == '\0' || next == '\n' || next == '\r')) {
      emitField();
      inQuote = false;
      fieldPending = false;
      previous = quote;
      at += 1;
    } else if (inQuote) {
      field.push_back(quote);
      previous = quote;
      at += 1;
    } else if (current == delimiter) {
      emitField();
      fieldPending = true;
      previous = delimiter;
      at += 1;
    } else if (current == quote && (previous == '\0' || previous == delimiter || previous == '\n' || previous == '\r' ||
                                    next == delimiter || next == '\0')) {
      inQuote = true;
      fieldPending = true;
      previous = quote;
      at += 1;
    } else if (current == quote) {  // a lone quote: copies through the next '"', whichever byte is the quote
      field.push_back(quote);
      at += 1;
      while (at < text.size()) {
        const char copied = text[at];
        field.push_back(copied);
        at += 1;
        if (copied == '"') break;
      }
      previous = quote;
    } else if (current == '\r' || current == '\n') {
      emitField();
      fieldPending = true;
      previous = current;
      at += current == '\r' && next == '\n' ? 2 : 1;
    } else {
      field.push_back(current);
      previous = current;
      at += 1;
    }
  }
  emitField();
}

inline std::vector<std::string> Split(std::string_view text, char delimiter, char quote) {
  std::vector<std::string> fields;
  SplitInto(text, delimiter, quote, [&](std::string_view field) { fields.emplace_back(field); });
  return fields;
}

// Returns whichever of semicolon, comma, and tab is most frequent outside double quotes. In a tie, the first of these
// wins.
inline char DetectDelimiter(std::string_view text) {
  bool outside = true;
  std::size_t commas = 0;
  std::size_t semicolons = 0;
  std::size_t tabs = 0;
  for (const char byte : text) {
    if (byte == '"') outside = !outside;
    if (outside && byte == ',') ++commas;
    if (outside && byte == ';') ++semicolons;
    if (outside && byte == '\t') ++tabs;
  }
  if (tabs > commas && tabs > semicolons) return '\t';
  return commas > semicolons ? ',' : ';';
}

}  // namespace naive
