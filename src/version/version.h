// The version of this build.
#pragma once

namespace zkt {

// "@(#)ZKTUtil VERSION, commit HASH". The first four characters are the mark by which the program "what", and the
// doctor, find the version in a file. Nothing in the plug-in refers to the text: the linker keeps it for whoever reads
// the file.
extern const char kVersionText[];

// Returns the text without its mark.
inline const char* Version() { return kVersionText + 4; }

}  // namespace zkt
