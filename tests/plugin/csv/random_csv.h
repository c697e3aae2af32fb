// Generates random input from the bytes that matter when splitting delimiter-separated values.
#pragma once

#include <random>
#include <string>
#include <string_view>

namespace tests {

// A seed produces the same input with every standard library. The standard distributions are not used, because they may
// return different numbers in each library.
class RandomCsv {
 public:
  explicit RandomCsv(unsigned seed) : random_(seed) {}

  unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

  char Special() {
    static constexpr char kBytes[] = {'"', '"', '"', '\'', ',', ',', ';', '\t', '\r', '\n', '\0', 'a', '\xC3', '\xEF'};
    return kBytes[Below(sizeof kBytes)];
  }

  // Three out of four results are short. The proportion of ordinary bytes is chosen at random, from 0 to 15/16.
  std::string Text(unsigned maxLength) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    const unsigned length = Below((Below(4) == 0 ? maxLength : 16) + 1);
    const unsigned ordinaryOf16 = Below(16);
    std::string text;
    while (text.size() < length) {
      if (Below(16) < ordinaryOf16) {
        text += 'a';
      } else if (length - text.size() >= kByteOrderMark.size() && Below(12) == 0) {
        text += kByteOrderMark;
      } else {
        text += Special();
      }
    }
    return text;
  }

 private:
  std::mt19937 random_;
};

}  // namespace tests
