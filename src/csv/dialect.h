// The delimiter and quote of a text.
#pragma once

namespace zkt::csv {

struct Dialect {
  char delimiter;
  char quote;
};

}  // namespace zkt::csv
