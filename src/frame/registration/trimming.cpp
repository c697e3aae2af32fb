#include "frame/registration/trimming.h"

#include "frame/contract/plugin_state.h"

namespace zkt {

namespace {

template <class Row>
void TrimTable(Row*& rows, std::uint64_t& count) {
  if (rbversion < 2019.02)
    while (count > 0 && (rows[count - 1].flags & kNeedsHost2019r2) != 0) --count;
  for (Row& row : std::span(rows, count)) row.flags &= ~kNeedsHost2019r2;
  if (count == 0) rows = nullptr;
}

}  // namespace

void TrimForHost(REALclassDefinition* definition) { TrimTable(definition->methods, definition->methodCount); }

void TrimForHost(REALmoduleDefinition* definition) {
  TrimTable(definition->methods, definition->methodCount);
  TrimTable(definition->delegates, definition->delegateCount);
}

std::span<REALmethodDefinition> TrimForHost(std::span<REALmethodDefinition> methods) {
  REALmethodDefinition* rows = methods.data();
  std::uint64_t count = methods.size();
  TrimTable(rows, count);
  return {rows, static_cast<std::size_t>(count)};
}

}  // namespace zkt
