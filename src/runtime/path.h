// Converts a folder item, or a string that contains a path, to a path for C library functions. The class name is fixed
// by the host's interface.
#pragma once

#include <memory>

#include "frame/contract/host_reference.h"

namespace zkt {

class rbPath {
 public:
  // Both functions take a borrowed argument, which may be nil, and retain it.
  static rbPath OfFolderItem(REALfolderItem folderItem);
  static rbPath OfString(REALstring path);

  // Returns the POSIX path as decomposed, zero-terminated UTF-8. The path is computed on first use and is valid for the
  // lifetime of this object. Returns null if the argument was nil, if the path is empty, or if the host cannot provide
  // the path.
  const char* GetUnixPath();

  // Returns the path without decomposing it, because file names on Linux are bytes and may contain composed characters.
  // Returns null in the same cases as GetUnixPath(). The result has the same lifetime.
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
