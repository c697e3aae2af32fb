// The contract with the host: opaque values, the declaration records it reads, flags, encodings and type codes.
// The host shares these layouts byte for byte; every record is frozen by static_assert beside its definition.
#pragma once

#include <cstddef>
#include <cstdint>

// Values of the host. They are reference counted, and only the host may look inside.
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

// A Boolean is one byte, and any value but 0 is true: no C++ bool crosses the boundary, whose other values are
// undefined.
using REALboolean = std::uint8_t;

// Values whose C++ type would else be that of another Xojo type.
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

// Finds a host service by its name; null when the host has none of that name.
using Resolver = void* (*)(const char* name);

// Text encodings, numbered like the platform's CFStringEncoding.
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

// Flags of declarations. The target bits say in which kinds of project a declaration may be compiled.
enum DeclarationFlags : std::uint32_t {
  kPropertyBit = 0x2,  // every property carries it
  kConsoleSafe = 0x4,  // may be used everywhere
  kTargetConsole = 0x8,
  kGlobalScope = 0x10,  // members of a module that are called without its name
  kSharedScope = 0x20,  // properties that belong to no object
  kDefaultScope = 0x40,
  kPrivateScope = 0x80,
  kScopeMask = 0xF0,
  kTargetWeb = 0x100,
  kTargetDesktop = 0x200,
  kTargetIOS = 0x400,
  kTargetMask = 0x708,
  kTargetAndConsoleMask = 0x70C,
  // Our own markers, which are gone before the host sees the flags.
  kConsoleSafeFrom2010r3 = 0x40000,
  kNeedsHost2019r2 = 0x80000000,  // the declaration names what older hosts cannot compile
};

// The version that records carry in the tables; registration writes the host's interface level over it.
inline constexpr std::uint32_t kCurrentREALControlVersion = 15;

// Accessor that makes the host read or write the instance data itself, at the offset in the property's parameter.
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
  std::int64_t parameter;  // offset into the instance data; the low signed 32 bits count
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

// A class, and a class extension too.
struct REALclassDefinition {
  std::uint32_t version = 0;
  const char* name = nullptr;
  const char* superName = nullptr;
  std::uint64_t dataSize = 0;  // bytes of instance data
  // 0 when handed over. The host writes the offset of the instance data inside the object here, so that the record
  // must stay alive for the life of the process.
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

// A string's bytes, borrowed from the host in some encoding. The host keeps its own notes in the last words.
struct REALstringData {
  const char* data;
  std::int64_t length;  // bytes
  std::uint64_t hostPrivate[14];
};

}  // namespace zkt
