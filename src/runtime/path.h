// A scoped reader of where a folder item is, or of a string that holds a path, for calls of the C library.
#pragma once

#include <memory>

#include "frame/contract/host_reference.h"

namespace zkt {

class rbPath {
 public:
  // Each takes a borrowed value, nil included, and holds it.
  static rbPath OfFolderItem(REALfolderItem folderItem);
  static rbPath OfString(REALstring path);

  // The POSIX path in UTF-8, decomposed and zero-terminated, made when first asked for and valid as long as this object
  // lives. Null for nil, for an empty path, and when the host does not tell.
  const char* GetUnixPath();

  // The same path with its characters as the host has them: on Linux names are bytes, and may be composed. Null where
  // GetUnixPath() is null, and valid as long.
  const char* GetPathAsGiven();

 private:
  rbPath(REALfolderItem folderItem, REALstring path);

  void MakePaths();

  bool areMade_ = false;
  std::unique_ptr<char[]> unixPath_;
  std::unique_ptr<char[]> pathAsGiven_;
  OwnedString pathString_;
  OwnedObject folderItem_;
};

}  // namespace zkt
