#include "runtime/text_reader.h"

#include <atomic>
#include <cstring>
#include <limits>
#include <new>

#include "frame/host_reference.h"
#include "runtime/byte_tests.h"
#include "runtime/debug_log.h"
#include "runtime/text_builder.h"

namespace zkt {

namespace {

constexpr std::uint64_t kGuard = 0x5A4B5454;  // 'ZKTT'

// What every view shows before it is made: empty text of any code unit width, zero-terminated.
constexpr char32_t kEmptyText = 0;

// The line about rebuilt raw bytes is written once in a process.
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

}  // namespace

rbText::rbText(REALstring string) : headGuard_(kGuard), tailGuard_(kGuard) {
  Reset();
  if (string == nullptr) return;
  lengths_.fill(kNotComputed);
  asciiState_ = kNotKnown;
  Hold(string);
  if (encoding_ == kEncodingUTF8) {
    ViewInPlace(kUTF8View);
  } else if (encoding_ == kEncodingASCII) {
    ViewInPlace(kUTF8View);
    ViewInPlace(kASCIIView);
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
  for (REALstring& converted : convertedStrings_)
    if (converted != nullptr) REALUnlockString(std::exchange(converted, nullptr));
  for (std::size_t view = 0; view < kViewCount; ++view)
    if (ownsRecord_[view] != 0) REALDisposeStringData(&records_[view]);
  Reset();
}

// The state for a nil string, which is also what is left behind.
void rbText::Reset() {
  lengths_.fill(0);
  views_.fill(&kEmptyText);
  for (auto& buffer : buffers_) buffer.reset();
  records_ = {};
  ownsRecord_ = {};
  failed_ = 0;
  encoding_ = kEncodingASCII;
  asciiState_ = kIsASCII;
  reserved_ = nullptr;
}

void rbText::Hold(REALstring string) {
  OwnedString held = OwnedString::Share(string);
  if (held) encoding_ = REALGetStringEncoding(string);  // 0 on a host that cannot tell
  string_ = std::move(held);
}

void rbText::SetView(View view, const void* bytes, std::int64_t count) {
  views_[view] = bytes;
  lengths_[view] = count;
}

void rbText::ViewInPlace(View view) {
  const StringContents contents = REALGetStringContents(string_.Get());
  if (contents.bytes != nullptr) SetView(view, contents.bytes, contents.count);
}

void rbText::CheckASCII() {
  if (asciiState_ != kNotKnown) return;
  const StringContents contents = REALGetStringContents(string_.Get());
  // Bytes that the host does not show can still be converted by the host.
  if (contents.bytes == nullptr) return;
  if (contents.count > 0 && !IsASCII({contents.bytes, static_cast<std::size_t>(contents.count)})) {
    asciiState_ = kNotASCII;
    return;
  }
  asciiState_ = kIsASCII;
  // A view that has been handed out stays where it is.
  for (std::size_t view = 0; view < k8BitViewCount; ++view)
    if (lengths_[view] == kNotComputed) SetView(static_cast<View>(view), contents.bytes, contents.count);
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
  // The flag says that the text had no encoding, even though its bytes can be read now.
  failed_ = 1;
  if (IsDebugging() && !gRebuildLogged.exchange(true, std::memory_order_relaxed))
    Trace("REALBuildUnicodeString failed");
}

void rbText::Convert(View view, std::uint32_t encoding) {
  if (lengths_[view] == kNotComputed) CheckASCII();
  if (lengths_[view] != kNotComputed) return;
  SetView(view, &kEmptyText, 0);
  if (!string_) return;
  REALstringData& record = records_[view];
  if (!REALGetStringData(string_.Get(), encoding, &record)) {
    Trace("REALGetStringData failed.");
    failed_ = 1;
    return;
  }
  ownsRecord_[view] = 1;
  if (record.data == nullptr || record.length < 1) return;
  SetView(view, record.data, record.length);
  Terminated(view);
}

// The view, after a copy has taken its place where no zero byte follows it.
const char* rbText::Terminated(View view) {
  const std::int64_t length = lengths_[view];
  const char* const bytes = static_cast<const char*>(views_[view]);
  if (length < 1) {
    SetView(view, &kEmptyText, 0);
  } else if (bytes[length] != '\0') {
    Trace("String is not zero terminated. Fixed.");
    std::unique_ptr<char[]>& copy = buffers_[view];
    copy.reset(new (std::nothrow) char[static_cast<std::size_t>(length) + 4]());
    if (copy) {
      std::memcpy(copy.get(), bytes, static_cast<std::size_t>(length));
      SetView(view, copy.get(), length);
    } else {
      Trace("Out of memory");
      SetView(view, &kEmptyText, 0);
    }
  }
  return static_cast<const char*>(views_[view]);
}

void rbText::ConvertUTF8() { Convert(kUTF8View, kEncodingUTF8); }

std::string_view rbText::GetUTF8() {
  ConvertUTF8();
  const std::int64_t length = lengths_[kUTF8View];
  return {static_cast<const char*>(views_[kUTF8View]), length > 0 ? static_cast<std::size_t>(length) : 0};
}

const char* rbText::GetUTF8CString() {
  ConvertUTF8();
  return Terminated(kUTF8View);
}

const char* rbText::GetASCII() {
  Convert(kASCIIView, kEncodingASCII);
  return Terminated(kASCIIView);
}

void rbText::CheckGuard(std::uint64_t guard, const char* complaint) const {
  if (guard != kGuard) Trace(complaint, guard);
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
