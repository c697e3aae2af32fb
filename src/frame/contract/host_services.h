// The host's services, one per line: signature, wrapper name, host name. The names are fixed by the host's interface. A
// call to an absent service does nothing and returns zero. No service is bound until its first call.
#pragma once

#include "frame/contract/host_service.h"

namespace zkt {

// The host's function that calls a delegate. Cast it to the delegate's type before calling it.
using DelegateInvoker = void (*)();

// clang-format off

// Registration. The host keeps pointers to the records.
inline constinit HostService<REALboolean()>               REALinRuntime              {"REALinRuntime"};
inline constinit HostService<void(REALmoduleDefinition*)> REALRegisterModule         {"PluginRegisterModule"};
inline constinit HostService<void(REALclassDefinition*)>  REALRegisterClass          {"PluginRegisterClass"};
inline constinit HostService<void(REALclassDefinition*)>  REALRegisterClassExtension {"PluginRegisterClassExtension"};
inline constinit HostService<void(REALmethodDefinition*)> REALRegisterMethod         {"PluginRegisterMethod"};

// Objects. The caller owns each new instance.
inline constinit HostService<REALobject(const char* className)>                         REALnewInstance         {"PluginNewInstance"};
inline constinit HostService<void(REALobject exception)>                                REALRaiseException      {"RuntimeRaiseException"};
inline constinit HostService<void(REALobject)>                                          REALLockObject          {"REALLockObject"};
inline constinit HostService<void(REALobject)>                                          REALUnlockObject        {"REALUnlockObject"};
inline constinit HostService<void*(REALobject, const char* declaration)>                REALLoadObjectMethod    {"REALLoadObjectMethod"};
inline constinit HostService<void*(REALobject, const char* declaration)>                REALLoadFrameworkMethod {"REALLoadGlobalMethod"};
inline constinit HostService<DelegateInvoker(REALobject, std::int64_t)>                 REALGetDelegateInvoker  {"PluginGetDelegateInvoker"};
inline constinit HostService<REALboolean(REALobject, std::int64_t* x, std::int64_t* y)> REALGetGraphicsOrigin   {"REALGetGraphicsOrigin"};

// Properties, accessed by name. The result is true if the access succeeded. The caller owns each string that it reads.
inline constinit HostService<REALboolean(REALobject, const char*, std::int64_t*)>  REALGetPropValueInteger {"REALGetPropValueInteger"};
inline constinit HostService<REALboolean(REALobject, const char*, double*)>        REALGetPropValueDouble  {"REALGetPropValueDouble"};
inline constinit HostService<REALboolean(REALobject, const char*, REALstring*)>    REALGetPropValueString  {"REALGetPropValueString"};
inline constinit HostService<REALboolean(REALobject, const char*, REALboolean*)>   REALGetPropValueBoolean {"REALGetPropValueBool"};
inline constinit HostService<REALboolean(REALobject, const char*, std::uint32_t*)> REALGetPropValueColor   {"REALGetPropValueColor"};
inline constinit HostService<REALboolean(REALobject, const char*, std::int64_t)>   REALSetPropValueInteger {"REALSetPropValueInteger"};
inline constinit HostService<REALboolean(REALobject, const char*, REALstring)>     REALSetPropValueString  {"REALSetPropValueString"};

// Strings. The caller owns each string that is built, converted or copied.
inline constinit HostService<void(REALstring)>                                                 REALLockString              {"REALLockString"};
inline constinit HostService<void(REALstring)>                                                 REALUnlockString            {"REALUnlockString"};
inline constinit HostService<REALstring(const void*, std::int64_t)>                            originalREALBuildString     {"REALBuildString"};
inline constinit HostService<REALstring(const void*, std::int64_t, std::uint32_t encoding)>    REALBuildStringWithEncoding {"REALBuildStringWithEncoding"};
inline constinit HostService<REALboolean(REALstring, std::uint32_t encoding, REALstringData*)> REALGetStringData           {"PluginGetStringData"};
inline constinit HostService<void(REALstringData*)>                                            REALDisposeStringData       {"PluginDisposeStringData"};
inline constinit HostService<const char*(REALstring)>                                          REALGetStringBytes          {"StringGetCString"};
inline constinit HostService<std::int64_t(REALstring)>                                         REALGetStringByteCount      {"LenB( s as string ) as integer", &LoadFrameworkMethod};
inline constinit HostService<std::uint32_t(REALstring)>                                        REALGetStringEncoding       {"REALGetStringEncoding"};
inline constinit HostService<void(REALstring, std::uint32_t encoding)>                         REALSetStringEncoding       {"REALSetStringEncoding"};
inline constinit HostService<REALstring(REALstring, std::uint32_t encoding)>                   REALConvertString           {"REALConvertString"};
inline constinit HostService<const void*(REALstring)>                                          REALGetStringCFString       {"REALGetStringCFString"};
inline constinit HostService<const void*(REALstring)>                                          REALCopyStringCFString      {"REALGetStringCFString"};
inline constinit HostService<std::int32_t(REALstring, REALstring)>                             REALCompareStrings          {"RuntimeStringCompare"};

// Arrays. REALReadArrayString adds a reference to the string. REALGetArrayString calls it only if direct access is not
// possible. The caller owns each new array and releases it with REALUnlockObject.
inline constinit HostService<std::int64_t(const void* array)>                               REALGetArrayUBound  {"RuntimeUBound"};
inline constinit HostService<REALobject(std::int64_t elementType, std::int64_t upperBound)> REALCreateArray     {"RuntimeArrayCreateSingleDimBoundedArray"};
inline constinit HostService<REALstring(_REALarrayString*, std::int64_t index)>             REALReadArrayString {"RuntimeDirectReadStringArray"};

// Single array elements. The reader takes an index, the writer a value and an index, and the inserters an index and a
// value.
inline constinit ArrayProcedure<std::int64_t(std::int64_t index), _REALarrayInteger>              REALGetArrayValueInteger     {"PluginIntegerArrayGetProc"};
inline constinit ArrayProcedure<void(std::int64_t value, std::int64_t index), _REALarrayInteger>  REALSetArrayValueInteger     {"PluginIntegerArraySetProc"};
inline constinit ArrayProcedure<void(std::int64_t index, REALboolean value), _REALarrayBoolean>   REALInsertArrayValueBoolean  {"PluginBooleanArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, std::uint32_t value), _REALarrayColor>   REALInsertArrayValueColor    {"PluginColorArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, std::int64_t value), _REALarrayCurrency> REALInsertArrayValueCurrency {"PluginCurrencyArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, double value), _REALarrayDouble>         REALInsertArrayValueDouble   {"PluginDoubleArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, std::int32_t value), _REALarrayInt32>    REALInsertArrayValueInt32    {"PluginInt32ArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, std::int64_t value), _REALarrayInt64>    REALInsertArrayValueInt64    {"PluginInt64ArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, REALobject value), _REALarrayObject>     REALInsertArrayValueObject   {"PluginObjectArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, void* value), _REALarrayPtr>             REALInsertArrayValuePtr      {"PluginIntegerArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, float value), _REALarraySingle>          REALInsertArrayValueSingle   {"PluginSingleArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, REALstring value), _REALarrayString>     REALInsertArrayValueString   {"PluginStringArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, std::uint32_t value), _REALarrayUInt32>  REALInsertArrayValueUInt32   {"PluginUInt32ArrayInsertProc"};
inline constinit ArrayProcedure<void(std::int64_t index, std::uint64_t value), _REALarrayUInt64>  REALInsertArrayValueUInt64   {"PluginUInt64ArrayInsertProc"};

// clang-format on

// A string's bytes in its own encoding. They are valid as long as a reference to the string is held.
struct StringContents {
  const char* bytes = nullptr;  // null if the host cannot provide them
  std::int64_t count = 0;       // 0 if the host cannot provide it
};

inline StringContents REALGetStringContents(REALstring string) {
  return {REALGetStringBytes(string), REALGetStringByteCount(string)};
}

}  // namespace zkt
