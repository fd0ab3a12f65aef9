// The README's first example, built and run by the packaging test against
// an installed copy of the library.
#include <cstdio>

#include "velcoredata/velcoredata.h"

int main() {
  // Dates: parse in a locale (de_DE), compute in fiscal years and ISO weeks.
  const char16_t text[] = u"17.05.2021";
  DateTime d;
  if (!DateTime::ParseDateTime(text, text + 10, d, TLocale(0x407))) return 1;
  const int fiscalYear = d.GetFiscalYear(FYSValues::April);               // 2022
  const DateTime next = AdjustByDatePeriod(d, DatePeriodType::Month, 1);  // 2021-06-17
  const int isoWeek = d.GetISO8601Week();                                 // 20

  // Strings: compare and intern under a collation (one ICU collator per thread).
  const Collation german(std::string("de_DE"), false, Collation::CaseOpt::CaseInsensitive,
                         Collation::AccentOpt::AccentSensitive, Collation::SortOpt::WordSort,
                         Collation::PunctOpt::Default, 0);
  const int order = german.Compare(u"co-op", u"Coop");                    // 0: equal
  const auto interned = IndirectString::Lookup(german, u"Stra\u00DFe");   // one object per text

  // Names, colours, versions, feature flags.
  const QualifiedName name = QualifiedName::ParseGlobal(TString(u"[Sales].[Amount]"));
  const ColorObject red = ColorObjectParser::Parse(TString(u"#ff0000"));
  const bool newer = VersionNumber(TString(u"2021.4.3")) > VersionNumber(2021, 4, 2);

  const TLocale english(0x409);
  std::printf("%s: fiscal year %d, ISO week %d, a month later %s\n",
              d.Format(u"yyyy-MM-dd", english).toUtf8().c_str(), fiscalYear, isoWeek,
              next.Format(u"yyyy-MM-dd", english).toUtf8().c_str());
  std::printf("%s: co-op vs Coop %d; %zu name parts; %s; newer %d; ISO aggregations %d\n",
              german.GetName().toUtf8().c_str(), order, name.GetNumberOfComponents(),
              red.String().toUtf8().c_str(), newer,
              FeatureFlags::IsOn(FeatureFlagId::ISO8601DateAggregations));
  return fiscalYear == 2022 && isoWeek == 20 && order == 0 && interned ? 0 : 1;
}
