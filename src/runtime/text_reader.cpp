#include "runtime/text_reader.h"

#include <atomic>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "frame/contract/host_reference.h"
#include "runtime/debug_log.h"
#include "runtime/text_builder.h"
#include "runtime/text_classification.h"

namespace zkt {

namespace {

constexpr std::uint64_t kGuard = 0x5A4B5454;  // 'ZKTT'

// Whether the message about rebuilt raw bytes has been logged. It is logged at most once per process.
std::atomic<bool> gRebuildLogged{false};

bool IsWide(std::uint32_t encoding) {
  switch (encoding) {
    case kEncodingUTF16:
    case kEncodingUTF16BE:
    case kEncodingUTF16LE:
    case kEncodingUTF32:
    case kEncodingUTF32BE:
    case kEncodingUTF32LE:
      return true;
    default:
      return false;
  }
}

void CheckGuard(std::uint64_t guard, const char* complaint) {
  if (guard != kGuard) Trace(complaint, guard);
}

}  // namespace

rbText::rbText(REALstring string) : headGuard_(kGuard), tailGuard_(kGuard) {
  if (string == nullptr) return;
  ascii_.length = utf8_.length = kNotComputed;
  asciiState_ = kNotKnown;
  Hold(string);
  if (encoding_ == kEncodingUTF8) {
    ViewInPlace(utf8_);
  } else if (encoding_ == kEncodingASCII) {
    ViewInPlace(utf8_);
    ViewInPlace(ascii_);
  } else if (encoding_ == kEncodingNone) {
    RebuildFromRawBytes();
  } else if (IsWide(encoding_)) {
    asciiState_ = kNotASCII;
  }
}

rbText::~rbText() {
  CheckGuard(headGuard_, "Check1 in rbText invalid");
  CheckGuard(tailGuard_, "Check2 in rbText invalid");
  Hold(nullptr);
  for (View* const view : {&ascii_, &utf8_})
    if (view->ownsRecord) REALDisposeStringData(&view->record);
}

void rbText::View::Set(const char* newBytes, std::int64_t newLength) {
  bytes = newBytes;
  length = newLength;
}

// Sets the state for a nil string.
void rbText::Reset() {
  ascii_.Set("", 0);
  utf8_.Set("", 0);
  encoding_ = kEncodingASCII;
  asciiState_ = kIsASCII;
}

void rbText::Hold(REALstring string) {
  OwnedString held = OwnedString::Share(string);
  if (held) encoding_ = REALGetStringEncoding(string);  // 0 on a host without this service
  string_ = std::move(held);
}

void rbText::ViewInPlace(View& view) {
  const StringContents contents = REALGetStringContents(string_.Get());
  if (contents.bytes != nullptr) view.Set(contents.bytes, contents.count);
}

void rbText::CheckASCII() {
  if (asciiState_ != kNotKnown) return;
  const StringContents contents = REALGetStringContents(string_.Get());
  // The host may be able to convert a string whose bytes it does not expose.
  if (contents.bytes == nullptr) return;
  if (contents.count > 0 && !IsASCII({contents.bytes, static_cast<std::size_t>(contents.count)})) {
    asciiState_ = kNotASCII;
    return;
  }
  asciiState_ = kIsASCII;
  // A view that the caller may already be using must not change.
  for (View* const view : {&ascii_, &utf8_})
    if (view->length == kNotComputed) view->Set(contents.bytes, contents.count);
}

void rbText::RebuildFromRawBytes() {
  CheckASCII();
  if (asciiState_ == kIsASCII) return;
  const rbData raw(string_.Get());
  if (raw.Count() <= -4 || raw.Count() > std::numeric_limits<std::int64_t>::max() - 4) {
    Trace("Out of Memory.");
    return;
  }
  if (raw.Count() == 0) {
    Hold(nullptr);
    Reset();
    return;
  }
  const OwnedString rebuilt(REALBuildUnicodeString(raw.Bytes(), raw.Count(), kEncodingMacRoman));
  Hold(rebuilt.Get());
  asciiState_ = kNotASCII;
  // The string had no encoding, which counts as a failure even though the string is readable now.
  failed_ = true;
  if (IsDebugging() && !gRebuildLogged.exchange(true, std::memory_order_relaxed))
    Trace("REALBuildUnicodeString failed");
}

void rbText::Convert(View& view, std::uint32_t encoding) {
  if (view.length == kNotComputed) CheckASCII();
  if (view.length == kNotComputed) ConvertByHost(view, encoding);
  Terminate(view);
}

void rbText::ConvertByHost(View& view, std::uint32_t encoding) {
  view.Set("", 0);
  if (!string_) return;
  view.record = {};
  if (!REALGetStringData(string_.Get(), encoding, &view.record)) {
    Trace("REALGetStringData failed.");
    failed_ = true;
    return;
  }
  view.ownsRecord = true;
  if (view.record.data != nullptr) view.Set(view.record.data, view.record.length);
}

// If no zero byte follows the view's bytes, replaces them with a zero-terminated copy. The byte after the contents can
// always be read, because the host reserves it.
void rbText::Terminate(View& view) {
  if (view.length < 1) {
    view.Set("", 0);
  } else if (view.bytes[view.length] != '\0') {
    Trace("String is not zero terminated. Fixed.");
    const auto length = static_cast<std::size_t>(view.length);
    std::unique_ptr<char[]> copy(new (std::nothrow) char[length + 4]());
    if (copy) {
      std::memcpy(copy.get(), view.bytes, length);
      view.bytes = copy.get();
      view.copy = std::move(copy);
    } else {
      Trace("Out of memory");
      view.Set("", 0);
    }
  }
}

void rbText::ConvertUTF8() { Convert(utf8_, kEncodingUTF8); }

std::string_view rbText::GetUTF8() {
  ConvertUTF8();
  return {utf8_.bytes, static_cast<std::size_t>(utf8_.length)};
}

const char* rbText::GetASCII() {
  Convert(ascii_, kEncodingASCII);
  return ascii_.bytes;
}

rbData::rbData(REALstring string) : string_(OwnedString::Share(string)) {
  if (string == nullptr) return;
  const StringContents contents = REALGetStringContents(string);
  bytes_ = contents.bytes;
  count_ = contents.count;
  if (bytes_ == nullptr && count_ != 0) {
    Trace("data is NULL, so size fixed to zero.");
    count_ = 0;
  }
}

}  // namespace zkt
