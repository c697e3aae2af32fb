#include "core/folder_items.h"

#include <cctype>
#include <cstdio>
#include <string_view>

#include "core/classes.h"
#include "core/exceptions.h"
#include "core/framework.h"
#include "core/host.h"

namespace host {

namespace {

constexpr std::string_view kFileScheme = "file://";

// Returns the file URL for a path. Escapes all bytes except ASCII letters, digits and a few punctuation marks.
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

// Returns the decoded path of a file:// URL; empty for any other string.
std::string DecodedPath(const std::string& url) {
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

Value MakeMode(PathMode mode) {
  return {{TypeKind::kEnumeration, false, "FolderItem.PathModes"}, static_cast<std::int64_t>(mode)};
}

void Initialize(REALobjectStruct* folderItem) {
  if (Host::Current().version < 2013.0) folderItem->properties.erase("NativePath");
}

// Raises an exception if the path is invalid or its parent folder does not exist. The item itself need not exist.
void Construct(REALobjectStruct* folderItem, const std::string& path, std::int64_t mode) {
  const bool isSet = SetPath(folderItem, path, static_cast<PathMode>(mode));
  std::error_code ignored;
  if (!isSet || !std::filesystem::exists(std::filesystem::absolute(PathOf(folderItem), ignored).parent_path(), ignored))
    Raise("UnsupportedFormatException", "there is no folder for the path \"" + path + "\"");
}
void ConstructNative(REALobjectStruct* folderItem, const std::string& path) {
  Construct(folderItem, path, static_cast<std::int64_t>(PathMode::kNative));
}

REALobjectStruct* MakeItem(const std::filesystem::path& path) {
  REALobjectStruct* const item = MakeObject(FindClass("FolderItem"));
  SetPath(item, path, PathMode::kNative);
  return item;
}

REALobjectStruct* Child(REALobjectStruct* folderItem, const std::string& name) {
  return MakeItem(PathOf(folderItem) / name);
}
REALobjectStruct* Parent(REALobjectStruct* folderItem) { return MakeItem(PathOf(folderItem).parent_path()); }
std::string Name(REALobjectStruct* folderItem) { return PathOf(folderItem).filename(); }
bool Exists(REALobjectStruct* folderItem) {
  std::error_code ignored;
  return std::filesystem::exists(PathOf(folderItem), ignored);
}
bool IsFolder(REALobjectStruct* folderItem) {
  std::error_code ignored;
  return std::filesystem::is_directory(PathOf(folderItem), ignored);
}
void Remove(REALobjectStruct* folderItem) {
  std::error_code error;
  if (!std::filesystem::remove(PathOf(folderItem), error)) Raise("IOException", "cannot remove the file");
}

// Every special folder is the current folder, so that scripts do not write to the user's real folders.
REALobjectStruct* SpecialFolder() { return MakeItem(std::filesystem::current_path()); }

}  // namespace

std::vector<ObjectClass*> FolderItemClasses() {
  const Value empty = DefaultValue(kStringType);
  return {new ObjectClass{
      .name = "FolderItem",
      .properties = {{"NativePath", empty}, {"URLPath", empty}},
      .isReadOnly = true,
      .initialize = Initialize,
      .scriptMethods = {{"Constructor()", Address(&ConstructNothing)},
                        {"Constructor(path As String)", Native<ConstructNative>()},
                        {"Constructor(path As String, mode As FolderItem.PathModes)", Native<Construct>()},
                        {"Child(name As String) As FolderItem", Native<Child>()},
                        {"Parent As FolderItem", Native<Parent>()},
                        {"Name As String", Native<Name>()},
                        {"Exists As Boolean", Native<Exists>()},
                        {"IsFolder As Boolean", Native<IsFolder>()},
                        {"Remove", Native<Remove>()}},
      .constants = {{"PathModes.Shell", MakeMode(PathMode::kShell)},
                    {"PathModes.URL", MakeMode(PathMode::kURL)},
                    {"PathModes.Native", MakeMode(PathMode::kNative)}}}};
}

std::vector<FrameworkMethod> FolderMethods() {
  std::vector<FrameworkMethod> methods;
  for (const char* const folder : {"UserHome As FolderItem", "Documents As FolderItem", "Desktop As FolderItem",
                                   "Temporary As FolderItem", "CurrentWorkingDirectory As FolderItem"})
    methods.push_back({"SpecialFolder", folder, Address(&SpecialFolder)});
  return methods;
}

std::filesystem::path PathOf(REALobjectStruct* folderItem) {
  return folderItem != nullptr ? DecodedPath(FindProperty(folderItem, "URLPath")->Text()) : "";
}

bool SetPath(REALobjectStruct* folderItem, const std::string& path, PathMode mode) {
  if (mode != PathMode::kNative && mode != PathMode::kURL) return false;
  const std::string native = mode == PathMode::kURL ? DecodedPath(path) : path;
  if (native.empty()) return false;
  if (Value* const property = FindProperty(folderItem, "NativePath")) *property = MakeValue(native);
  *FindProperty(folderItem, "URLPath") = MakeValue(URLOf(native));
  return true;
}

}  // namespace host
