// The version of this build.
#pragma once

namespace zkt {

// The version string: "@(#)ZKTUtil VERSION, commit HASH". The first four characters are a marker by which the "what"
// command and the doctor tool find the string in a file. No code in the plug-in refers to the string, but the linker
// keeps it for these tools.
extern const char kVersionText[];

// Returns the version string without its marker.
inline const char* Version() { return kVersionText + 4; }

}  // namespace zkt
