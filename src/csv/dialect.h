// How a text is delimited and quoted.
#pragma once

namespace zkt::csv {

struct Dialect {
  char delimiter;
  char quote;
};

}  // namespace zkt::csv
