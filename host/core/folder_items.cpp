#include "core/folder_items.h"

#include <cctype>
#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "core/host.h"

namespace host {

namespace {

constexpr const char* kClassName = "FolderItem";
constexpr std::string_view kFileScheme = "file://";

// Letters, digits and a few punctuation marks are not escaped.
std::string URLOf(const std::string& path) {
  std::string url(kFileScheme);
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x80 && std::isalnum(byte) != 0) || std::string_view("/-._~").find(c) != std::string_view::npos) {
      url += c;
    } else {
      url += "%" + ToHex(byte, 2);
    }
  }
  return url;
}

// The path in a file:// URL with its escapes decoded; empty for any other text.
std::string PathOf(const std::string& url) {
  if (!url.starts_with(kFileScheme)) return {};
  std::string path;
  for (std::size_t i = kFileScheme.size(); i < url.size(); ++i) {
    unsigned byte = 0;
    int length = 0;
    if (url[i] != '%') {
      path += url[i];
    } else if (std::sscanf(url.c_str() + i, "%%%2x%n", &byte, &length) == 1 && length == 3) {  // NOLINT: fixed width
      path += static_cast<char>(byte);
      i += 2;
    } else {
      return {};
    }
  }
  return path;
}

void Initialize(REALobjectStruct* folderItem) {
  if (Host::Current().version < 2013.0) folderItem->properties->erase("NativePath");
}

void Construct(REALobjectStruct* folderItem, const REALstringStruct* path, std::int64_t mode) {
  const std::string text = ToUTF8(path);
  if (!SetPath(folderItem, text, static_cast<PathMode>(mode)))
    throw std::runtime_error("a FolderItem cannot be made of " + text);
}

}  // namespace

std::vector<ObjectClass*> FolderItemClasses() {
  const Value empty = DefaultValue(kStringType);
  return {new ObjectClass{
      .name = kClassName,
      .properties = {{"NativePath", empty}, {"URLPath", empty}},
      .isReadOnly = true,
      .initialize = Initialize,
      .scriptMethods = {{"Constructor()", Address(&ConstructNothing)},
                        {"Constructor(path As String, mode As Integer = 3)", Address(&Construct)}},
      .constants = {
          {"PathModes.Shell", MakeValue(1)}, {"PathModes.URL", MakeValue(2)}, {"PathModes.Native", MakeValue(3)}}}};
}

bool IsFolderItem(const ObjectClass* type) { return type->IsA(kClassName); }

bool SetPath(REALobjectStruct* folderItem, const std::string& path, PathMode mode) {
  if (mode != PathMode::kNative && mode != PathMode::kURL) return false;
  const std::string native = mode == PathMode::kURL ? PathOf(path) : path;
  if (native.empty()) return false;
  if (Value* const property = FindProperty(folderItem, "NativePath")) *property = MakeValue(native);
  *FindProperty(folderItem, "URLPath") = MakeValue(URLOf(native));
  return true;
}

}  // namespace host
