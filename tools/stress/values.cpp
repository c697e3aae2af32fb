#include "stress/values.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <limits>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/dates.h"
#include "core/folder_items.h"
#include "core/graphics.h"
#include "core/strings.h"
#include "declarations/conversion.h"
#include "declarations/errors.h"
#include "declarations/value_order.h"
#include "stress/faults.h"
#include "stress/random.h"

namespace stress {

using host::ObjectRef;
using host::TypeKind;
using host::Value;

namespace {

using Limits = std::numeric_limits<std::int64_t>;

// clang-format off
constexpr std::int64_t kIntegers[] = {
    0, 1, -1, -2, 2, 3, 127, 128, 255, 256, 1900, 2000, INT32_MAX, INT32_MIN, UINT32_MAX, std::int64_t{1} << 32,
    Limits::max(), Limits::max() - 1, Limits::min(), Limits::min() + 1};
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kReals[] = {
    0.0, -0.0, 1.0, -1.0, 0.5, 45.0, 1e9, -1e18, 0x1p63, std::numeric_limits<double>::quiet_NaN(), kInfinity, -kInfinity,
    DBL_MAX, -DBL_MAX, DBL_MIN, DBL_TRUE_MIN};
constexpr std::uint32_t kEncodings[] = {
    zkt::kEncodingMacRoman,      zkt::kEncodingISOLatin1, zkt::kEncodingWindowsLatin1, zkt::kEncodingASCII,
    zkt::kEncodingUTF8,          zkt::kEncodingUTF16,     zkt::kEncodingUTF16BE,       zkt::kEncodingUTF16LE,
    zkt::kEncodingUTF32,         zkt::kEncodingUTF32BE,   zkt::kEncodingUTF32LE,       zkt::kEncodingNone,
    0x0A03 /* unknown to the host */, 0xFFFFFFFF};
// clang-format on

// The patterns that shaped strings repeat: letters, separators and quotes, numbers, formats, invalid UTF-8, and
// combining marks, which all attach to the first letter.
constexpr std::string_view kRepeated[Shape::kCount] = {"a",  ",",        "\"",   "a,\"b\"\"\",", "\r\n", "1",
                                                       "%%", "\xC3\xA4", "\xFF", " .",           "/",    "\xCC\x81"};
// Generates the arguments of one call.
class ArgumentGenerator {
 public:
  ArgumentGenerator(const Declared& declared, const Entry& entry, std::uint64_t seed, const std::optional<Shape>& shape)
      : declared_(declared), entry_(entry), random_(seed), shape_(shape) {}

  std::vector<host::Argument> MakeAll() {
    if (entry_.type != nullptr) return MakeArguments(entry_.parameters, {{MakeInstance(entry_.type)}});
    return MakeArguments(entry_.parameters, {});
  }

 private:
  // Returns true with the given probability; always returns false for shaped data.
  bool Chance(unsigned percent) { return !shape_ && random_.Percent(percent); }

  // Appends arguments for the parameters.
  std::vector<host::Argument> MakeArguments(const std::vector<host::Parameter>& parameters,
                                            std::vector<host::Argument> arguments) {
    arguments.reserve(arguments.size() + parameters.size());  // so that the arguments keep their addresses
    for (const host::Parameter& parameter : parameters) {
      const bool isOmitted = !parameter.defaultValue.empty() && !Chance(65);
      arguments.push_back({isOmitted ? host::DefaultArgument(parameter.defaultValue, parameter.type)
                                     : Make(parameter.type, parameter.name)});
      if (parameter.isByRef) arguments.back().variable = &arguments.back().value;
    }
    return arguments;
  }

  // Makes a value of the type for a parameter or property with this name.
  Value Make(const host::Type& type, std::string_view name) {
    if (type.isArray) return MakeArray(type, name);
    switch (type.kind) {
      case TypeKind::kString:
        return MakeText(type, name);
      case TypeKind::kVariant:
      case TypeKind::kObject:
        return MakeObject(type);
      case TypeKind::kDelegate:
        return MakeDelegate(type);
      case TypeKind::kBoolean:
        return {type, Chance(20) ? random_.Between(0, 255) : Integer() & 1};
      case TypeKind::kSingle:
        return {type, static_cast<double>(static_cast<float>(Real()))};
      case TypeKind::kDouble:
        return {type, Real()};
      default:
        return {type, Integer()};
    }
  }

  std::int64_t Integer() {
    if (shape_) return rank_;
    const std::size_t dice = random_.Below(100);
    // Prefer numbers near an array's bounds, because the parameters that follow an array are often indices into it.
    if (dice < 40 && !arrays_.empty()) {
      const std::int64_t count = random_.OneOf(arrays_).Array()->count;
      return random_.Percent(50) ? random_.Between(count - 3, count + 2) : random_.Between(0, count);
    }
    if (dice < 60) return random_.Between(-3, 12);
    if (dice < 85) return random_.OneOf(kIntegers);
    return static_cast<std::int64_t>(random_.Bits() >> (dice < 95 ? 0 : random_.Below(64)));
  }

  double Real() {
    if (shape_) return static_cast<double>(rank_);
    const std::size_t dice = random_.Below(100);
    if (dice < 50) return random_.OneOf(kReals);
    return dice < 80 ? static_cast<double>(Integer()) / 8 : std::bit_cast<double>(random_.Bits());
  }

  Value MakeText(const host::Type& type, std::string_view name) {
    if (Chance(8)) return host::DefaultValue(type);
    const auto program = entry_.expectations.find(kStartsProgram);
    const bool isProgram = program != entry_.expectations.end() && zkt::IsSameName(name, program->second.front());
    std::string text = isProgram    ? RandomProgram(random_)
                       : !shape_    ? RandomText(random_, declared_.expectations.About(name)[kWords])
                       : isElement_ ? std::to_string(1'000'000 + rank_)
                                    : ShapedText();
    std::uint32_t encoding = zkt::kEncodingUTF8;
    if (Chance(40)) {
      encoding = random_.OneOf(kEncodings);
      // Convert the string, or keep bytes that may be invalid in that encoding.
      if (Chance(75)) text = host::ConvertText(text, zkt::kEncodingUTF8, encoding).value_or(text);
    }
    return {type, host::StringRef(host::MakeString(text, encoding))};
  }

  Value MakeObject(const host::Type& type) {
    if (Chance(8)) return host::DefaultValue(type);
    const bool isVariant = type.kind == TypeKind::kVariant;
    if (isVariant && !Chance(30)) {
      constexpr TypeKind kKinds[] = {TypeKind::kBoolean, TypeKind::kInt32, TypeKind::kInt64, TypeKind::kDouble,
                                     TypeKind::kString};
      return host::Boxed(Make({shape_ ? TypeKind::kInt64 : random_.OneOf(kKinds)}, ""));
    }
    constexpr std::string_view kHostClasses[] = {"Object",     "Date",     "DateTime",
                                                 "FolderItem", "Graphics", "RuntimeException"};
    const std::string_view wanted = isVariant ? "Object" : type.name;
    // Xojo code can pass an object of the wrong host class, but an object of a plug-in class always has that class's
    // data.
    const bool isHostClass = host::FindClass(wanted)->record == nullptr;
    const bool isAnyClass = wanted == "Object" || (isHostClass && Chance(8));
    return {type, MakeUsableObject(isAnyClass ? random_.OneOf(kHostClasses) : wanted)};
  }

  // Makes an object with random values in most properties that can be assigned.
  ObjectRef MakeUsableObject(std::string_view className) {
    const host::ObjectClass* const type = host::FindClass(className);
    ObjectRef object(host::MakeObject(type));
    if (type->IsA("FolderItem")) {
      const std::string path = RandomProgram(random_);
      if (!host::SetPath(object.Get(), path, host::PathMode::kNative))
        host::SetPath(object.Get(), "file://" + path, host::PathMode::kURL);
    } else if (host::IsDate(type)) {
      host::SetCalendarFields(object.Get(), {2000, 1, 1, 0, 0, 0});  // not the current time, which changes
      // Out-of-range values carry over to the other fields.
      const std::int64_t seconds = shape_ ? rank_ : random_.Between(-3'000'000'000, 3'000'000'000);
      host::SetCalendarFields(object.Get(), {Chance(30) ? random_.Between(-5000, 12000) : 2000, 1, 1, 0, 0, seconds});
    } else {
      if (type->name == "Graphics" && !Chance(10))
        object = host::Retained(host::GraphicsOf(host::MakePicture(random_.Between(1, 64), 64).Get()));
      for (const auto& [name, value] : object->properties)
        if (Chance(80)) host::AssignProperty(object.Get(), name, Make(value.type, name));
    }
    return object;
  }

  // Makes an instance of one of the plug-in's classes, and sometimes calls its constructor.
  Value MakeInstance(const host::ObjectClass* type) {
    Value instance{{TypeKind::kObject, false, type->name}, ObjectRef(host::MakeObject(type))};
    for (const Entry& entry : declared_.entries) {
      const std::string_view name(entry.label.data(), std::min(entry.label.find('('), entry.label.size()));
      if (entry.type != type || !zkt::IsSameName(name, type->name + ".Constructor") || !Chance(35)) continue;
      try {
        entry.call(MakeArguments(entry.parameters, {{instance}}));
      } catch (const host::XojoException&) {
        // An object whose constructor rejects the arguments stays as it was created.
      }
      break;
    }
    return instance;
  }

  Value MakeArray(const host::Type& type, std::string_view name) {
    if (Chance(5)) return host::DefaultValue(type);
    const Value* const last = arrays_.empty() ? nullptr : &arrays_.back();
    // Sometimes pass the same array as two arguments.
    if (last != nullptr && last->type == type && Chance(10)) return *last;
    // The array is often as long as the previous array, because functions that compare or copy need equal lengths.
    const std::int64_t size = shape_                          ? std::int64_t{512} << shape_->doublings
                              : last != nullptr && Chance(50) ? last->Array()->count
                                                              : RandomSize();
    const host::Type elementType = type.Element();
    const host::ArrayRef array(host::MakeArray(elementType, size - 1));
    isElement_ = true;
    // A small pool of distinct elements makes equal elements likely. For references, the pool also saves time and keeps
    // cache misses out of the measured growth.
    std::vector<Value> pool;
    const std::int64_t poolSize = shape_ ? (size >> shape_->doublings) + 1 : 6;
    while (std::ssize(pool) < poolSize && (elementType.IsReference() || Chance(70))) {
      rank_ = std::ssize(pool);
      pool.push_back(Make(elementType, name));
    }
    for (std::int64_t i = 0; i < size; ++i) {
      rank_ = shape_ ? RankOf(i, size) : 0;
      host::SetElement(array.Get(), i,
                       pool.empty() ? Make(elementType, name)
                       : shape_     ? pool[static_cast<std::size_t>(rank_ >> shape_->doublings)]
                                    : random_.OneOf(pool));
    }
    isElement_ = false;
    rank_ = 1;
    return arrays_.emplace_back(Value{type, array});
  }

  // Returns a string so long that one pass over it takes longer than everything else in a call.
  std::string ShapedText() const {
    std::string text = "e";
    while (std::ssize(text) < std::int64_t{4096} << shape_->doublings) text += kRepeated[shape_->index];
    return text;
  }

  // Returns the rank of an element. The orders are random, ascending, descending, all equal, three repeating values,
  // and ascending to the middle and then descending.
  std::int64_t RankOf(std::int64_t i, std::int64_t size) const {
    const auto random = static_cast<std::int64_t>(Mix(1, static_cast<std::uint64_t>(i)) >> 1);
    const std::int64_t ranks[Shape::kOrders] = {random % size, i, size - i, 1, i % 3, std::min(i, size - i)};
    return ranks[shape_->index % Shape::kOrders];
  }

  // Returns a size that is often small or close to the step of a vector loop.
  std::int64_t RandomSize() {
    if (Chance(45)) return random_.Between(0, 12);
    if (Chance(35)) return (std::int64_t{8} << random_.Below(4)) + random_.Between(-1, 1);
    return random_.Between(0, Chance(70) ? 130 : 1000);
  }

  // Makes a delegate. For shaped data, it compares consistently. Otherwise, it often compares inconsistently, crashes
  // if the entry allows crashes, or raises an exception.
  Value MakeDelegate(const host::Type& type) {
    if (Chance(5)) return host::DefaultValue(type);
    // This delegate has no function to call.
    if (Chance(5)) return {type, ObjectRef(host::MakeObject(host::FindClass("Delegate")))};
    const host::Signature& signature = *declared_.catalogue.FindDelegate(type.name);
    const auto crash = random_.OneOf(Faults()).commit;
    const bool crashes = entry_.expectations.contains(kCatchesCrashes) && Chance(70);
    const bool isConsistent = !Chance(75);
    return {type, host::MakeDelegate(signature, [=, result = signature.result, kind = random_.Below(6),
                                                 random = Random(random_.Bits())](auto values) mutable {
              if (crashes) crash();
              if (!result.IsInteger()) return host::DefaultValue(result);
              if (isConsistent)
                return host::MakeValue(values.size() == 2 ? host::CompareValues(values[0], values[1]) : 0);
              if (kind == 5) host::Raise("RuntimeException", "raised by a delegate");
              if (kind < 3) return host::MakeValue(static_cast<std::int64_t>(kind) - 1);
              return host::MakeValue(kind == 4 ? random.OneOf(kIntegers) : random.Between(-1, 1));
            })};
  }

  const Declared declared_;
  const Entry& entry_;
  Random random_;
  std::optional<Shape> shape_;
  std::vector<Value> arrays_;  // arrays among the arguments of this call
  std::int64_t rank_ = 1;      // of the current element of a shaped array
  bool isElement_ = false;
};

}  // namespace

std::vector<host::Argument> MakeArguments(const Declared& declared, const Entry& entry, std::uint64_t seed,
                                          const std::optional<Shape>& shape) {
  return ArgumentGenerator(declared, entry, seed, shape).MakeAll();
}

}  // namespace stress
