// The process-wide state that the plug-in shares with the host: its version, interface level and names. REALPluginMain
// sets it. The names of the variables are fixed by the host's interface.
#pragma once

#include <cstdint>

namespace zkt {

// The host's version as year plus release as a fraction: 2019.02 is 2019 release 2. 0 if the host does not report it.
inline double rbversion = 0.0;

// The level of the plug-in interface that the host supports. Every registered record carries it.
inline std::int32_t CurrentREALControlVersion = 0;

// Names for log lines. Null until the host has called the entry point.
inline const char* gpartname = nullptr;
inline const char* gpluginname = nullptr;
inline bool gplugin = false;

}  // namespace zkt
