#include "validate/made_values.h"

#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/dates.h"
#include "core/folder_items.h"
#include "core/graphics.h"
#include "core/strings.h"
#include "declarations/conversion.h"
#include "declarations/errors.h"
#include "declarations/value_order.h"
#include "language/faults.h"
#include "validate/made_text.h"

namespace host::validate {

namespace {

constexpr std::int64_t kIntegers[] = {0,
                                      1,
                                      -1,
                                      -2,
                                      2,
                                      3,
                                      127,
                                      128,
                                      255,
                                      256,
                                      1900,
                                      2000,
                                      std::numeric_limits<std::int32_t>::max(),
                                      std::numeric_limits<std::int32_t>::min(),
                                      std::numeric_limits<std::uint32_t>::max(),
                                      std::int64_t{1} << 32,
                                      std::numeric_limits<std::int64_t>::max(),
                                      std::numeric_limits<std::int64_t>::max() - 1,
                                      std::numeric_limits<std::int64_t>::min(),
                                      std::numeric_limits<std::int64_t>::min() + 1};

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kReals[] = {0.0,
                             -0.0,
                             1.0,
                             -1.0,
                             0.5,
                             45.0,
                             1e9,
                             -1e18,
                             9.2233720368547758e18,
                             std::numeric_limits<double>::quiet_NaN(),
                             kInfinity,
                             -kInfinity,
                             std::numeric_limits<double>::max(),
                             std::numeric_limits<double>::lowest(),
                             std::numeric_limits<double>::min(),
                             std::numeric_limits<double>::denorm_min()};

Value ObjectValue(std::string_view className, ObjectRef object) {
  return {{Basic::kObject, false, className}, Owned<Counted>(std::move(object))};
}

ObjectRef New(std::string_view className) { return ObjectRef(MakeObject(FindClass(className))); }

ObjectRef MakeDate(Random& random, std::string_view className) {
  ObjectRef date = New(className);
  const bool isWild = random.Percent(15);
  const auto field = [&](std::int64_t least, std::int64_t most) {
    return isWild && random.Percent(50) ? random.Between(-2'000'000'000, 2'000'000'000) : random.Between(least, most);
  };
  SetCalendarFields(date.Get(), {2000, 1, 1, 0, 0, 0});  // not now, which passes
  SetCalendarFields(date.Get(), {random.Percent(70) ? field(1900, 2100) : field(-5000, 12000), field(0, 13),
                                 field(0, 32), field(-1, 24), field(-1, 60), field(-1, 61)});
  return date;
}

ObjectRef MakeFolderItem(Random& random) {
  ObjectRef item = New("FolderItem");
  const Value path = MakeHarmlessPath(random);
  const std::string text = ToUTF8(static_cast<const REALstringStruct*>(path.Reference()));
  if (!SetPath(item.Get(), text, PathMode::kNative)) SetPath(item.Get(), "file://" + text, PathMode::kURL);
  return item;
}

ObjectRef MakeGraphics(Random& random) {
  if (random.Percent(10)) return New("Graphics");
  const ObjectRef picture = MakePicture(random.Between(1, 64), random.Between(1, 64));
  REALobjectStruct* const graphics = GraphicsOf(picture.Get());
  const auto flag = [&] { return Value{{Basic::kBoolean, false, {}}, random.Between(0, 1)}; };
  for (const char* const name : {"Bold", "Italic", "Underline"}) AssignProperty(graphics, name, flag());
  AssignProperty(
      graphics, "TextSize",
      host::MakeValue(random.Percent(80) ? random.Between(-1, 40) : kIntegers[random.Below(std::size(kIntegers))]));
  constexpr std::string_view kFonts[] = {"", "System", "DejaVu Sans", "DejaVu Serif", "No Such Font", "\xFF\xFE"};
  AssignProperty(graphics, "TextFont",
                 random.Percent(90) ? host::MakeValue(random.OneOf(kFonts)) : MakeText(random, ""));
  Retain(graphics);
  return ObjectRef(graphics);
}

Value DoNothing(std::span<const Value>) { return {}; }

// Delegates without parameters and result, which may crash.
DelegateTarget MakeCrash(Random& random) {
  if (random.Percent(30)) return DoNothing;
  const Fault& fault = Faults()[random.Below(Faults().size())];
  return [&fault](std::span<const Value>) {
    fault.commit();
    return Value();
  };
}

}  // namespace

std::vector<Argument> ArgumentMaker::MakeAll(const Signature& signature) {
  std::vector<Argument> arguments;
  for (const Parameter& parameter : signature.parameters) arguments.push_back(Make(parameter));
  return arguments;
}

Argument ArgumentMaker::Make(const Parameter& parameter) {
  if (!parameter.defaultValue.empty() && random_.Percent(35))
    if (const auto converted = Convert(ReadDefault(parameter.defaultValue), parameter.type, catalogue_))
      return {converted->value};
  Value value = driving_ == Driving::kStartsProgram && zkt::IsSameName(parameter.name, "path") &&
                        parameter.type.basic == Basic::kString
                    ? MakeHarmlessPath(random_)
                    : MakeValue(parameter.type, parameter.name);
  if (!parameter.isByRef) return {std::move(value)};
  Value& variable = variables_.emplace_back(std::move(value));
  return {variable, &variable};
}

Value ArgumentMaker::MakeValue(const Type& type, std::string_view name) {
  if (type.isArray) return MakeArrayOf(type, name);
  switch (type.basic) {
    case Basic::kString:
      return MakeText(random_, name);
    case Basic::kVariant:
      return MakeVariant();
    case Basic::kObject:
      return MakeObjectOf(type.name);
    case Basic::kDelegate:
      return MakeDelegateOf(type);
    case Basic::kSingle:
    case Basic::kDouble:
      return {type, MakeReal(type.basic)};
    default:
      return {type, MakeInteger(type.basic)};
  }
}

Value ArgumentMaker::MakeInstance(const ObjectClass* type) {
  Value instance = ObjectValue(type->name, ObjectRef(MakeObject(type)));
  if (!random_.Percent(50)) return instance;
  for (const Method& method : catalogue_.Methods()) {
    if (method.ownerKind != OwnerKind::kInstance || method.owner != type->name) continue;
    if (!zkt::IsSameName(method.signature.name, "Constructor") || !random_.Percent(50)) continue;
    std::vector<Argument> arguments = MakeAll(method.signature);
    arguments.insert(arguments.begin(), Argument{instance});
    try {
      CallNative(method.function, arguments, method.signature.result);
    } catch (const XojoException&) {
      // What a constructor refuses stays as it was made.
    }
    break;
  }
  return instance;
}

std::int64_t ArgumentMaker::MakeInteger(Basic basic) {
  if (basic == Basic::kBoolean) return random_.Percent(80) ? random_.Between(0, 1) : random_.Between(0, 255);
  const std::size_t dice = random_.Below(100);
  // Around the bounds of an array, where the parameters that follow one are interesting.
  if (dice < 40 && !arrays_.empty()) {
    const Value& array = arrays_[random_.Below(arrays_.size())];
    const auto* const elements = static_cast<const Array*>(array.Reference());
    const std::int64_t upperBound = elements != nullptr ? UpperBound(elements) : -1;
    return random_.Percent(50) ? random_.Between(upperBound - 2, upperBound + 3) : random_.Between(0, upperBound + 1);
  }
  if (dice < 60) return random_.Between(-3, 12);
  if (dice < 85) return random_.OneOf(kIntegers);
  if (dice < 95) return static_cast<std::int64_t>(random_.Bits());
  return static_cast<std::int64_t>(random_.Bits() >> random_.Below(64));
}

double ArgumentMaker::MakeReal(Basic basic) {
  const std::size_t dice = random_.Below(100);
  const double real = dice < 50   ? random_.OneOf(kReals)
                      : dice < 80 ? static_cast<double>(random_.Between(-100'000, 100'000)) / 8
                                  : std::bit_cast<double>(random_.Bits());
  return basic == Basic::kSingle ? static_cast<double>(static_cast<float>(real)) : real;
}

ObjectRef ArgumentMaker::MakeUsableObject(std::string_view className) {
  const ObjectClass* const type = FindClass(className);
  if (IsDate(type)) return MakeDate(random_, className);
  if (IsFolderItem(type)) return MakeFolderItem(random_);
  if (type->name == "Graphics") return MakeGraphics(random_);
  return ObjectRef(MakeObject(type));
}

Value ArgumentMaker::MakeObjectOf(std::string_view className) {
  if (random_.Percent(8)) return DefaultValue({Basic::kObject, false, className});
  constexpr std::string_view kHostClasses[] = {"Object",     "Date",     "DateTime",
                                               "FolderItem", "Graphics", "RuntimeException"};
  // Xojo can take an object for one of a class of the host's that it is not, never for one with a plug-in's data.
  const bool isHostClass = FindClass(className)->record == nullptr;
  const bool isAnyClass = className == "Object" || (isHostClass && random_.Percent(8));
  return ObjectValue(className, MakeUsableObject(isAnyClass ? random_.OneOf(kHostClasses) : className));
}

Value ArgumentMaker::MakeVariant() {
  constexpr Type kVariant{Basic::kVariant, false, {}};
  if (random_.Percent(10)) return DefaultValue(kVariant);
  if (random_.Percent(30)) return {kVariant, MakeObjectOf("Object").payload};
  constexpr Basic kBasics[] = {Basic::kBoolean, Basic::kInt32, Basic::kInt64, Basic::kDouble, Basic::kString};
  ObjectRef box = New("Variant");
  *FindProperty(box.Get(), "Value") = MakeValue({random_.OneOf(kBasics), false, {}}, "");
  return {kVariant, Owned<Counted>(std::move(box))};
}

// Every size up to 1000 comes, the small ones more often, and those around the steps of vector loops.
std::int64_t ArgumentMaker::ArraySize() {
  const std::size_t dice = random_.Below(100);
  // Often as long as the array before: what compares and copies wants that.
  if (!arrays_.empty() && random_.Percent(50)) return static_cast<const Array*>(arrays_.back().Reference())->count;
  if (dice < 45) return random_.Between(0, 12);
  if (dice < 65) return (std::int64_t{8} << random_.Below(4)) + random_.Between(-1, 1);
  return random_.Between(0, dice < 90 ? 130 : 1000);
}

Value ArgumentMaker::MakeArrayOf(const Type& type, std::string_view name) {
  if (random_.Percent(5)) return DefaultValue(type);
  // One array in both roles.
  if (!arrays_.empty() && random_.Percent(10) && arrays_.back().type.basic == type.basic &&
      arrays_.back().type.name == type.name)
    return arrays_.back();
  const Type elementType{type.basic, false, type.name};
  const std::int64_t size = ArraySize();
  Value array{type, Owned<Counted>(MakeArray(elementType, size - 1))};
  auto* const elements = static_cast<Array*>(array.Reference());
  // Few different elements make equal ones; references are taken from a pool, which saves time.
  constexpr std::size_t kFew = 6;
  const bool hasFew = elementType.IsReference() || random_.Percent(30);
  std::vector<Value> pool;
  for (std::int64_t i = 0; i < size; ++i) {
    if (!hasFew || pool.size() < kFew) pool.push_back(MakeValue(elementType, name));
    SetElement(elements, i, hasFew ? pool[random_.Below(pool.size())] : pool.back());
  }
  arrays_.push_back(array);
  return array;
}

// An order that is sound, one that is none, or one that raises.
DelegateTarget ArgumentMaker::MakeAnswers() {
  const std::uint64_t seed = random_.Bits();
  switch (random_.Below(8)) {
    case 0:
      return [](std::span<const Value>) { return host::MakeValue(std::int64_t{0}); };
    case 1:
      return [](std::span<const Value>) { return host::MakeValue(std::int64_t{1}); };
    case 2:
      return [](std::span<const Value>) { return host::MakeValue(std::int64_t{-1}); };
    case 3:
      return [random = Random(seed)](std::span<const Value>) mutable { return host::MakeValue(random.Between(-1, 1)); };
    case 4:
      return
          [random = Random(seed)](std::span<const Value>) mutable { return host::MakeValue(random.OneOf(kIntegers)); };
    case 5:
      return [random = Random(seed)](std::span<const Value>) mutable {
        Raise(New("RuntimeException").Get());
        return host::MakeValue(random.Between(-1, 1));
      };
    default:
      return [](std::span<const Value> values) {
        return host::MakeValue(values.size() == 2 ? CompareValues(values[0], values[1]) : 0);
      };
  }
}

Value ArgumentMaker::MakeDelegateOf(const Type& type) {
  if (random_.Percent(5)) return DefaultValue(type);
  // An object that the host cannot call.
  if (random_.Percent(5)) return {type, Owned<Counted>(New("Delegate"))};
  const Signature& signature = catalogue_.FindDelegate(type.name)->signature;
  DelegateTarget target = driving_ == Driving::kProtectsDelegate ? MakeCrash(random_)
                          : signature.result.IsInteger()
                              ? MakeAnswers()
                              : [result = signature.result](std::span<const Value>) { return DefaultValue(result); };
  return {type, Owned<Counted>(MakeDelegate(signature, std::move(target)))};
}

}  // namespace host::validate
