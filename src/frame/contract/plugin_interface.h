// The host's plug-in interface: opaque types, declaration records, flags, encodings and type codes. The names are fixed
// by the interface. The host uses exactly the same memory layouts, so a static_assert next to each record checks its
// layout.
#pragma once

#include <cstddef>
#include <cstdint>

// Opaque host types. Their values are reference counted, and only the host may access their contents.
struct REALstringStruct;
struct REALobjectStruct;
struct _REALdate;
struct _REALdateTime;

using REALstring = REALstringStruct*;
using REALobject = REALobjectStruct*;
using REALdate = _REALdate*;
using REALdateTime = _REALdateTime*;
using REALgraphics = REALobject;
using REALfolderItem = REALobject;

// A Boolean is one byte, and any value except 0 is true. C++ bool never crosses the boundary, because reading a bool
// that is neither 0 nor 1 is undefined behavior.
using REALboolean = std::uint8_t;

// Distinct C++ types for Xojo types that would otherwise share their C++ type with another Xojo type.
enum class REALcolor : std::uint32_t {};    // 0x00RRGGBB
enum class REALcurrency : std::int64_t {};  // scaled by 10,000

// Host arrays, one type for each element type.
struct _REALarrayBoolean;
struct _REALarrayColor;
struct _REALarrayCurrency;
struct _REALarrayDate;
struct _REALarrayDateTime;
struct _REALarrayDouble;
struct _REALarrayInt32;
struct _REALarrayInt64;
struct _REALarrayInteger;
struct _REALarrayObject;
struct _REALarrayPtr;
struct _REALarraySingle;
struct _REALarrayString;
struct _REALarrayUInt32;
struct _REALarrayUInt64;
struct _REALarrayVariant;

namespace zkt {

// Finds a host service by name. Returns null if the host does not have it.
using Resolver = void* (*)(const char* name);

// Text encodings. The numbers are those of CFStringEncoding.
enum Encoding : std::uint32_t {
  kEncodingMacRoman = 0x0000,
  kEncodingUTF16 = 0x0100,  // in host byte order
  kEncodingISOLatin1 = 0x0201,
  kEncodingWindowsLatin1 = 0x0500,
  kEncodingASCII = 0x0600,
  kEncodingNone = 0xFFFF,  // raw bytes
  kEncodingUTF8 = 0x08000100,
  kEncodingUTF32 = 0x0C000100,
  kEncodingUTF16BE = 0x10000100,
  kEncodingUTF16LE = 0x14000100,
  kEncodingUTF32BE = 0x18000100,
  kEncodingUTF32LE = 0x1C000100,
};

// Element types of arrays that the plug-in creates.
enum ArrayElementType : std::int64_t {
  kArrayOfString = 3,
  kArrayOfInteger = 11,
};

// Declaration flags. The target bits select the project types in which a declaration can be compiled.
enum DeclarationFlags : std::uint32_t {
  kPropertyBit = 0x2,  // set in every property
  kConsoleSafe = 0x4,  // available everywhere
  kTargetConsole = 0x8,
  kGlobalScope = 0x10,  // module members that are called without the module's name
  kSharedScope = 0x20,  // properties without an object
  kDefaultScope = 0x40,
  kPrivateScope = 0x80,
  kScopeMask = 0xF0,
  kTargetWeb = 0x100,
  kTargetDesktop = 0x200,
  kTargetIOS = 0x400,
  kTargetMask = 0x708,
  kTargetAndConsoleMask = 0x70C,
  // The plug-in's own markers, which are removed before the host sees the flags.
  kConsoleSafeFrom2010r3 = 0x40000,
  kNeedsHost2019r2 = 0x80000000,  // the declaration is removed on older hosts
};

// The version of the records in the tables. Registration replaces it with the host's interface level.
inline constexpr std::uint32_t kCurrentREALControlVersion = 15;

// Used instead of an accessor function. Tells the host to access the instance data itself, at the offset in the
// property's parameter.
inline void* const kStandardAccessor = reinterpret_cast<void*>(~std::uintptr_t{0});

struct REALattribute {
  const char* name;
  const char* value;
};
static_assert(sizeof(REALattribute) == 16);

struct REALmethodDefinition {
  void* function;
  void* setter;
  const char* declaration;
  std::uint32_t flags;
  std::uint64_t attributeCount;
  const REALattribute* attributes;
};
static_assert(sizeof(REALmethodDefinition) == 48);
static_assert(offsetof(REALmethodDefinition, declaration) == 16);
static_assert(offsetof(REALmethodDefinition, flags) == 24);
static_assert(offsetof(REALmethodDefinition, attributeCount) == 32);

struct REALproperty {
  const char* group;
  const char* name;
  const char* type;
  std::uint32_t flags;
  void* getter;
  void* setter;
  std::int64_t parameter;  // offset into the instance data; only the low 32 bits are used, as a signed number
  const void* editor;
  std::uint64_t enumCount;
  const char* const* enumEntries;
  std::uint64_t attributeCount;
  const REALattribute* attributes;
};
static_assert(sizeof(REALproperty) == 96);
static_assert(offsetof(REALproperty, flags) == 24);
static_assert(offsetof(REALproperty, getter) == 32);
static_assert(offsetof(REALproperty, parameter) == 48);
static_assert(offsetof(REALproperty, attributeCount) == 80);

struct REALconstant {
  const char* declaration;
  std::uint64_t reserved[2];
  std::uint64_t attributeCount;
  const REALattribute* attributes;
};
static_assert(sizeof(REALconstant) == 40);

struct REALevent {
  const char* declaration;
  std::uint64_t reserved;
  std::uint64_t attributeCount;
  const REALattribute* attributes;
};
static_assert(sizeof(REALevent) == 32);

struct REALdelegate {
  const char* declaration;
  std::uint32_t flags;
  std::uint64_t attributeCount;
  const REALattribute* attributes;
};
static_assert(sizeof(REALdelegate) == 32);
static_assert(offsetof(REALdelegate, attributeCount) == 16);

struct REALenum {
  std::uint64_t reserved1[2];
  std::uint32_t flags;
  std::uint64_t reserved2[4];
};
static_assert(sizeof(REALenum) == 56);
static_assert(offsetof(REALenum, flags) == 16);

struct REALmoduleDefinition {
  std::uint32_t version = 0;
  const char* name = nullptr;
  REALmethodDefinition* methods = nullptr;
  std::uint64_t methodCount = 0;
  REALconstant* constants = nullptr;
  std::uint64_t constantCount = 0;
  REALproperty* properties = nullptr;
  std::uint64_t propertyCount = 0;
  const void* structures = nullptr;
  std::uint64_t structureCount = 0;
  REALenum* enums = nullptr;
  std::uint64_t enumCount = 0;
  const REALattribute* attributes = nullptr;
  std::uint64_t attributeCount = 0;
  REALdelegate* delegates = nullptr;
  std::uint64_t delegateCount = 0;
  std::uint64_t reserved1[7] = {};
  std::uint32_t flags = 0;
  std::uint64_t reserved2[2] = {};
};
static_assert(sizeof(REALmoduleDefinition) == 208);
static_assert(offsetof(REALmoduleDefinition, methods) == 16);
static_assert(offsetof(REALmoduleDefinition, delegateCount) == 120);
static_assert(offsetof(REALmoduleDefinition, flags) == 184);

// A class or a class extension.
struct REALclassDefinition {
  std::uint32_t version = 0;
  const char* name = nullptr;
  const char* superName = nullptr;
  std::uint64_t dataSize = 0;  // the size of the instance data in bytes
  // Must be 0 at registration. The host writes the offset of the instance data here, so the record must live as long as
  // the process.
  std::uint64_t forSystemUse = 0;
  void* constructor = nullptr;
  void* destructor = nullptr;
  REALproperty* properties = nullptr;
  std::uint64_t propertyCount = 0;
  REALmethodDefinition* methods = nullptr;
  std::uint64_t methodCount = 0;
  REALevent* events = nullptr;
  std::uint64_t eventCount = 0;
  const void* eventInstances = nullptr;
  std::uint64_t eventInstanceCount = 0;
  const char* interfaces = nullptr;
  const REALattribute* attributes = nullptr;
  std::uint64_t attributeCount = 0;
  REALconstant* constants = nullptr;
  std::uint64_t constantCount = 0;
  std::uint32_t flags = 0;
  REALproperty* sharedProperties = nullptr;
  std::uint64_t sharedPropertyCount = 0;
  REALmethodDefinition* sharedMethods = nullptr;
  std::uint64_t sharedMethodCount = 0;
  REALdelegate* delegates = nullptr;
  std::uint64_t delegateCount = 0;
  REALenum* enums = nullptr;
  std::uint64_t enumCount = 0;
};
static_assert(sizeof(REALclassDefinition) == 232);
static_assert(offsetof(REALclassDefinition, dataSize) == 24);
static_assert(offsetof(REALclassDefinition, forSystemUse) == 32);
static_assert(offsetof(REALclassDefinition, interfaces) == 120);
static_assert(offsetof(REALclassDefinition, flags) == 160);
static_assert(offsetof(REALclassDefinition, enumCount) == 224);

// A string's bytes in a requested encoding, borrowed from the host. The last words are private to the host.
struct REALstringData {
  const char* data;
  std::int64_t length;  // in bytes
  std::uint64_t hostPrivate[14];
};

}  // namespace zkt
