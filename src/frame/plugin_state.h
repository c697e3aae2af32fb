// What the plug-in is called and what it told the host, for the life of the process. REALPluginMain sets it.
#pragma once

#include <cstdint>

namespace zkt {

// The level of the plug-in interface that the host understands; every record that is handed over carries it.
inline std::int32_t CurrentREALControlVersion = 0;

// Names for log lines; null until the host has entered the plug-in.
inline const char* gpartname = nullptr;
inline const char* gpluginname = nullptr;
inline bool gplugin = false;

}  // namespace zkt
