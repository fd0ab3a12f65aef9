// Date options: fixed answers, setters, equality and the deliberately
// non-strict ordering, calendar ids, aggregation codes, lists and
// hierarchies.

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/datetime/CalendarTypeId.h"
#include "velcoredata/datetime/GregorianDateOptions.h"

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

}  // namespace
