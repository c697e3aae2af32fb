// Tests how a sort reads the total seconds of dates.
#include "dates/date_objects.h"
#include "plugin/arrays/array_fixture.h"

namespace {

using tests::ServiceWithheld;
using tests::TestArray;

using DateSeconds = tests::ArrayTest<tests::element::Date>;

TEST_F(DateSeconds, AreReadByName) {
  const host::ObjectRef dateTime(host::MakeObject(host::FindClass("DateTime")));
  host::FindProperty(dateTime.Get(), "SecondsFrom1970")->payload = -2.5;
  const auto expect = [&](host::RefCounted* date, double wantOfDate, host::RefCounted* time, double wantOfTime,
                          bool fails) {
    const std::string trace = tests::TraceOf([&] {
      EXPECT_EQ(zkt::GetTotalSeconds(reinterpret_cast<REALdate>(date)), wantOfDate);
      EXPECT_EQ(zkt::GetDateTimeSecondsFrom1970(reinterpret_cast<REALdateTime>(time)), wantOfTime);
    });
    EXPECT_EQ(trace, fails ? "Failed to read SecondsFrom1970 property.|" : "");
  };
  expect(pool_[1].Get(), 1.5, dateTime.Get(), -2.5, false);
  expect(nullptr, 0.0, nullptr, 0.0, true);
  {
    const tests::ServiceReplaced fails(zkt::REALGetPropValueDouble,
                                       [](void*, const char*, double* value) { return *value += 7.0, REALboolean{0}; });
    expect(pool_[1].Get(), 7.0, dateTime.Get(), 7.0, true);
  }
  const ServiceWithheld absent(zkt::REALGetPropValueDouble);
  expect(pool_[1].Get(), 0.0, dateTime.Get(), 0.0, true);
}

// Both libstdc++ and libc++ sort two elements by comparing the second element with the first. The comparison function
// reads its first argument first, whichever compiler builds it.
TEST_F(DateSeconds, AreTracedAtEveryComparison) {
  const TestArray<tests::element::Date> array({pool_[9].Get(), pool_[1].Get()});
  EXPECT_EQ(tests::TraceOf([&] { zkt::SortArrayZKT_Date(array.Get(), 0); }),
            "GetDateTotalSeconds 1.500000|GetDateTotalSeconds 2.000000|");
}

}  // namespace
