#include "runtime/debug_log.h"

#include <climits>

#include "support/host_fixture.h"

namespace {

using tests::CapturedLog;
using tests::TraceOf;

TEST(Trace, PicksTheFormatFromTheTypes) {
  using zkt::Trace;
  const void* const pointer = reinterpret_cast<const void*>(0x1234);
  const struct {
    const char* note;
    std::string got;
    const char* want;
  } cases[] = {
      {"label alone", TraceOf([] { Trace("label"); }), "label"},
      {"int", TraceOf([] { Trace("label", INT_MIN); }), "label -2147483648"},
      {"int, int", TraceOf([] { Trace("label", 1, -2); }), "label 1, -2"},
      {"bool", TraceOf([] { Trace("label", true); }), "label 1"},
      {"unsigned", TraceOf([] { Trace("label", UINT_MAX); }), "label 4294967295"},
      {"unsigned, unsigned", TraceOf([] { Trace("label", 1u, 2u); }), "label 1, 2"},
      {"int64", TraceOf([] { Trace("label", INT64_MIN); }), "label -9223372036854775808"},
      {"int64 x 2", TraceOf([] { Trace("label", 1LL, -2LL); }), "label 1, -2"},
      {"int64 x 3", TraceOf([] { Trace("label", 1L, 2L, 3L); }), "label 1, 2, 3"},
      {"int64 x 6", TraceOf([] { Trace("label", 1L, 2L, 3L, 4L, 5L, 6L); }), "label 1, 2, 3, 4, 5, 6"},
      {"int64 x 7", TraceOf([] { Trace("label", 1L, 2L, 3L, 4L, 5L, 6L, -7L); }), "label 1, 2, 3, 4, 5, 6, -7"},
      {"uint64", TraceOf([] { Trace("label", UINT64_MAX); }), "label 18446744073709551615"},
      {"uint64 x 2", TraceOf([] { Trace("label", 1UL, UINT64_MAX); }), "label 1, 18446744073709551615"},
      {"double", TraceOf([] { Trace("label", 0.5); }), "label 0.500000"},
      {"double x 2", TraceOf([] { Trace("label", 0.5, -1e3); }), "label 0.500000, -1000.000000"},
      {"pointer", TraceOf([&] { Trace("label", pointer); }), "label 0x1234"},
      {"pointer x 2", TraceOf([&] { Trace("label", pointer, pointer); }), "label 0x1234, 0x1234"},
      {"text", TraceOf([] { Trace("label", "100%s"); }), "label 100%s"},
      {"text x 2", TraceOf([] { Trace("label", "a", "b"); }), "label a, b"},
      {"pointer: text", TraceOf([&] { Trace("label", pointer, "b"); }), "label 0x1234: b"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.got, std::string(c.want) + "|") << c.note;
}

struct NoValue {};
static_assert(!zkt::Traceable<long double>);
static_assert(!zkt::Traceable<float>);
static_assert(!zkt::Traceable<NoValue>);
static_assert(!zkt::Traceable<int, unsigned>);
static_assert(!zkt::Traceable<int, int, int>);
static_assert(!zkt::Traceable<std::int64_t, std::int64_t, std::int64_t, std::int64_t>);
static_assert(!zkt::Traceable<const char*, const void*>);

TEST(Trace, IsSilentWhileDebuggingIsOff) {
  CapturedLog log;
  zkt::Trace("label", 1);
  EXPECT_EQ(log.Take(), "");
}

TEST(LogMessageX, WritesWithoutDebuggingAndTruncatesLongLines) {
  CapturedLog log;
  zkt::LogMessageX("%s", std::string(4095, 'x').c_str());
  zkt::LogMessageX("%s", std::string(5000, 'y').c_str());
  EXPECT_EQ(log.Take(), std::string(4095, 'x') + "\n" + std::string(4095, 'y') + "\n");
}

TEST(DebugSwitch, LogsOnceThatItWasSwitchedOn) {
  CapturedLog log;
  for (const bool enabled : {false, true, true, false}) {
    zkt::setDebugging(enabled);
    EXPECT_EQ(zkt::getDebugging(), enabled);
  }
  EXPECT_EQ(log.Take(), "ZKT Debug: ZKT debug logging enabled.\n");
}

TEST(DebugSwitch, TreatsEveryNonzeroByteAsOn) {
  for (const REALboolean byte : {REALboolean{2}, REALboolean{128}}) {
    EXPECT_EQ(TraceOf([byte] {
                zkt::setDebugging(false);
                zkt::setDebugging(byte);
                EXPECT_EQ(zkt::getDebugging(), 1);
                zkt::Trace("label");
              }),
              "ZKT debug logging enabled.|label|");
  }
}

}  // namespace
