// Date options: fixed answers, setters, equality and the deliberately
// non-strict ordering, calendar ids, aggregation codes, lists and
// hierarchies.

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <thread>

#include "velcoredata/datetime/CalendarTypeId.h"
#include "velcoredata/datetime/DateOptionsUtils.h"
#include "velcoredata/datetime/GregorianDateOptions.h"
#include "velcoredata/datetime/ISO8601DateOptions.h"
#include "velcoredata/util/ScopedFeatureFlags.h"

namespace {

using A = AggType;

std::vector<int> Codes(const std::vector<AggType>& list) {
  std::vector<int> out;
  for (AggType a : list) out.push_back(static_cast<int>(a));
  return out;
}

TEST(GregorianDateOptionsTest, DefaultsFixedAnswersAndSetters) {
  GregorianDateOptions options;
  EXPECT_EQ(options.GetCalendarType(), CalendarType::Gregorian);
  EXPECT_EQ(options.GetCalendarTypeId(), TString(u"Gregorian"));
  EXPECT_EQ(options.GetStartOfWeek(), SOWValue::Sunday);
  EXPECT_EQ(options.GetFiscalYearStart(), FYSValues::January);
  EXPECT_EQ(options.GetMinDaysInFirstWeek(), 1u);
  EXPECT_EQ(static_cast<int>(options.GetFirstWeekBehavior()), 0);
  options.SetStartOfWeek(SOWValue::Wednesday);
  options.SetFiscalYearStart(FYSValues::October);
  EXPECT_EQ(options.GetStartOfWeek(), SOWValue::Wednesday);
  EXPECT_EQ(options.GetFiscalYearStart(), FYSValues::October);
  EXPECT_EQ(GregorianDateOptions(SOWValue::Monday).GetFiscalYearStart(), FYSValues::January);
  EXPECT_EQ(GregorianDateOptions(FYSValues::July).GetStartOfWeek(), SOWValue::Sunday);
  const GregorianDateOptions both(SOWValue::Saturday, FYSValues::March);
  EXPECT_EQ(both.GetStartOfWeek(), SOWValue::Saturday);
  EXPECT_EQ(both.GetFiscalYearStart(), FYSValues::March);
}

TEST(GregorianDateOptionsTest, CloneIsAnIndependentCopy) {
  GregorianDateOptions original(SOWValue::Monday, FYSValues::April);
  const std::unique_ptr<IDateOptions> copy(static_cast<const IDateOptions&>(original).Clone());
  EXPECT_TRUE(*copy == original);
  original.SetStartOfWeek(SOWValue::Friday);
  EXPECT_EQ(copy->GetStartOfWeek(), SOWValue::Monday);
  EXPECT_TRUE(*copy != original);
}

TEST(GregorianDateOptionsTest, EqualityComparesTheFourSettings) {
  EXPECT_TRUE(GregorianDateOptions() == GregorianDateOptions(SOWValue::Sunday, FYSValues::January));
  EXPECT_FALSE(GregorianDateOptions() == GregorianDateOptions(SOWValue::Monday));
  EXPECT_FALSE(GregorianDateOptions() == GregorianDateOptions(FYSValues::February));
  EXPECT_TRUE(GregorianDateOptions() != GregorianDateOptions(FYSValues::February));
}

// operator< returns true at the first smaller setting and skips larger ones,
// so it is not a strict order; hosts depend on these exact answers.
TEST(GregorianDateOptionsTest, LessThanIsTheFirstSmallerSettingNotALexicographicOrder) {
  const GregorianDateOptions mondayJanuary(SOWValue::Monday, FYSValues::January);
  const GregorianDateOptions sundayApril(SOWValue::Sunday, FYSValues::April);
  EXPECT_TRUE(sundayApril < mondayJanuary);  // Sunday < Monday decides
  EXPECT_TRUE(mondayJanuary < sundayApril);  // Monday > Sunday skipped, January < April decides
  EXPECT_FALSE(mondayJanuary < mondayJanuary);
  EXPECT_TRUE(GregorianDateOptions() < GregorianDateOptions(FYSValues::May));
  EXPECT_FALSE(GregorianDateOptions(FYSValues::May) < GregorianDateOptions());
}

TEST(CalendarTypeIdTest, IdsAndTheirCaseSensitiveReading) {
  EXPECT_EQ(CalendarTypeId::CALENDAR_GREGORIAN, TString(u"Gregorian"));
  EXPECT_EQ(CalendarTypeId::CALENDAR_ISO8601, TString(u"ISO8601"));
  EXPECT_EQ(CalendarTypeId::CALENDAR_DEFAULT, CalendarTypeId::CALENDAR_GREGORIAN);
  EXPECT_EQ(CalendarTypeId::ConvertCalendarTypeToId(CalendarType::Gregorian), TString(u"Gregorian"));
  EXPECT_EQ(CalendarTypeId::ConvertCalendarTypeToId(CalendarType::ISO8601), TString(u"ISO8601"));
  EXPECT_EQ(&CalendarTypeId::ConvertCalendarTypeToId(static_cast<CalendarType>(7)), &CalendarTypeId::CALENDAR_DEFAULT);
  EXPECT_EQ(CalendarTypeId::ConvertIdToCalendarType(TString(u"ISO8601")), CalendarType::ISO8601);
  EXPECT_EQ(CalendarTypeId::ConvertIdToCalendarType(TString(u"iso8601")), CalendarType::Gregorian);
  EXPECT_EQ(CalendarTypeId::ConvertIdToCalendarType(TString(u"Gregorian")), CalendarType::Gregorian);
  EXPECT_EQ(CalendarTypeId::ConvertIdToCalendarType(TString(u"Hebrew")), CalendarType::Gregorian);
  EXPECT_EQ(CalendarTypeId::ConvertIdToCalendarType(TString()), CalendarType::Gregorian);
}

TEST(GregorianDateOptionsTest, IsoCodesNormaliseToGregorianOnesAndOthersPassThrough) {
  const std::pair<int, int> mapped[] = {{26, 14}, {27, 15}, {28, 21}, {29, 22}, {38, 30}, {39, 31}, {40, 33}, {41, 34}};
  const GregorianDateOptions options;
  for (int code = -5; code <= 60; ++code) {
    int expected = code;
    for (const auto& [from, to] : mapped) {
      if (code == from) expected = to;
    }
    EXPECT_EQ(static_cast<int>(GregorianDateOptions::ConvertToGregorianAggType(static_cast<AggType>(code))), expected)
        << code;
    EXPECT_EQ(static_cast<int>(options.GetNormalizedAggType(static_cast<AggType>(code))), expected);
  }
}

TEST(GregorianDateOptionsTest, AggregationListsAreProcessWideAndExact) {
  const GregorianDateOptions options;
  EXPECT_EQ(Codes(options.GetBinDateAggregations()), (std::vector<int>{14, 15, 16, 17}));
  EXPECT_EQ(Codes(options.GetBinDateTimeAggregations()), (std::vector<int>{14, 15, 16, 17, 18, 19, 20}));
  EXPECT_EQ(Codes(options.GetUncommonDateAggregations()), (std::vector<int>{21, 22, 25, 23, 24, 25}));
  EXPECT_EQ(Codes(options.GetTruncDateAggregations()), (std::vector<int>{30, 31, 32, 33, 34}));
  EXPECT_EQ(Codes(options.GetTruncDateTimeAggregations()), (std::vector<int>{30, 31, 32, 33, 34, 35, 36, 37}));
  // One list for every object, living as long as the process.
  EXPECT_EQ(&options.GetBinDateAggregations(), &GregorianDateOptions(SOWValue::Monday).GetBinDateAggregations());
}

TEST(GregorianDateOptionsTest, HierarchiesByDataTypeAndKindAndUnknownPairsThrow) {
  const GregorianDateOptions options;
  using DT = DateDataType;
  using K = DateComputationKind;
  EXPECT_EQ(Codes(options.GetHierarchy(DT::Date, K::DatePart).GetDateAggregations()), (std::vector<int>{14, 15, 16, 17}));
  EXPECT_EQ(Codes(options.GetHierarchy(DT::DateTime, K::DatePart).GetDateAggregations()),
            (std::vector<int>{14, 15, 16, 17, 18, 19, 20}));
  EXPECT_EQ(Codes(options.GetHierarchy(DT::Date, K::Truncation).GetDateAggregations()),
            (std::vector<int>{30, 31, 32, 33, 34}));
  EXPECT_EQ(Codes(options.GetHierarchy(DT::DateTime, K::Truncation).GetDateAggregations()),
            (std::vector<int>{30, 31, 32, 33, 34, 35, 36, 37}));
  try {
    options.GetHierarchy(static_cast<DT>(2), K::DatePart);
    ADD_FAILURE() << "expected std::out_of_range";
  } catch (const std::out_of_range& e) {
    EXPECT_NE(std::string(e.what()).find("map::at"), std::string::npos) << e.what();
  }
  EXPECT_THROW(options.GetHierarchy(DT::Date, static_cast<K>(-1)), std::out_of_range);
}

// Runs `f` with the ISO-8601 aggregation flag on or off on this thread.
template <class F>
void WithIsoFlag(bool on, F f) {
  ScopedFeatureFlags scope;
  if (on) {
    scope.Get().Enable(FeatureFlagId::ISO8601DateAggregations);
  } else {
    scope.Get().Disable(FeatureFlagId::ISO8601DateAggregations);
  }
  f();
}

TEST(ISO8601DateOptionsTest, FixedAnswersAndSettersThatDoNothing) {
  ISO8601DateOptions options;
  EXPECT_EQ(options.GetCalendarType(), CalendarType::ISO8601);
  EXPECT_EQ(options.GetCalendarTypeId(), TString(u"ISO8601"));
  EXPECT_EQ(options.GetStartOfWeek(), SOWValue::Monday);
  EXPECT_EQ(options.GetFiscalYearStart(), FYSValues::January);
  EXPECT_EQ(options.GetMinDaysInFirstWeek(), 4u);
  EXPECT_EQ(static_cast<int>(options.GetFirstWeekBehavior()), 2);
  options.SetStartOfWeek(SOWValue::Sunday);
  options.SetFiscalYearStart(FYSValues::April);
  EXPECT_EQ(options.GetStartOfWeek(), SOWValue::Monday);
  EXPECT_EQ(options.GetFiscalYearStart(), FYSValues::January);
  const std::unique_ptr<IDateOptions> copy(static_cast<const IDateOptions&>(options).Clone());
  EXPECT_EQ(copy->GetCalendarType(), CalendarType::ISO8601);
  EXPECT_TRUE(*copy == options);
}

TEST(ISO8601DateOptionsTest, ComparedWithGregorianOptions) {
  const ISO8601DateOptions iso;
  // Monday weeks in both, but the calendar types differ.
  EXPECT_FALSE(GregorianDateOptions(SOWValue::Monday) == iso);
  EXPECT_TRUE(GregorianDateOptions(SOWValue::Monday) != iso);
  EXPECT_TRUE(GregorianDateOptions(SOWValue::Monday) < iso);
  EXPECT_FALSE(iso < GregorianDateOptions(SOWValue::Monday));
  // Not a strict order: each of these is "less" than the other.
  const GregorianDateOptions saturday(SOWValue::Saturday);
  EXPECT_TRUE(saturday < iso);
  EXPECT_TRUE(iso < saturday);
}

TEST(ISO8601DateOptionsTest, GregorianCodesNormaliseToIsoOnesAndTheMappingsAreNotInverse) {
  const std::pair<int, int> mapped[] = {{14, 26}, {15, 27}, {16, 28}, {17, 29}, {21, 28}, {22, 29},
                                        {30, 38}, {31, 39}, {32, 40}, {33, 40}, {34, 41}};
  const ISO8601DateOptions options;
  for (int code = -5; code <= 60; ++code) {
    int expected = code;
    for (const auto& [from, to] : mapped) {
      if (code == from) expected = to;
    }
    EXPECT_EQ(static_cast<int>(ISO8601DateOptions::ConvertToISO8601AggType(static_cast<AggType>(code))), expected)
        << code;
    EXPECT_EQ(static_cast<int>(options.GetNormalizedAggType(static_cast<AggType>(code))), expected);
  }
  EXPECT_EQ(GregorianDateOptions::ConvertToGregorianAggType(ISO8601DateOptions::ConvertToISO8601AggType(A::DatePartMonth)),
            A::DatePartWeek);
  EXPECT_EQ(GregorianDateOptions::ConvertToGregorianAggType(ISO8601DateOptions::ConvertToISO8601AggType(A::TruncMonth)),
            A::TruncWeek);
  EXPECT_EQ(ISO8601DateOptions::ConvertToISO8601AggType(GregorianDateOptions::ConvertToGregorianAggType(A::TruncISODay)),
            A::TruncISODay);
}

TEST(ISO8601DateOptionsTest, ListsAndHierarchiesFollowTheFeatureFlagOnEachCall) {
  const ISO8601DateOptions options;
  using DT = DateDataType;
  using K = DateComputationKind;
  struct Expected {
    std::vector<int> binDate, binDateTime, truncDate, truncDateTime;
  };
  const Expected on{{26, 27, 28, 29}, {26, 27, 28, 29, 18, 19, 20}, {38, 39, 40, 41}, {38, 39, 40, 41, 35, 36, 37}};
  const Expected off{{14, 21}, {14, 21, 22, 18, 19, 20}, {30, 33}, {30, 33, 34, 35, 36, 37}};
  for (const bool flag : {true, false, true}) {
    WithIsoFlag(flag, [&] {
      SCOPED_TRACE(flag ? "flag on" : "flag off");
      const Expected& e = flag ? on : off;
      EXPECT_EQ(Codes(options.GetBinDateAggregations()), e.binDate);
      EXPECT_EQ(Codes(options.GetBinDateTimeAggregations()), e.binDateTime);
      EXPECT_TRUE(options.GetUncommonDateAggregations().empty());
      EXPECT_EQ(Codes(options.GetTruncDateAggregations()), e.truncDate);
      EXPECT_EQ(Codes(options.GetTruncDateTimeAggregations()), e.truncDateTime);
      EXPECT_EQ(Codes(options.GetHierarchy(DT::Date, K::DatePart).GetDateAggregations()), e.binDate);
      EXPECT_EQ(Codes(options.GetHierarchy(DT::DateTime, K::DatePart).GetDateAggregations()), e.binDateTime);
      EXPECT_EQ(Codes(options.GetHierarchy(DT::Date, K::Truncation).GetDateAggregations()), e.truncDate);
      EXPECT_EQ(Codes(options.GetHierarchy(DT::DateTime, K::Truncation).GetDateAggregations()), e.truncDateTime);
      EXPECT_THROW(options.GetHierarchy(static_cast<DT>(5), K::DatePart), std::out_of_range);
      // The finest level has nothing nested.
      const DateTimeHierarchy h = options.GetHierarchy(DT::DateTime, K::Truncation);
      EXPECT_FALSE(h.HasNestedDateAggregation(h.GetDateAggregations().back()));
    });
  }
}

TEST(DateOptionsUtilsTest, CreatesOptionsByCalendarType) {
  EXPECT_EQ(DateOptionsUtils::CreateDateOptionsForCalendarType(CalendarType::ISO8601)->GetCalendarType(),
            CalendarType::ISO8601);
  const auto gregorian = DateOptionsUtils::CreateDateOptionsForCalendarType(CalendarType::Gregorian);
  EXPECT_TRUE(*gregorian == GregorianDateOptions());
  EXPECT_TRUE(*DateOptionsUtils::CreateDateOptionsForCalendarType(static_cast<CalendarType>(9)) == GregorianDateOptions());
}

TEST(DateOptionsUtilsTest, OptionsTypesIncludeIsoOnlyWhenAskedAndFlagged) {
  WithIsoFlag(true, [] {
    const auto& both = DateOptionsUtils::GetDateOptionsTypes(true);
    ASSERT_EQ(both.size(), 2u);
    EXPECT_EQ(both[0]->GetCalendarType(), CalendarType::Gregorian);
    EXPECT_EQ(both[1]->GetCalendarType(), CalendarType::ISO8601);
    EXPECT_EQ(&both, &DateOptionsUtils::GetDateOptionsTypes(true));
    EXPECT_EQ(DateOptionsUtils::GetDateOptionsTypes(false).size(), 1u);
  });
  WithIsoFlag(false, [] {
    ASSERT_EQ(DateOptionsUtils::GetDateOptionsTypes(true).size(), 1u);
    EXPECT_EQ(&DateOptionsUtils::GetDateOptionsTypes(true), &DateOptionsUtils::GetDateOptionsTypes(false));
  });
}

TEST(DateOptionsUtilsTest, AllAggregationsConcatenateOrSortTheTypesLists) {
  WithIsoFlag(true, [] {
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllBinDateAggregations(true)), (std::vector<int>{14, 15, 16, 17, 26, 27, 28, 29}));
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllBinDateAggregations(false)), (std::vector<int>{14, 15, 16, 17}));
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllUncommonDateAggregations(true)), (std::vector<int>{21, 22, 25, 23, 24, 25}));
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllTruncDateAggregations(true)),
              (std::vector<int>{30, 31, 32, 33, 34, 38, 39, 40, 41}));
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllBinInstanceAggregations(false)),
              (std::vector<int>{14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24}));
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllBinInstanceAggregations(true)),
              (std::vector<int>{14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 26, 27, 28, 29}));
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllTruncInstanceAggregations(true)),
              (std::vector<int>{30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41}));
  });
  WithIsoFlag(false, [] {
    // Without the flag the ISO options are not among the types at all.
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllBinDateAggregations(true)), (std::vector<int>{14, 15, 16, 17}));
    EXPECT_EQ(Codes(DateOptionsUtils::GetAllTruncInstanceAggregations(true)),
              (std::vector<int>{30, 31, 32, 33, 34, 35, 36, 37}));
  });
}

// First use of the process-wide lists from many threads at once, each with
// its own state of the flag: every thread sees its own answer.
TEST(DateOptionsConcurrencyTest, ThreadsWithDifferentFlagsReadTheirOwnLists) {
  std::vector<std::thread> threads;
  std::vector<int> failures(8, 0);
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([t, &failures] {
      WithIsoFlag(t % 2 == 0, [&] {
        const ISO8601DateOptions options;
        const size_t expected = t % 2 == 0 ? 4u : 2u;
        for (int i = 0; i < 200; ++i) {
          if (options.GetBinDateAggregations().size() != expected) ++failures[t];
          if (options.GetHierarchy(DateDataType::Date, DateComputationKind::Truncation).GetDateAggregations().size() !=
              expected) {
            ++failures[t];
          }
          if (DateOptionsUtils::GetDateOptionsTypes(true).size() != (t % 2 == 0 ? 2u : 1u)) ++failures[t];
          if (GregorianDateOptions().GetUncommonDateAggregations().size() != 6u) ++failures[t];
        }
      });
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, std::vector<int>(8, 0));
}

}  // namespace
