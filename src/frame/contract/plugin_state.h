// What the plug-in knows of the host, is called, and told the host, for the life of the process. REALPluginMain sets
// it.
#pragma once

#include <cstdint>

namespace zkt {

// The host's version as year plus release as a fraction: 2019.02 is 2019 release 2. 0 when the host does not tell.
inline double rbversion = 0.0;

// The level of the plug-in interface that the host understands; every record that is handed over carries it.
inline std::int32_t CurrentREALControlVersion = 0;

// Names for log lines; null until the host has entered the plug-in.
inline const char* gpartname = nullptr;
inline const char* gpluginname = nullptr;
inline bool gplugin = false;

}  // namespace zkt
