// Named flag combinations for the rows of the tables. The bits are defined in plugin_interface.h and fixed by the
// host's interface.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The project types in which a declaration can be compiled.
inline constexpr std::uint32_t kAllProjects = kConsoleSafe;
inline constexpr std::uint32_t kDesktopWebConsole = kTargetDesktop | kTargetWeb | kTargetConsole;  // not mobile
inline constexpr std::uint32_t kDesktop = kTargetDesktop;

// Module members that are called without the module's name.
inline constexpr std::uint32_t kGlobal = kAllProjects | kGlobalScope;
inline constexpr std::uint32_t kGlobalDesktopWebConsole = kDesktopWebConsole | kGlobalScope;

// Methods that Xojo code cannot call.
inline constexpr std::uint32_t kPrivate = kAllProjects | kPrivateScope;

// Properties of an object, and properties without an object: module properties and shared class properties.
inline constexpr std::uint32_t kObjectProperty = kAllProjects | kPropertyBit;
inline constexpr std::uint32_t kPropertyWithoutObject = kObjectProperty | kSharedScope;

// Scripts and older tools rely on these values.
static_assert(kDesktopWebConsole == 0x308 && kDesktop == 0x200 && kAllProjects == 0x4);
static_assert(kGlobal == 0x14 && kGlobalDesktopWebConsole == 0x318 && kPrivate == 0x84);
static_assert(kObjectProperty == 0x6 && kPropertyWithoutObject == 0x26);

}  // namespace zkt
