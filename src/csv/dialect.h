// The delimiter and the quote character of delimited text.
#pragma once

namespace zkt::csv {

struct Dialect {
  char delimiter;
  char quote;
};

}  // namespace zkt::csv
