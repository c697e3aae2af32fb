#include "runtime/path.h"

#include <new>
#include <utility>

#include "frame/contract/plugin_state.h"
#include "platform/system_log.h"
#include "runtime/cf_string.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// Returns a folder item's string property, or null if the host cannot provide it. The caller releases the result.
CFStringRef CopyProperty(REALfolderItem folderItem, const char* name, const char* label) {
  REALstring value = nullptr;
  if (!REALGetPropValueString(folderItem, name, &value)) return nullptr;
  const OwnedString owned(value);
  const CFStringRef text = RBString2CFString(value);
  if (text != nullptr && IsDebugging()) WriteSystemLog(label, text);
  return text;
}

// Hosts before 2013 provide the path only as a URL.
CFURLRef CreateURL(REALfolderItem folderItem) {
  const bool hasNativePath = rbversion >= 2013.0;
  const CFStringRef text = hasNativePath ? CopyProperty(folderItem, "NativePath", "native path")
                                         : CopyProperty(folderItem, "URLPath", "url path");
  if (text == nullptr) return nullptr;
  const fmCFReleaseLater release(text);
  return hasNativePath ? CFURLCreateWithFileSystemPath(kCFAllocatorDefault, text, kCFURLPOSIXPathStyle, false)
                       : CFURLCreateWithString(kCFAllocatorDefault, text, nullptr);
}

CFStringRef CopyPath(REALfolderItem folderItem) {
  const CFURLRef url = CreateURL(folderItem);
  if (url == nullptr) return nullptr;
  const fmCFReleaseLater release(url);
  return CFURLCopyFileSystemPath(url, kCFURLPOSIXPathStyle);
}

// Returns a decomposed copy of the string, or the string itself if memory runs out. The caller releases the result.
CFStringRef CopyDecomposed(CFStringRef text) {
  const CFMutableStringRef copy = CFStringCreateMutableCopy(kCFAllocatorDefault, 0, text);
  if (copy == nullptr) return static_cast<CFStringRef>(CFRetain(text));
  CFStringNormalize(copy, kCFStringNormalizationFormD);
  return copy;
}

std::unique_ptr<char[]> CopyUTF8(CFStringRef text) {
  const CFIndex length = CFStringGetLength(text);
  const CFIndex size = length * 6 + 16;
  if (length == 0 || size <= 0) return nullptr;
  std::unique_ptr<char[]> bytes(new (std::nothrow) char[static_cast<std::size_t>(size)]());
  if (bytes && CFStringGetCString(text, bytes.get(), size, kCFStringEncodingUTF8) == 0) bytes.reset();
  return bytes;
}

}  // namespace

rbPath::rbPath(REALfolderItem folderItem, REALstring path)
    : pathString_(OwnedString::Share(path)), folderItem_(OwnedObject::Share(folderItem)) {}

rbPath rbPath::OfFolderItem(REALfolderItem folderItem) { return {folderItem, nullptr}; }

rbPath rbPath::OfString(REALstring path) { return {nullptr, path}; }

void rbPath::MakePaths() {
  if (std::exchange(areMade_, true)) return;
  const CFStringRef path = folderItem_ ? CopyPath(folderItem_.Get()) : RBString2CFString(pathString_.Get());
  if (path == nullptr) return;
  const fmCFReleaseLater releasePath(path);
  const CFStringRef decomposed = CopyDecomposed(path);
  const fmCFReleaseLater releaseDecomposed(decomposed);
  unixPath_ = CopyUTF8(decomposed);
  pathAsGiven_ = CopyUTF8(path);
}

const char* rbPath::GetUnixPath() {
  MakePaths();
  return unixPath_.get();
}

const char* rbPath::GetPathAsGiven() {
  MakePaths();
  return pathAsGiven_.get();
}

}  // namespace zkt
