#include "runtime/text_classification.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(IsASCII, FindsOneHighByteAtEveryPosition) {
  for (std::size_t at = 0; at < 18; ++at) {
    std::string text(18, '\x7F');
    text[at] = '\x80';
    EXPECT_FALSE(zkt::IsASCII(text)) << at;
    EXPECT_TRUE(zkt::IsASCII(std::string_view(text).substr(0, at))) << at << " bytes before the high byte";
  }
}

}  // namespace
