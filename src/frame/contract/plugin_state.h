// Process-wide state: the host's version and interface level, and the plug-in's names. REALPluginMain sets it. The
// variable names are fixed by the host's interface.
#pragma once

#include <cstdint>

namespace zkt {

// The host's version: the year plus a hundredth of the release number, such as 2019.02 for 2019 release 2. It is 0 if
// the host does not report its version.
inline double rbversion = 0.0;

// The level of the plug-in interface that the host supports. Every registered record contains it.
inline std::int32_t CurrentREALControlVersion = 0;

// The plug-in's names, which are null until start-up. gplugin is true after start-up.
inline const char* gpartname = nullptr;
inline const char* gpluginname = nullptr;
inline bool gplugin = false;

}  // namespace zkt
