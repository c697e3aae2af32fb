#include "validate/growth.h"

#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <deque>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/dates.h"
#include "core/graphics.h"
#include "core/strings.h"
#include "declarations/conversion.h"
#include "declarations/errors.h"
#include "declarations/native_call.h"
#include "declarations/value_order.h"
#include "validate/random.h"

namespace host::validate {

namespace {

// Large enough for a pass over the data to take longer than all else that a call does; a pass over bytes takes less.
constexpr std::int64_t kSmallArray = 512;
constexpr std::int64_t kSmallText = 4096;
constexpr int kDoublings = 4;

// What texts are made of: nothing special, what separates and quotes fields, numbers, formats, what is no UTF-8, and
// marks that combine with the letter before all of them.
constexpr std::string_view kWords[] = {"a",  ",",        "\"",   "a,\"b\"\"\",", "\r\n", "1",
                                       "%%", "\xC3\xA4", "\xFF", " .",           "/",    "\xCC\x81"};
constexpr std::int64_t kCombiningMarks = std::ssize(kWords) - 1;

// The orders that elements of arrays come in.
enum class Order { kRandom, kAscending, kDescending, kAllEqual, kThreeValues, kUpAndDown };
constexpr std::int64_t kOrders = 6;

// Where the element of an index stands in the order of an array of this size.
std::int64_t Rank(Order order, std::int64_t index, std::int64_t size) {
  switch (order) {
    case Order::kRandom:
      return static_cast<std::int64_t>(Mix(1, static_cast<std::uint64_t>(index)) % static_cast<std::uint64_t>(size));
    case Order::kAscending:
      return index;
    case Order::kDescending:
      return size - index;
    case Order::kAllEqual:
      return 1;
    case Order::kThreeValues:
      return index % 3;
    default:
      return std::min(index, size - index);
  }
}

class DataMaker {
 public:
  // With data of the smallest size, doubled so often.
  DataMaker(const Catalogue& catalogue, const Entry& entry, std::int64_t shape, int doublings)
      : catalogue_(catalogue), driving_(entry.driving), shape_(shape), doublings_(doublings) {}

  Value Make(const Parameter& parameter) const {
    if (!parameter.defaultValue.empty())
      if (const auto converted = Convert(ReadDefault(parameter.defaultValue), parameter.type, catalogue_))
        return converted->value;
    if (parameter.type.isArray) return MakeArrayOf(parameter.type);
    if (parameter.type.basic == Basic::kString) return MakeText(parameter.name);
    return MakeElement(parameter.type, 1);
  }

  // An element of an array, or a value that is no data.
  Value MakeElement(const Type& type, std::int64_t rank) const {
    switch (type.basic) {
      case Basic::kString:
        return host::MakeValue(std::to_string(1'000'000 + rank));
      case Basic::kObject:
      case Basic::kVariant:
        return {type, MakeObjectOf(type, rank)};
      case Basic::kDelegate:
        return {type, MakeOrder(catalogue_.FindDelegate(type.name)->signature)};
      case Basic::kBoolean:
        return {type, rank % 2};
      case Basic::kSingle:
      case Basic::kDouble:
        return {type, static_cast<double>(rank)};
      default:
        return {type, rank};
    }
  }

 private:
  Value MakeText(std::string_view name) const {
    // Nothing but a program that does nothing may be started.
    if (driving_ == Driving::kStartsProgram && zkt::IsSameName(name, "path")) return host::MakeValue("/bin/true");
    const std::string_view word = kWords[static_cast<std::size_t>(shape_)];
    std::string text = shape_ == kCombiningMarks ? "e" : "";
    while (std::ssize(text) < kSmallText << doublings_) text += word;
    return host::MakeValue(text);
  }

  Value MakeArrayOf(const Type& type) const {
    const Type elementType{type.basic, false, type.name};
    const std::int64_t size = kSmallArray << doublings_;
    const auto order = static_cast<Order>(shape_ % kOrders);
    Value array{type, Owned<Counted>(MakeArray(elementType, size - 1))};
    // References are to a few values: more would take longer to get at, with no fault of the plug-in's.
    std::vector<Value> pool;
    for (std::int64_t i = 0; elementType.IsReference() && i <= kSmallArray; ++i)
      pool.push_back(MakeElement(elementType, i));
    for (std::int64_t i = 0; i < size; ++i) {
      const std::int64_t rank = Rank(order, i, size);
      SetElement(static_cast<Array*>(array.Reference()), i,
                 pool.empty() ? MakeElement(elementType, rank) : pool[static_cast<std::size_t>(rank >> doublings_)]);
    }
    return array;
  }

  static Owned<Counted> MakeObjectOf(const Type& type, std::int64_t rank) {
    if (type.name == "Graphics") {
      const ObjectRef picture = MakePicture(64, 64);
      Retain(GraphicsOf(picture.Get()));
      return ObjectRef(GraphicsOf(picture.Get()));
    }
    ObjectRef object(MakeObject(FindClass(type.basic == Basic::kVariant ? "Variant" : type.name)));
    if (type.basic == Basic::kVariant) *FindProperty(object.Get(), "Value") = host::MakeValue(rank);
    if (IsDate(object->type)) SetCalendarFields(object.Get(), {2000, 1, 1, 0, 0, rank});
    return object;
  }

  static Owned<Counted> MakeOrder(const Signature& signature) {
    return MakeDelegate(signature, [result = signature.result](std::span<const Value> values) {
      return values.size() == 2 ? host::MakeValue(CompareValues(values[0], values[1])) : DefaultValue(result);
    });
  }

  const Catalogue& catalogue_;
  Driving driving_;
  std::int64_t shape_;
  int doublings_;
};

// Pango takes a time that grows with the square of the marks on one letter, which our users are told.
bool DrawsText(std::string_view name) {
  return zkt::IsSameName(name, "DrawRotatedTextZKT") || zkt::IsSameName(name, "MeasureRotatedTextZKT");
}

// Whether a parameter is data that comes in this shape.
bool TakesData(const Entry& entry, std::int64_t shape) {
  if (entry.kind != EntryKind::kMethod) return false;
  if (shape == kCombiningMarks && DrawsText(entry.method->signature.name)) return false;
  return std::ranges::any_of(entry.method->signature.parameters, [&](const Parameter& parameter) {
    return parameter.type.isArray ? shape < kOrders : parameter.type.basic == Basic::kString;
  });
}

double ProcessorTime() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// The processor time that the call takes, in seconds, without making its arguments.
double TimeCall(const Catalogue& catalogue, const Entry& entry, std::int64_t shape, int doublings) {
  const Method& method = *entry.method;
  const DataMaker maker(catalogue, entry, shape, doublings);
  std::vector<Argument> arguments;
  if (method.ownerKind == OwnerKind::kInstance || method.ownerKind == OwnerKind::kClassExtension)
    arguments.push_back({maker.MakeElement({Basic::kObject, false, method.owner}, 1)});
  std::deque<Value> variables;
  for (const Parameter& parameter : method.signature.parameters) {
    Value& variable = variables.emplace_back(maker.Make(parameter));
    arguments.push_back({variable, parameter.isByRef ? &variable : nullptr});
  }
  const double start = ProcessorTime();
  double end = 0;
  try {
    const Value result = CallNative(method.function, arguments, method.signature.result);
    end = ProcessorTime();
    if (entry.driving == Driving::kStartsProgram) ::waitpid(static_cast<pid_t>(result.Integer()), nullptr, 0);
  } catch (const XojoException&) {
    end = ProcessorTime();
  }
  return end - start;
}

// Whatever else happens on the machine makes a call slower, never faster.
double LeastTime(const Catalogue& catalogue, const Entry& entry, std::int64_t shape, int doublings) {
  double least = std::numeric_limits<double>::infinity();
  for (int i = 0; i < 3; ++i) least = std::min(least, TimeCall(catalogue, entry, shape, doublings));
  return least;
}

}  // namespace

const std::int64_t kDataShapes = std::ssize(kWords);

std::optional<double> MeasureGrowth(const Catalogue& catalogue, const Entry& entry, std::int64_t shape) {
  if (!TakesData(entry, shape)) return std::nullopt;
  const double small = LeastTime(catalogue, entry, shape, 0);
  const double large = LeastTime(catalogue, entry, shape, kDoublings);
  return std::log2(large / small) / kDoublings;
}

}  // namespace host::validate
