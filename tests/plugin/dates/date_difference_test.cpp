// Compares the calendar difference with a simple model, and tests the DateDifferenceZKT class on the development host.
#include "dates/date_difference.h"
#include "frame/catalogue/tables.h"

#include <algorithm>
#include <limits>
#include <random>

#include "core/dates.h"
#include "dates/calendar_difference.h"
#include "dates/date_objects.h"
#include "frame/contract/instance_data.h"
#include "plugin/dates/calendar_model.h"
#include "support/host_fixture.h"

namespace {

using tests::AsDate;
using tests::AsDateTime;
using tests::ModelMoment;
using zkt::CalendarFields;

CalendarFields FieldsOf(const ModelMoment& m) {
  return {.day = m.day, .month = m.month, .year = m.year, .minute = m.minute, .second = m.second, .hour = m.hour};
}

std::string TextOf(const CalendarFields& f) {
  std::string text;
  for (const std::int64_t field : {f.year, f.month, f.day, f.hour, f.minute, f.second})
    text += std::to_string(field) + " ";
  return text;
}

// Returns the difference, after checking the order of the dates against the model.
std::string Difference(const ModelMoment& start, const ModelMoment& end) {
  const bool isLater = zkt::IsLater(FieldsOf(start), FieldsOf(end));
  EXPECT_EQ(isLater, tests::ModelDifferenceOf(start, end).swap);
  return TextOf(isLater ? zkt::CalendarDifference(FieldsOf(end), FieldsOf(start))
                        : zkt::CalendarDifference(FieldsOf(start), FieldsOf(end)));
}

TEST(CalendarDifference, BorrowsFromTheMonthsBeforeTheEnd) {
  const struct {
    const char* note;
    ModelMoment start, end;
    const char* want;
  } cases[] = {
      {"the same moment", {2024, 2, 29, 1, 2, 3}, {2024, 2, 29, 1, 2, 3}, "0 0 0 0 0 0 "},
      {"end of January to March", {2023, 1, 31, 0, 0, 0}, {2023, 3, 1, 0, 0, 0}, "0 0 29 0 0 0 "},
      {"the same in a leap year", {2024, 1, 31, 0, 0, 0}, {2024, 3, 1, 0, 0, 0}, "0 0 30 0 0 0 "},
      {"New Year's Eve", {2024, 12, 31, 0, 0, 0}, {2025, 1, 1, 0, 0, 0}, "0 0 1 0 0 0 "},
      {"one second carries through every field", {2023, 12, 31, 23, 59, 59}, {2024, 1, 1, 0, 0, 0}, "0 0 0 0 0 1 "},
      {"birthday on a leap day", {2000, 2, 29, 0, 0, 0}, {2024, 2, 28, 0, 0, 0}, "23 11 30 0 0 0 "},
      {"the end's leap year counts", {2023, 2, 20, 0, 0, 0}, {2024, 1, 10, 0, 0, 0}, "0 10 21 0 0 0 "},
      {"end before start", {2024, 3, 1, 0, 0, 0}, {2024, 1, 31, 0, 0, 0}, "0 0 30 0 0 0 "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Difference(c.start, c.end), c.want) << c.note;
    EXPECT_EQ(TextOf(FieldsOf(tests::ModelDifferenceOf(c.start, c.end).value)), c.want) << c.note << " (model)";
  }
}

TEST(CalendarDifference, AgreesWithTheModel) {
  constexpr std::int64_t kLastDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  constexpr std::int64_t kYears[] = {1600, 1899, 1900, 1904, 1999, 2000, 2023, 2024, 2025, 2100, 2400};
  std::mt19937 random(20240229);
  const auto below = [&](std::int64_t n) { return static_cast<std::int64_t>(random() % static_cast<unsigned>(n)); };
  const auto moment = [&] {
    ModelMoment m{kYears[below(std::ssize(kYears))], 1 + below(12), 1, below(24), below(60), below(60)};
    const std::int64_t last = kLastDays[m.month - 1] + (m.month == 2 && tests::ModelIsLeapYear(m.year) ? 1 : 0);
    m.day = below(3) == 0 ? last : 1 + below(last);
    if (below(8) == 0) m = {m.year, m.month - 40 + below(80), m.day - below(10'000), m.hour, -below(5000), below(70)};
    return m;
  };
  for (int i = 0; i < 200'000; ++i) {
    const ModelMoment start = moment();
    const ModelMoment end = moment();
    ASSERT_EQ(Difference(start, end), TextOf(FieldsOf(tests::ModelDifferenceOf(start, end).value)))
        << TextOf(FieldsOf(start)) << "to " << TextOf(FieldsOf(end));
  }
}

TEST(CalendarDifference, WrapsAndBoundsItsLogForEveryField) {
  constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  const std::int64_t limits[] = {kMin, kMin + 1, -1000, -12, -11, -1, 0, 1, 12, 13, 14, 1000, kMax - 1, kMax};
  constexpr std::ptrdiff_t kMaxLines = 15'000;
  for (const std::int64_t day : limits)
    for (const std::int64_t month : limits)
      for (const std::int64_t second : limits) {
        const CalendarFields start{.day = day, .second = second};
        const CalendarFields end{.day = 1, .month = month, .year = second};
        const CalendarFields result = zkt::CalendarDifference(start, end);
        EXPECT_TRUE(result.second >= 0 && result.minute >= 0 && result.day >= 0 && result.month >= 0)
            << day << " " << month << " " << second;
        std::string ofTracing;
        const std::string trace = tests::TraceOf([&] { ofTracing = TextOf(zkt::CalendarDifference(start, end)); });
        EXPECT_EQ(ofTracing, TextOf(result)) << day << " " << month << " " << second;
        EXPECT_LE(std::ranges::count(trace, '|'), kMaxLines) << day << " " << month << " " << second;
      }
}

// Borrowing many months in one step must give the same result as borrowing them one by one. The plug-in does the latter
// while debugging is on.
TEST(CalendarDifference, BorrowsManyMonthsCorrectlyInOneStep) {
  for (const std::int64_t month : {-500, -13, -12, -11, 0, 5, 12, 13, 14, 500})
    for (const std::int64_t day : {1, 364, 365, 366, 367, 1999, 2001, 40'000}) {
      const CalendarFields start{.day = day};
      const CalendarFields end{.month = month, .year = 2024};
      const std::string atOnce = TextOf(zkt::CalendarDifference(start, end));
      tests::TraceOf([&] { EXPECT_EQ(TextOf(zkt::CalendarDifference(start, end)), atOnce) << month << " " << day; });
    }
}

class DateDifference : public tests::HostTest {
 protected:
  DateDifference() {
    host_.objectClasses.push_back(host::MakeClass(zkt::DateDifferenceClass(), 3));
    dates_[0] = Make("Date", {2024, 1, 31, 0, 0, 0});
    dates_[1] = Make("Date", {2024, 3, 1, 12, 0, 0});
  }
  ~DateDifference() override {
    for (auto& date : dates_) date = {};
    difference_ = {};
    host_.objectClasses.clear();
  }

  static host::ObjectRef Make(const char* className, const std::array<std::int64_t, 6>& fields) {
    host::ObjectRef date(host::MakeObject(host::FindClass(className)));
    EXPECT_TRUE(host::SetCalendarFields(date.Get(), fields));
    return date;
  }
  zkt::DateDifferenceData& Data() {
    return *zkt::InstanceData<zkt::DateDifferenceData>(zkt::gDateDifferenceClass, difference_.Get());
  }

  host::Host& host_ = host::Host::Current();
  host::ObjectRef dates_[2];
  host::ObjectRef difference_;
};

TEST_F(DateDifference, ExchangesObjectsFieldsAndSeconds) {
  difference_ = host::ObjectRef(zkt::DifferenceZKT(AsDate(dates_[1]), AsDate(dates_[0])));
  EXPECT_TRUE(Data().swap && Data().ready);
  EXPECT_EQ(Data().startDate, dates_[0].Get());
  EXPECT_EQ(Data().endDate, dates_[1].Get());
  EXPECT_EQ(TextOf(Data().start), "2024 1 31 0 0 0 ");
  EXPECT_EQ(TextOf(Data().end), "2024 3 1 12 0 0 ");
  EXPECT_EQ(TextOf(Data().result), "0 0 30 12 0 0 ");
  EXPECT_EQ(Data().totalSeconds, 30.5 * 24 * 60 * 60);
  EXPECT_EQ(Data().totalDay, 30);
  EXPECT_GT(Data().endTotalSeconds, Data().startTotalSeconds);
}

TEST_F(DateDifference, ReleasesTheFormerDatesWhenRecalculated) {
  const tests::RejectNilUnlock noNil;
  difference_ = host::ObjectRef(zkt::DifferenceZKT(AsDate(dates_[0]), AsDate(dates_[1])));
  const host::ObjectRef utc = Make("DateTime", {2000, 2, 29, 0, 0, 0});
  EXPECT_TRUE(zkt::CalcDatesV(difference_.Get(), AsDateTime(utc), AsDateTime(utc)));
  EXPECT_EQ(TextOf(Data().result), "0 0 0 0 0 0 ");
  EXPECT_FALSE(zkt::CalcDates(difference_.Get(), AsDate(dates_[0]), nullptr));
  EXPECT_EQ(Data().startDate, nullptr);
  EXPECT_FALSE(Data().ready);
  EXPECT_EQ(TextOf(Data().start), "0 0 0 0 0 0 ");
}

TEST_F(DateDifference, IsNilForNilAndUnreadableDates) {
  EXPECT_EQ(zkt::DifferenceZKT(nullptr, AsDate(dates_[0])), nullptr);
  EXPECT_EQ(zkt::DifferenceZKTdt(nullptr, nullptr), nullptr);
  const host::ObjectRef noDate(host::MakeObject(host::FindClass("RuntimeException")));
  EXPECT_EQ(zkt::DifferenceZKT(AsDate(dates_[0]), AsDate(noDate)), nullptr);
  difference_ = host::ObjectRef(host::MakeObject(host::FindClass("DateDifferenceZKT")));
  zkt::ConstructDateDifferenceFromDates(difference_.Get(), AsDate(dates_[0]), AsDate(noDate));
  EXPECT_FALSE(Data().ready);
  EXPECT_EQ(TextOf(Data().start), "2024 1 31 0 0 0 ");  // the fields that could be read
  EXPECT_EQ(Data().endDate, noDate.Get());
  const tests::ServiceWithheld without(zkt::REALGetPropValueInteger);
  EXPECT_EQ(zkt::DifferenceZKT(AsDate(dates_[0]), AsDate(dates_[1])), nullptr);
}

TEST_F(DateDifference, TruncatesTheTotalToWholeDays) {
  difference_ = host::ObjectRef(host::MakeObject(host::FindClass("DateDifferenceZKT")));
  constexpr double kHuge = 1e300;
  const struct {
    double seconds;
    std::int64_t days;
  } cases[] = {{36.0 * 3600, 1},
               {-36.0 * 3600, -1},
               {kHuge, std::numeric_limits<std::int64_t>::max()},
               {-kHuge, std::numeric_limits<std::int64_t>::min()},
               {0x1p63 * 24 * 3600, std::numeric_limits<std::int64_t>::max()},
               {-0x1p63 * 24 * 3600, std::numeric_limits<std::int64_t>::min()},
               {std::numeric_limits<double>::quiet_NaN(), 0}};
  static double seconds;
  const auto readSeconds = [](REALobject, const char*, double* out) -> REALboolean {
    *out = std::exchange(seconds, 0.0);  // the end date is read first
    return true;
  };
  for (const auto& c : cases) {
    seconds = c.seconds;
    zkt::HostBindingTestAccess::Bind(zkt::REALGetPropValueDouble, +readSeconds);
    zkt::CalcDates(difference_.Get(), AsDate(dates_[0]), AsDate(dates_[0]));
    zkt::HostBindingTestAccess::Forget(zkt::REALGetPropValueDouble);
    EXPECT_EQ(Data().totalDay, c.days) << c.seconds;
  }
}

TEST_F(DateDifference, TracesEveryStep) {
  const host::ObjectRef start = Make("Date", {2024, 12, 31, 0, 0, 0}), end = Make("Date", {2025, 1, 1, 0, 0, 0});
  EXPECT_EQ(tests::TraceOf([&] { difference_ = host::ObjectRef(zkt::DifferenceZKT(AsDate(start), AsDate(end))); }),
            "year   2024, 2025|month  12, 1|day    31, 1|hour   0, 0|minute 0, 0|second 0, 0|swap 0|"
            "eTotalSeconds 3818534400.000000|sTotalSeconds 3818448000.000000|TotalSeconds 86400.000000|"
            "totalday 1.000000|totalday 1|diff year   1|diff month  -11|diff day    -30|diff hour   0|diff minute 0|"
            "diff second 0|emonth 0|mdays 31|year   0|month  0|day    1|hour   0|minute 0|second 0|");
}

TEST_F(DateDifference, CreatesDatesWithAnyAvailableService) {
  const CalendarFields leapDay{.day = 29, .month = 2, .year = 2024, .minute = 5, .second = 6, .hour = 4};
  const char* const withOffset =
      "Constructor(Year as Integer, Month as Integer, Day as Integer, Hour as Integer, Minute as Integer, "
      "Second as Integer, GMTOffset as Double)";
  const char* const withoutOffset =
      "Constructor(Year as Integer, Month as Integer, Day as Integer, hour as Integer, minute as Integer, "
      "second as Integer)";
  const auto make = [&] {
    const host::ObjectRef date(reinterpret_cast<REALobject>(zkt::NewDate(leapDay)));
    return host::DateText(date.Get());
  };
  const std::string trace = tests::TraceOf([&] {
    EXPECT_EQ(make(), "2024-02-29 04:05:06");
    host_.withheld.insert(withOffset);
    EXPECT_EQ(make(), "2024-02-29 04:05:06");
    host_.withheld.insert(withoutOffset);
    EXPECT_EQ(make(), "2024-02-29 04:05:06");
  });
  host_.withheld.clear();
  EXPECT_NE(trace.find("NewDate 2024, 2, 29, 4, 5, 6|f1 0x"), std::string::npos) << trace;
  EXPECT_NE(trace.find("|f1 (nil)|f2 (nil)|Date Constructor 3 missing!?|"), std::string::npos) << trace;
}

// The offset is in hours from GMT; -10000 means local time.
TEST_F(DateDifference, CreatesDatesInLocalTime) {
  static double offset;
  auto& methods = host::FindClass("Date")->methods;
  const auto saved = methods;
  for (auto& [declaration, function] : methods)
    if (declaration.find("GMTOffset") != std::string::npos)
      function = reinterpret_cast<void*>(+[](REALobject, std::int64_t, std::int64_t, std::int64_t, std::int64_t,
                                             std::int64_t, std::int64_t, double given) { offset = given; });
  offset = 0;
  const host::ObjectRef date(reinterpret_cast<REALobject>(zkt::NewDate({.day = 29, .month = 2, .year = 2024})));
  methods = saved;
  EXPECT_EQ(offset, -10000.0);
}

TEST_F(DateDifference, NeedsTheHostsConstructorForADateTime) {
  const CalendarFields leapDay{.day = 29, .month = 2, .year = 2024};
  const host::ObjectRef date(reinterpret_cast<REALobject>(zkt::NewDateTime(leapDay)));
  EXPECT_EQ(host::DateText(date.Get()), "2024-02-29 00:00:00");
  const tests::ServiceWithheld without(zkt::REALLoadObjectMethod);
  EXPECT_EQ(tests::TraceOf([&] { EXPECT_EQ(zkt::NewDateTime(leapDay), nullptr); }),
            "NewDateTime 2024, 2, 29, 0, 0, 0|NewDateTime 2024, 2, 29, 0, 0, 0, 0|timezone (nil)|"
            "Failed to get constructor for DateTime.|");
}

}  // namespace
