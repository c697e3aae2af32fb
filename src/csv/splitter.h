// Splits delimited text into fields. Works on bytes only. A sink receives the fields, and an observer is notified of
// parsing events. Ordinary bytes are not read one by one. The next special byte is found in a mask of 64 comparison
// results, and all bytes before it are appended as a run.
#pragma once

#include <cstring>
#include <string_view>

#include "csv/dialect.h"
#include "csv/field_buffer.h"
#include "csv/padded_text.h"
#include "csv/special_byte_scanner.h"

namespace zkt::csv {

inline constexpr std::string_view kUTF8ByteOrderMark = "\xEF\xBB\xBF";

// An observer that does nothing and costs no run time. Other observers must have the same member functions.
struct NoObserver {
  void OnText(const char* /*begin*/, const char* /*end*/, bool /*hadByteOrderMark*/) {}
  void OnStartQuote(const char* /*position*/) {}
  void OnEndQuote(const char* /*position*/) {}
  void OnTwoQuotes(const char* /*position*/) {}
  void OnDelimiter(const char* /*position*/) {}
  void OnNewline(const char* /*position*/) {}
  void OnLonelyQuote(char /*previous*/, char /*next*/) {}
};

// Splits text in a single pass. `Sink` receives each field as a std::string_view, which is valid only during the call.
template <class Sink, class Observer>
class Splitter {
 public:
  Splitter(const PaddedText& text, Dialect dialect, Sink& sink, Observer& observer)
      : position_(SkipByteOrderMark(text)),
        end_(text.end()),
        delimiter_(dialect.delimiter),
        quote_(dialect.quote),
        scanner_(position_, end_, dialect),
        sink_(sink),
        observer_(observer) {
    observer_.OnText(position_, end_, position_ != text.begin());
  }

  void Run() {
    while (position_ < end_) ReadUnquoted();
    EmitField();
  }

 private:
  static const char* SkipByteOrderMark(const PaddedText& text) {
    const std::string_view bytes(text.begin(), text.size());
    return text.begin() + (bytes.starts_with(kUTF8ByteOrderMark) ? kUTF8ByteOrderMark.size() : 0);
  }

  static bool IsLineBreak(char byte) { return byte == '\r' || byte == '\n'; }

  // Reads up to and including the next special byte. A zero byte follows the text, so the byte after the special byte
  // can always be read.
  void ReadUnquoted() {
    const char* const special = scanner_.NextSpecial();
    field_.Append(position_, special);
    if (special != position_) previous_ = special[-1];
    position_ = special;
    if (special == end_) return;
    if (*special == delimiter_)
      TakeDelimiter();
    else if (*special == quote_)
      IsStartQuote() ? ReadQuotedFields() : TakeLonelyQuote();
    else
      TakeNewline();
  }

  void TakeDelimiter() {
    observer_.OnDelimiter(position_);
    EmitField();
    fieldPending_ = true;
    previous_ = delimiter_;
    ++position_;
  }

  void TakeNewline() {
    observer_.OnNewline(position_);
    EmitField();
    fieldPending_ = true;
    previous_ = *position_;
    if (position_[0] == '\r' && position_[1] == '\n') {
      position_ += 2;
      scanner_.Seek(position_);
    } else {
      ++position_;
    }
  }

  // A quote at the start of the text, of a field or of a line opens a quoted part. Even in the middle of a field, a
  // quote immediately before a delimiter or the end of the text opens a quoted part, and the delimiter becomes part of
  // the field. Callers rely on this.
  bool IsStartQuote() const {
    const char next = position_[1];
    return previous_ == 0 || previous_ == delimiter_ || IsLineBreak(previous_) || next == delimiter_ || next == 0;
  }

  // Any other quote in the middle of a field is part of the field, and so is everything up to and including the next
  // double quote.
  void TakeLonelyQuote() {
    observer_.OnLonelyQuote(previous_, position_[1]);
    const char* const next = position_ + 1;
    const void* const closing = std::memchr(next, '"', static_cast<std::size_t>(end_ - next));
    const char* const stop = closing != nullptr ? static_cast<const char*>(closing) + 1 : end_;
    field_.Append(position_, stop);
    previous_ = quote_;
    position_ = stop;
    scanner_.Seek(stop);
  }

  // Reads adjacent quoted fields without searching for special bytes between them.
  void ReadQuotedFields() {
    ReadQuoted();
    while (position_ + 1 < end_ && position_[0] == delimiter_ && position_[1] == quote_) {
      TakeDelimiter();
      ReadQuoted();
    }
    scanner_.Seek(position_);
  }

  void ReadQuoted() {
    observer_.OnStartQuote(position_);
    fieldPending_ = true;
    ++position_;
    while (position_ < end_) {
      const char* const quote = scanner_.FindQuote(position_);
      field_.Append(position_, quote);
      position_ = quote;
      if (quote == end_) return;
      const char next = quote[1];
      if (next == quote_) {
        observer_.OnTwoQuotes(quote);
        field_.Append(quote, quote + 1);
        position_ = quote + 2;  // beyond the end if the quote character is the zero byte and ends the text
      } else if (next == delimiter_ || next == 0 || IsLineBreak(next)) {
        TakeEndQuote();
        return;
      } else {
        field_.Append(quote, quote + 1);
        position_ = quote + 1;
      }
    }
  }

  void TakeEndQuote() {
    observer_.OnEndQuote(position_);
    EmitField();
    fieldPending_ = false;
    previous_ = quote_;
    ++position_;
  }

  // Emits the current field, unless it is empty because it was already emitted at its closing quote.
  void EmitField() {
    if (fieldPending_ || !field_.IsEmpty()) sink_(field_.Content());
    field_.Clear();
  }

  const char* position_;
  const char* end_;
  const char delimiter_;
  const char quote_;
  char previous_ = 0;  // the previous byte, if it matters for quotes; 0 at the start of the text
  bool fieldPending_ = true;
  FieldBuffer field_;
  SpecialByteScanner scanner_;
  Sink& sink_;
  Observer& observer_;
};

// Passes the fields of all lines to the sink in order. Every text has at least one field.
template <class Sink, class Observer>
void SplitText(const PaddedText& text, Dialect dialect, Sink&& sink, Observer&& observer) {
  Splitter(text, dialect, sink, observer).Run();
}

}  // namespace zkt::csv
