// Reads the path of a folder item, or of a string that holds a path, for calls of the C library. The name rbPath is
// fixed by the host's interface.
#pragma once

#include <memory>

#include "frame/contract/host_reference.h"

namespace zkt {

class rbPath {
 public:
  // Each takes a borrowed value, which may be nil, and retains it.
  static rbPath OfFolderItem(REALfolderItem folderItem);
  static rbPath OfString(REALstring path);

  // Returns the POSIX path in UTF-8, decomposed and zero-terminated. It is computed on first use and valid as long as
  // this object lives. Null for nil, for an empty path, and if the host cannot provide it.
  const char* GetUnixPath();

  // Returns the same path with the host's own characters: on Linux, names are bytes and may be composed. Null whenever
  // GetUnixPath() is null, with the same lifetime.
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
