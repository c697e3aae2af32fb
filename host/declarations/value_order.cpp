#include "declarations/value_order.h"

#include "core/dates.h"
#include "core/text_order.h"

namespace host {

namespace {

enum class Rank { kNil, kNumber, kText, kDate, kOther };

std::int64_t Sign(auto a, auto b) { return a < b ? -1 : b < a ? 1 : 0; }

Rank RankOf(const Value& value) {
  const Type& type = value.type;
  if (type.kind == TypeKind::kNothing) return Rank::kNil;
  if (!type.IsReference()) return Rank::kNumber;
  if (type.isArray) return Rank::kOther;
  if (type.kind == TypeKind::kString) return Rank::kText;
  if (value.Reference() == nullptr) return Rank::kNil;
  return type.kind != TypeKind::kDelegate && IsDate(value.Object()->type) ? Rank::kDate : Rank::kOther;
}

// A long double holds every signed or unsigned 64-bit integer exactly.
long double NumberOf(const Value& value) {
  if (value.type.IsReal()) return value.Real();
  if (value.type.kind == TypeKind::kUInt64 || value.type.kind == TypeKind::kPtr)
    return static_cast<long double>(static_cast<std::uint64_t>(value.Integer()));
  const auto integer = static_cast<long double>(value.Integer());
  return value.type.kind == TypeKind::kCurrency ? integer / kCurrencyScale : integer;
}

}  // namespace

std::int64_t CompareValues(const Value& first, const Value& second) {
  const Value& a = Unboxed(first);
  const Value& b = Unboxed(second);
  const Rank rank = RankOf(a);
  if (rank != RankOf(b)) return Sign(rank, RankOf(b));
  switch (rank) {
    case Rank::kNil:
      return 0;
    case Rank::kNumber:
      return Sign(NumberOf(a), NumberOf(b));
    case Rank::kText:
      return Sign(CompareTexts(a.String(), b.String()), 0);
    case Rank::kDate:
      return Sign(SecondsOf(a.Object()), SecondsOf(b.Object()));
    default:
      return Sign(a.Reference(), b.Reference());
  }
}

}  // namespace host
