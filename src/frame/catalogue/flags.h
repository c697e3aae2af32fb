// The flags that rows carry, by name. The bits themselves belong to the host: plugin_interface.h.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// In which kinds of project a declaration can be compiled.
inline constexpr std::uint32_t kAllProjects = kConsoleSafe;
inline constexpr std::uint32_t kDesktopWebConsole = kTargetDesktop | kTargetWeb | kTargetConsole;  // not mobile
inline constexpr std::uint32_t kDesktop = kTargetDesktop;

// Members of a module that are called without its name.
inline constexpr std::uint32_t kGlobal = kAllProjects | kGlobalScope;
inline constexpr std::uint32_t kGlobalDesktopWebConsole = kDesktopWebConsole | kGlobalScope;

// Methods that Xojo code cannot call.
inline constexpr std::uint32_t kPrivate = kAllProjects | kPrivateScope;

// Properties of an object, and those without one: of a module, or shared by a class.
inline constexpr std::uint32_t kObjectProperty = kAllProjects | kPropertyBit;
inline constexpr std::uint32_t kPropertyWithoutObject = kObjectProperty | kSharedScope;

// The values that scripts and older tools know.
static_assert(kDesktopWebConsole == 0x308 && kDesktop == 0x200 && kAllProjects == 0x4);
static_assert(kGlobal == 0x14 && kGlobalDesktopWebConsole == 0x318 && kPrivate == 0x84);
static_assert(kObjectProperty == 0x6 && kPropertyWithoutObject == 0x26);

}  // namespace zkt
