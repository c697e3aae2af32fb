// The host's class FolderItem: a path, natively and as a URL. Hosts before 2013 offer the URL only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/objects.h"

namespace host {

// How the path that a folder item is made of is written; the numbers of Xojo's enumeration FolderItem.PathModes.
enum class PathMode : std::int64_t { kShell = 1, kURL = 2, kNative = 3 };

std::vector<ObjectClass*> FolderItemClasses();

bool IsFolderItem(const ObjectClass* type);

// False for a mode that is not known here and for a URL that is none.
bool SetPath(REALobjectStruct* folderItem, const std::string& path, PathMode mode);

}  // namespace host
