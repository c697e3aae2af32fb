// Keeps host strings as UTF-8, so that pointers to their bytes stay valid.
#pragma once

#include <new>

#include "runtime/debug_log.h"
#include "runtime/text_reader.h"

namespace zkt {

class StringStore {
 public:
  struct Text {
    explicit Text(REALstring string) : reader(string) {}

    rbText reader;
    Text* next = nullptr;
  };

  StringStore() = default;
  StringStore(const StringStore&) = delete;
  StringStore& operator=(const StringStore&) = delete;
  ~StringStore() {
    while (newest_ != nullptr) {
      Text* const text = newest_;
      newest_ = text->next;
      delete text;
    }
  }

  // Returns the string as zero-terminated UTF-8, or null if memory runs out. The result is valid for the lifetime of
  // the store, even if the caller releases the host string.
  const char* Keep(REALstring string) {
    Text* const text = new (std::nothrow) Text(string);
    if (text == nullptr) return nullptr;
    Link(text);
    return text->reader.GetUTF8().data();
  }

  // Takes ownership of `text`.
  void Link(Text* text) {
    if (text->next != nullptr) Trace("Warning: Next already set!");
    text->next = newest_;
    newest_ = text;
  }

 private:
  Text* newest_ = nullptr;
};

}  // namespace zkt
