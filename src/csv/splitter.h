// Splits delimited text into fields. Knows bytes only: the fields go to a sink, what was met on the way to an observer.
// Ordinary bytes are never looked at one by one: the next byte that matters comes from a mask of 64 comparisons, and
// everything before it is handed over as a run.
#pragma once

#include <bit>
#include <cstring>
#include <string>
#include <string_view>

#include "csv/padded_text.h"

namespace zkt::csv {

struct Dialect {
  char delimiter;
  char quote;
};

inline constexpr std::string_view kUTF8ByteOrderMark = "\xEF\xBB\xBF";

// An observer that is told nothing and costs nothing; the others offer the same functions.
struct NoObserver {
  void OnText(const char* /*begin*/, const char* /*end*/, bool /*hadByteOrderMark*/) {}
  void OnStartQuote(const char* /*position*/) {}
  void OnEndQuote(const char* /*position*/) {}
  void OnTwoQuotes(const char* /*position*/) {}
  void OnDelimiter(const char* /*position*/) {}
  void OnNewline(const char* /*position*/) {}
  void OnLonelyQuote(char /*previous*/, char /*next*/) {}
};

// The field being read: a slice of the text while its bytes lie together there, else a copy.
class FieldBuffer {
 public:
  FieldBuffer() : copy_(200, '\0') {}

  bool IsEmpty() const { return size_ == 0; }
  std::string_view Content() const { return {begin_, size_}; }
  void Clear() { size_ = 0; }

  // The bytes have to lie in a padded text.
  void Append(const char* begin, const char* end) {
    const std::size_t count = static_cast<std::size_t>(end - begin);
    if (count == 0) return;
    if (size_ == 0)
      begin_ = begin;
    else if (begin_ + size_ != begin)
      return AppendToCopy(begin, count);
    size_ += count;
  }

 private:
  static constexpr std::size_t kStep = 16;
  static_assert(kStep <= kBlockSize);

  void AppendToCopy(const char* begin, std::size_t count) {
    const bool isCopy = begin_ == copy_.data();
    if (copy_.size() < size_ + count + kStep) copy_.resize(2 * (size_ + count + kStep));
    if (!isCopy) CopyRun(copy_.data(), begin_, size_);
    CopyRun(copy_.data() + size_, begin, count);
    begin_ = copy_.data();
    size_ += count;
  }

  // Runs are short: copying whole steps, beyond the end too, beats copying exactly.
  static void CopyRun(char* to, const char* from, std::size_t count) {
    for (std::size_t done = 0; done < count; done += kStep) std::memcpy(to + done, from + done, kStep);
  }

  const char* begin_ = nullptr;
  std::size_t size_ = 0;
  std::string copy_;
};

// Finds the bytes that matter, block by block, from front to back.
class SpecialByteScanner {
 public:
  SpecialByteScanner(const char* begin, const char* end, Dialect dialect) : end_(end), dialect_(dialect) {
    LoadBlock(begin);
    ahead_ = specials_;
  }

  // Takes the next delimiter, quote or line break; the end of the text if there is none.
  const char* NextSpecial() {
    while (ahead_ == 0) {
      const char* const next = block_ + kBlockSize;
      if (next >= end_) return end_;
      LoadBlock(next);
      ahead_ = specials_;
    }
    const char* const found = block_ + std::countr_zero(ahead_);
    ahead_ &= ahead_ - 1;
    return AtMostEnd(found);
  }

  // Goes on with NextSpecial() at a position that was reached without it.
  void Seek(const char* position) {
    const std::size_t offset = MoveTo(position);
    ahead_ = specials_ >> offset << offset;
  }

  // The first quote from `position` on; the end of the text if there is none. To be followed by Seek().
  const char* FindQuote(const char* position) {
    std::size_t offset = MoveTo(position);
    while (quotes_ >> offset == 0) {
      const char* const next = block_ + kBlockSize;
      if (next >= end_) return end_;
      LoadBlock(next);
      offset = 0;
    }
    return AtMostEnd(block_ + offset + std::countr_zero(quotes_ >> offset));
  }

 private:
  void LoadBlock(const char* begin) {
    block_ = begin;
    const Block bytes(begin);
    quotes_ = bytes.Equal(dialect_.quote);
    specials_ = quotes_ | bytes.Equal(dialect_.delimiter) | bytes.Equal('\n') | bytes.Equal('\r');
  }

  // Makes the block of the position the current one and gives the position's place in it.
  std::size_t MoveTo(const char* position) {
    const std::size_t offset = static_cast<std::size_t>(position - block_);
    if (offset >= kBlockSize) LoadBlock(block_ + offset / kBlockSize * kBlockSize);
    return offset % kBlockSize;
  }

  // A delimiter or quote that is the zero byte is found in the padding too.
  const char* AtMostEnd(const char* found) const { return found < end_ ? found : end_; }

  const char* block_;
  const char* end_;
  Dialect dialect_;
  std::uint64_t quotes_;
  std::uint64_t specials_;
  std::uint64_t ahead_;  // the specials of the block that NextSpecial() has not taken yet
};

// One pass over one text. `Sink` takes each field as a std::string_view, valid during the call.
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

  // Reads up to and including the next special byte. Behind the text stands a zero byte, so that there always is a
  // next byte to look at.
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

  // A quote opens a quoted part at the start of the text, of a field or of a line, and also where a delimiter or the
  // end of the text follows it: there the delimiter becomes content, which callers rely on.
  bool IsStartQuote() const {
    const char next = position_[1];
    return previous_ == 0 || previous_ == delimiter_ || IsLineBreak(previous_) || next == delimiter_ || next == 0;
  }

  // A quote in the middle of a value belongs to it, and so does everything up to the next double quote.
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

  // From one quoted field to the next nothing has to be searched for.
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
        position_ = quote + 2;  // beyond the end when the quote is the zero byte and the last one
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

  // Directly behind a closing quote there is no field to add unless something was read.
  void EmitField() {
    if (fieldPending_ || !field_.IsEmpty()) sink_(field_.Content());
    field_.Clear();
  }

  const char* position_;
  const char* end_;
  const char delimiter_;
  const char quote_;
  char previous_ = 0;  // the byte before, as far as it matters for quotes; 0 at the start of the text
  bool fieldPending_ = true;
  FieldBuffer field_;
  SpecialByteScanner scanner_;
  Sink& sink_;
  Observer& observer_;
};

// Hands the fields of all lines to the sink in their order. Every text has at least one field.
template <class Sink, class Observer>
void SplitText(const PaddedText& text, Dialect dialect, Sink&& sink, Observer&& observer) {
  Splitter(text, dialect, sink, observer).Run();
}

}  // namespace zkt::csv
