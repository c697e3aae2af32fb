// The host's FolderItem class: a native path and its URL. Hosts before 2013 offer only the URL.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "core/objects.h"

namespace host {

// The format of the path that a FolderItem is created from. The values are those of Xojo's FolderItem.PathModes.
enum class PathMode : std::int64_t { kShell = 1, kURL = 2, kNative = 3 };

// Returns the item's path; empty for nil.
std::filesystem::path PathOf(REALobjectStruct* folderItem);

// Sets the item's path. Returns false for an unsupported mode, an empty path or an invalid file URL.
bool SetPath(REALobjectStruct* folderItem, const std::string& path, PathMode mode);

}  // namespace host
