#include "runtime/debug_log.h"

#include <climits>

#include "support/host_fixture.h"

namespace {

using tests::CapturedLog;
using tests::Debugging;

template <class Write>
std::string LogOf(Write write) {
  const Debugging debugging;
  CapturedLog log;
  write();
  return log.Take();
}

TEST(Trace, PicksTheFormatFromTheTypes) {
  using zkt::Trace;
  const void* const pointer = reinterpret_cast<const void*>(0x1234);
  const struct {
    const char* note;
    std::string got;
    const char* want;
  } cases[] = {
      {"label alone", LogOf([] { Trace("label"); }), "label"},
      {"int", LogOf([] { Trace("label", INT_MIN); }), "label -2147483648"},
      {"int, int", LogOf([] { Trace("label", 1, -2); }), "label 1, -2"},
      {"bool", LogOf([] { Trace("label", true); }), "label 1"},
      {"unsigned", LogOf([] { Trace("label", UINT_MAX); }), "label 4294967295"},
      {"unsigned, unsigned", LogOf([] { Trace("label", 1u, 2u); }), "label 1, 2"},
      {"int64", LogOf([] { Trace("label", INT64_MIN); }), "label -9223372036854775808"},
      {"int64 x 2", LogOf([] { Trace("label", 1LL, -2LL); }), "label 1, -2"},
      {"int64 x 3", LogOf([] { Trace("label", 1L, 2L, 3L); }), "label 1, 2, 3"},
      {"int64 x 6", LogOf([] { Trace("label", 1L, 2L, 3L, 4L, 5L, 6L); }), "label 1, 2, 3, 4, 5, 6"},
      {"int64 x 7", LogOf([] { Trace("label", 1L, 2L, 3L, 4L, 5L, 6L, -7L); }), "label 1, 2, 3, 4, 5, 6, -7"},
      {"uint64", LogOf([] { Trace("label", UINT64_MAX); }), "label 18446744073709551615"},
      {"uint64 x 2", LogOf([] { Trace("label", 1UL, UINT64_MAX); }), "label 1, 18446744073709551615"},
      {"double", LogOf([] { Trace("label", 0.5); }), "label 0.500000"},
      {"double x 2", LogOf([] { Trace("label", 0.5, -1e3); }), "label 0.500000, -1000.000000"},
      {"pointer", LogOf([&] { Trace("label", pointer); }), "label 0x1234"},
      {"pointer x 2", LogOf([&] { Trace("label", pointer, pointer); }), "label 0x1234, 0x1234"},
      {"text", LogOf([] { Trace("label", "100%s"); }), "label 100%s"},
      {"text x 2", LogOf([] { Trace("label", "a", "b"); }), "label a, b"},
      {"pointer: text", LogOf([&] { Trace("label", pointer, "b"); }), "label 0x1234: b"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.got, std::string("ZKT Debug: ") + c.want + "\n") << c.note;
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

TEST(LogMessageX, WritesWithoutDebuggingAndCutsLongLines) {
  CapturedLog log;
  zkt::LogMessageX("%s", std::string(4095, 'x').c_str());
  zkt::LogMessageX("%s", std::string(5000, 'y').c_str());
  EXPECT_EQ(log.Take(), std::string(4095, 'x') + "\n" + std::string(4095, 'y') + "\n");
}

TEST(DebugSwitch, SaysOnceThatItWasSwitchedOn) {
  CapturedLog log;
  for (const bool enabled : {false, true, true, false}) {
    zkt::setDebugging(enabled);
    EXPECT_EQ(zkt::getDebugging(), enabled);
  }
  EXPECT_EQ(log.Take(), "ZKT Debug: ZKT debug logging enabled.\n");
}

TEST(DebugSwitch, TakesEveryByteButZeroForOn) {
  for (const REALboolean byte : {REALboolean{2}, REALboolean{128}}) {
    EXPECT_EQ(LogOf([byte] {
                zkt::setDebugging(false);
                zkt::setDebugging(byte);
                EXPECT_EQ(zkt::getDebugging(), 1);
                zkt::Trace("label");
              }),
              "ZKT Debug: ZKT debug logging enabled.\nZKT Debug: label\n");
  }
}

}  // namespace
