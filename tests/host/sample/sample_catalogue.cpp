// Declarations of every kind, for a plug-in that exists only in the tests. That plug-in consists of the real plug-in's
// object files, but registers these declarations instead of the real ones.
#include <cstddef>
#include <vector>

#include "frame/catalogue/catalogue.h"
#include "frame/catalogue/debugging_property.h"
#include "frame/catalogue/rows.h"
#include "frame/contract/host_reference.h"
#include "frame/contract/instance_data.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/text_builder.h"
#include "runtime/text_reader.h"

namespace zkt {

namespace {

REALstring Build(std::string_view text) {
  return REALBuildUnicodeString(text.data(), static_cast<long long>(text.size()), kEncodingUTF8);
}

// A class whose instance data has a field of every possible type.
struct CounterData {
  REALstring name;
  std::int64_t count;
  double weight;
  REALobject owner;
  REALboolean isOpen;
};
static_assert(offsetof(CounterData, isOpen) == 32);

extern REALclassDefinition gCounter;

CounterData* Data(REALobject object) { return InstanceData<CounterData>(gCounter, object); }

int gAlive = 0;

void InitializeCounter(REALobject) { ++gAlive; }

void FinalizeCounter(REALobject object) {
  --gAlive;
  REALLockObject(object);  // simulates a trace that passes the object to a function
  REALUnlockObject(object);
  REALUnlockString(Data(object)->name);
  REALUnlockObject(Data(object)->owner);
}

void ConstructEmpty(REALobject) {}

void ConstructNamed(REALobject object, REALstring name, std::int64_t count) {
  REALLockString(name);
  Data(object)->name = name;
  Data(object)->count = count;
  Data(object)->isOpen = true;
}

std::int64_t CountUp(REALobject object, std::int64_t step) { return Data(object)->count += step; }

void Own(REALobject object, REALobject owner) {
  REALLockObject(owner);
  REALUnlockObject(Data(object)->owner);
  Data(object)->owner = owner;
}

REALdateTime Modern(REALobject, REALdateTime date) { return date; }

double GetWeight(REALobject object, std::int64_t factor) { return Data(object)->weight * static_cast<double>(factor); }
void SetWeight(REALobject object, std::int64_t factor, double weight) {
  Data(object)->weight = weight / static_cast<double>(factor);
}

REALobject MakeCounter(REALstring name) {
  OwnedObject counter(REALnewInstance("CounterZKT"));
  if (counter) ConstructNamed(counter.Get(), name, 0);
  return counter.Release();
}

std::int64_t CountAlive() { return gAlive; }

// clang-format off
REALproperty gCounterProperties[] = {
    FieldProperty("Name", "String", ZKT_FIELD(CounterData, name), kReadWrite, 0x6),
    FieldProperty("Count", "Integer", ZKT_FIELD(CounterData, count), kReadOnly, 0x6),
    FieldProperty("Owner", "Variant", ZKT_FIELD(CounterData, owner), kReadOnly, 0x6),
    FieldProperty("IsOpen", "Boolean", ZKT_FIELD(CounterData, isOpen), kReadWrite, 0x6),
    AccessorProperty("Weight", "Double", GetWeight, SetWeight, 0x6, 2),
};

REALmethodDefinition gCounterMethods[] = {
    ObjectMethod("Constructor", ConstructEmpty, 0x4),
    ObjectMethod("Constructor(name as string, count as Integer = 5)", ConstructNamed, 0x4),
    ObjectMethod("CountUp(step as Integer = 1) as Integer", CountUp, 0x308),
    ObjectMethod("Own(owner as Variant)", Own, 0x40000),
    ObjectMethod("Modern(value as DateTime) as DateTime", Modern, 0x4 | kNeedsHost2019r2),
};

REALproperty gCounterSharedProperties[] = {DebuggingProperty()};

REALmethodDefinition gCounterSharedMethods[] = {
    Method("Make(name as string) as CounterZKT", MakeCounter, 0x4),
    Method("CountAlive as Integer", CountAlive, 0x4),
};
// clang-format on

REALclassDefinition gCounter = {
    .version = 15,
    .name = "CounterZKT",
    .dataSize = sizeof(CounterData),
    .constructor = reinterpret_cast<void*>(InitializeCounter),
    .destructor = reinterpret_cast<void*>(FinalizeCounter),
    .properties = gCounterProperties,
    .propertyCount = std::size(gCounterProperties),
    .methods = gCounterMethods,
    .methodCount = std::size(gCounterMethods),
    .flags = 0x4,
    .sharedProperties = gCounterSharedProperties,
    .sharedPropertyCount = std::size(gCounterSharedProperties),
    .sharedMethods = gCounterSharedMethods,
    .sharedMethodCount = std::size(gCounterSharedMethods),
};

// A second class, whose instance data has a different offset.
REALclassDefinition gFailure = {
    .version = 15,
    .name = "FailureExceptionZKT",
    .superName = "RuntimeException",
    .flags = 0x4,
};

// A module with a native function for every type that a declaration can name.
template <class Value>
Value Same(Value value) {
  return value;
}
REALcurrency Halve(REALcurrency value) { return static_cast<REALcurrency>(static_cast<std::int64_t>(value) / 2); }
REALcolor Invert(REALcolor value) { return static_cast<REALcolor>(~static_cast<std::uint32_t>(value) & 0xFFFFFF); }
REALstring Join(REALstring a, REALstring b) {
  return Build(std::string(rbText(a).GetUTF8()) + "+" + std::string(rbText(b).GetUTF8()));
}
void Exchange(double* a, double* b) { std::swap(*a, *b); }
REALboolean Rename(REALstring* text) {
  REALUnlockString(*text);
  *text = Build("renamed");
  return true;
}
std::int64_t LastIndex(_REALarrayInt32* values) { return REALGetArrayUBound(values); }
std::int64_t LastIndexOfStrings(_REALarrayString* values) { return REALGetArrayUBound(values); }
REALobject SameObject(REALobject object) {
  REALLockObject(object);
  return object;
}
void Fail(REALstring message, std::int64_t number) {
  RaiseException("FailureExceptionZKT", std::string(rbText(message).GetUTF8()).c_str(), number);
}

std::int64_t CallOnInt32(REALobject delegate, std::int32_t a, std::int32_t b) {
  using Compare = std::int64_t (*)(REALobject, std::int32_t, std::int32_t);
  const auto compare = reinterpret_cast<Compare>(REALGetDelegateInvoker(delegate, 0));
  return compare != nullptr ? compare(delegate, a, b) : 99;
}
std::int64_t CallOnStrings(REALobject delegate, REALstring a, REALstring b) {
  using Compare = std::int64_t (*)(REALobject, REALstring, REALstring);
  const auto compare = reinterpret_cast<Compare>(REALGetDelegateInvoker(delegate, 0));
  return compare != nullptr ? compare(delegate, a, b) : 99;
}

// Assigns another string to the caller's variable, and then calls the delegate.
void Act(REALobject action, REALstring* text) {
  REALUnlockString(*text);
  *text = Build("while acting");
  if (auto* const invoker = REALGetDelegateInvoker(action, 0)) reinterpret_cast<void (*)(REALobject)>(invoker)(action);
}

// Overloads of two methods. Each overload of a method returns a different number, so the result shows which was called.
std::int64_t PickInt32(std::int32_t) { return 1; }
std::int64_t PickWithDefault(std::int32_t, std::int64_t) { return 2; }
std::int64_t PickDouble(double) { return 3; }
std::int64_t TieFirst(std::int32_t, std::int64_t) { return 1; }
std::int64_t TieSecond(std::int64_t, std::int32_t) { return 2; }

std::int64_t gTicks = 0;
std::int64_t Tick() { return ++gTicks; }

std::int64_t gLevel = 3;
std::int64_t GetLevel() { return gLevel; }
void SetLevel(std::int64_t level) { gLevel = level; }
void AssignLevel(std::int64_t factor, std::int64_t level) { gLevel = factor * level; }
void AssignLevelOf(REALstring text, std::int64_t level) {
  gLevel = level + static_cast<std::int64_t>(rbText(text).GetUTF8().size());
}

// clang-format off
REALmethodDefinition gToolMethods[] = {
    Method("SameZKT(value as Boolean) as Boolean", Same<REALboolean>, 0x14),
    Method("SameZKT(value as Int32) as Int32", Same<std::int32_t>, 0x14),
    Method("SameZKT(value as Int64) as Int64", Same<std::int64_t>, 0x14),
    Method("SameZKT(value as UInt32) as UInt32", Same<std::uint32_t>, 0x14),
    Method("SameZKT(value as UInt64) as UInt64", Same<std::uint64_t>, 0x14),
    Method("SameZKT(value as Single) as Single", Same<float>, 0x14),
    Method("SameZKT(value as Double) as Double", Same<double>, 0x14),
    Method("SameZKT(value as Ptr) as Ptr", Same<void*>, 0x14),
    Method("HalveZKT(value as Currency) as Currency", Halve, 0x14),
    Method("InvertZKT(value as Color) as Color", Invert, 0x14),
    Method("JoinZKT(extends a as string, b as string = \"(none)\") as string", Join, 0x14),
    Method("ExchangeZKT(byref a as double, byref b as double)", Exchange, 0x14),
    Method("RenameZKT(byref text as string) as boolean", Rename, 0x14),
    Method("LastIndexZKT(extends values() as Int32) as Integer", LastIndex, 0x14),
    Method("LastIndexZKT(extends values() as String) as Integer", LastIndexOfStrings, 0x14),
    Method("SameObjectZKT(value as CounterZKT) as CounterZKT", SameObject, 0x14),
    Method("FailZKT(message as string, number as Integer = -1)", Fail, 0x14),
    Method("CompareZKT(theDelegate as CompareInt32ZKT, a as Int32, b as Int32) as Integer", CallOnInt32, 0x14),
    Method("CompareZKT(theDelegate as CompareStringZKT, a as String, b as String) as Integer", CallOnStrings, 0x14),
    Method("ActZKT(action as ActionZKT, byref text as String)", Act, 0x14),
    Method("PickZKT(value as Int32) as Integer", PickInt32, 0x14),
    Method("PickZKT(value as Int32, more as Integer = 0) as Integer", PickWithDefault, 0x14),
    Method("PickZKT(value as Double) as Integer", PickDouble, 0x14),
    Method("TieZKT(a as Int32, b as Int64) as Integer", TieFirst, 0x14),
    Method("TieZKT(a as Int64, b as Int32) as Integer", TieSecond, 0x14),
    Method("LevelZKT(factor as Integer = 2, assigns value as Integer)", AssignLevel, 0x14),
    Method("LevelOfZKT(extends text as String, assigns value as Integer)", AssignLevelOf, 0x14),
    Method("HiddenZKT as Integer", GetLevel, 0x4),
    Method("ModernZKT as Integer", GetLevel, 0x14 | kNeedsHost2019r2),
};

REALproperty gToolProperties[] = {
    SharedProperty("Level", "Integer", GetLevel, SetLevel, 0x26),
    SharedProperty("FixedLevel", "Integer", GetLevel, nullptr, 0x6),
    SharedProperty("Ticks", "Integer", Tick, nullptr, 0x6),
};

REALdelegate gToolDelegates[] = {
    Delegate<void()>("ActionZKT", 0x4),
    Delegate<std::int64_t(std::int32_t, REALstring)>("UnlikeZKT(v1 as Int32, v2 as String) as Integer", 0x4),
    Delegate<std::int64_t(std::int32_t, std::int32_t)>("CompareInt32ZKT(v1 as Int32, v2 as Int32) as Integer", 0x4),
    Delegate<std::int64_t(REALstring, REALstring)>("CompareStringZKT(v1 as String, v2 as String) as Integer", 0x4),
    Delegate<std::int64_t(REALdateTime, REALdateTime)>("CompareDateTimeZKT(v1 as DateTime, v2 as DateTime) as Integer", 0x4 | kNeedsHost2019r2),
};
// clang-format on

REALmoduleDefinition gTools = {
    .version = 15,
    .name = "ToolsZKT",
    .methods = gToolMethods,
    .methodCount = std::size(gToolMethods),
    .properties = gToolProperties,
    .propertyCount = std::size(gToolProperties),
    .delegates = gToolDelegates,
    .delegateCount = std::size(gToolDelegates),
};

// A class extension whose second method also has a setter.
std::int64_t Area(REALobject, std::int64_t scale) { return 6 * scale; }
std::int64_t gWidth = 2;
std::int64_t Width(REALobject) { return gWidth; }
void SetWidth(REALobject, std::int64_t width) { gWidth = width; }

REALmethodDefinition gExtensionMethods[] = {
    ObjectMethod("AreaZKT(scale as integer = 1) as integer", Area, 0x200),
    {reinterpret_cast<void*>(Width), reinterpret_cast<void*>(SetWidth), "WidthZKT as Integer", 0x200, 0, nullptr},
};

REALclassDefinition gExtension = {
    .version = 15,
    .name = "Graphics",
    .methods = gExtensionMethods,
    .methodCount = std::size(gExtensionMethods),
    .flags = 0x200,
};

REALmethodDefinition gGlobals[] = {
    Method("GlobalZKT(value as Int64) as Int64", Same<std::int64_t>, 0x4),
    Method("GlobalDesktopZKT as Integer", GetLevel, 0x308),
    Method("GlobalModernZKT as Integer", GetLevel, 0x4 | kNeedsHost2019r2),
};

const ClassOrModule kSince2013[] = {&gFailure, &gTools};
REALclassDefinition* const kClasses[] = {&gCounter};

}  // namespace

std::span<const ClassOrModule> DeclarationsSince2013() { return kSince2013; }
REALclassDefinition* GraphicsExtension() { return &gExtension; }
std::span<REALclassDefinition* const> Classes() { return kClasses; }
std::span<REALmethodDefinition> GlobalMethods() { return gGlobals; }

}  // namespace zkt
