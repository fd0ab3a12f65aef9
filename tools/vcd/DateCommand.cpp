// vcd date TEXT: a date-time read with every form of a locale, and its parts.
//
//   vcd date "2021-05-17 13:45" --fiscal-start 4 --week-start mon
//   vcd date 2021-01-31 --add 1 month --diff 2020-12-25 week --start-of quarter
//
// Prints the value in ISO form, its OLE date, day of week, ISO-8601 year,
// week and weekday, quarter, and fiscal year, quarter, month and week; then
// the result of each of --add, --diff and --start-of. --iso reads weeks and
// periods with the ISO-8601 options (weeks from Monday, years from January)
// and cannot be combined with --fiscal-start or --week-start.

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Command.h"
#include "velcoredata/datetime/DateArithmetic.h"
#include "velcoredata/datetime/GregorianDateOptions.h"
#include "velcoredata/datetime/ISO8601DateOptions.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/TString.h"

namespace {

const char* const kDayNames[] = {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};
const char* const kMonthNames[] = {"january", "february", "march",     "april",   "may",      "june",
                                   "july",    "august",   "september", "october", "november", "december"};
// In DatePeriodType order.
const char* const kPeriodNames[] = {"year",   "quarter", "month",   "week",       "day",    "hour",
                                    "minute", "second",  "isoyear", "isoquarter", "isoweek"};

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

std::optional<long long> ToInteger(const std::string& text) {
  if (text.empty()) return std::nullopt;
  char* end = nullptr;
  errno = 0;
  const long long n = std::strtoll(text.c_str(), &end, 10);
  if (*end != '\0' || errno == ERANGE) return std::nullopt;
  return n;
}

// A number in [1, count] or a name from `names` (whole, or its first three
// letters), case-insensitive.
int NumberOrName(const std::string& option, const std::string& text, const char* const* names, int count) {
  if (const auto n = ToInteger(text); n && *n >= 1 && *n <= count) return static_cast<int>(*n);
  const std::string lower = Lower(text);
  for (int i = 0; i < count; ++i) {
    const std::string name = names[i];
    if (lower == name || (lower.size() == 3 && name.compare(0, 3, lower) == 0)) return i + 1;
  }
  throw vcd::UsageError(option + " expects 1-" + std::to_string(count) + " or a name, not '" + text + "'");
}

DatePeriodType Period(const std::string& option, const std::string& text) {
  std::string lower = Lower(text);
  if (lower.size() > 1 && lower.back() == 's') lower.pop_back();  // "months" reads as "month"
  for (int i = 0; i < 11; ++i) {
    if (lower == kPeriodNames[i] || lower == std::string("iso-") + (kPeriodNames[i] + 3)) {
      return static_cast<DatePeriodType>(i);
    }
  }
  throw vcd::UsageError(option + ": unknown period '" + text +
                        "' (year, quarter, month, week, day, hour, minute, second, isoyear, isoquarter, isoweek)");
}

struct DateRequest {
  std::string text;
  std::optional<std::string> locale;
  std::optional<int> fiscalStart;
  std::optional<int> weekStart;
  bool iso = false;
  struct Add {
    long long n;
    DatePeriodType period;
  };
  struct Diff {
    std::string other;
    DatePeriodType period;
  };
  std::vector<Add> adds;
  std::vector<Diff> diffs;
  std::vector<DatePeriodType> startsOf;
};

DateRequest ParseArguments(const std::vector<std::string>& args) {
  DateRequest request;
  bool haveText = false;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    const auto value = [&](int k) -> const std::string& {
      if (i + k >= args.size()) throw vcd::UsageError(arg + " expects " + std::to_string(k) + " value(s)");
      return args[i + k];
    };
    if (arg == "--locale") {
      request.locale = value(1);
      i += 1;
    } else if (arg == "--fiscal-start") {
      request.fiscalStart = NumberOrName(arg, value(1), kMonthNames, 12);
      i += 1;
    } else if (arg == "--week-start") {
      request.weekStart = NumberOrName(arg, value(1), kDayNames, 7);
      i += 1;
    } else if (arg == "--iso") {
      request.iso = true;
    } else if (arg == "--add") {
      const auto n = ToInteger(value(1));
      if (!n) throw vcd::UsageError("--add expects a whole number, not '" + value(1) + "'");
      request.adds.push_back({*n, Period(arg, value(2))});
      i += 2;
    } else if (arg == "--diff") {
      request.diffs.push_back({value(1), Period(arg, value(2))});
      i += 2;
    } else if (arg == "--start-of") {
      request.startsOf.push_back(Period(arg, value(1)));
      i += 1;
    } else if (arg.size() > 2 && arg.compare(0, 2, "--") == 0) {
      throw vcd::UsageError("unknown option '" + arg + "'");
    } else if (!haveText) {
      request.text = arg;
      haveText = true;
    } else {
      throw vcd::UsageError("expected one TEXT, got also '" + arg + "'");
    }
  }
  if (!haveText) throw vcd::UsageError("expected a TEXT to read as a date");
  if (request.iso && (request.fiscalStart || request.weekStart)) {
    throw vcd::UsageError("--iso fixes weeks (Monday) and years (January): leave out --fiscal-start and --week-start");
  }
  return request;
}

std::unique_ptr<TLocale> MakeLocale(const std::optional<std::string>& name) {
  if (!name) return std::make_unique<TLocale>(TLocale::GetUserDefaultLocale());
  if (const auto lcid = ToInteger(*name); lcid && *lcid > 0 && *lcid <= 0xFFFFFFFF) {
    return std::make_unique<TLocale>(static_cast<uint32_t>(*lcid));
  }
  return std::make_unique<TLocale>(TString::fromUtf8(*name));
}

DateTime Read(const std::string& text, const TLocale& locale) {
  const TString utf16 = TString::fromUtf8(text);
  const DateTime dt = DateTime::ParseDateTimeTryAllFormats(utf16.c_str(), locale);
  if (!dt.IsValid()) throw std::runtime_error("'" + text + "' is not a date or time this locale can read");
  return dt;
}

// 2021-05-17T13:45:30, with the units below a second when there are any
// (.2500).
std::string IsoText(const DateTime& dt) {
  const DateTime::YearMonthDay ymd = dt.GetYearMonthDay();
  char buffer[64];
  int n = std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d", ymd.year, ymd.month, ymd.day,
                        dt.GetHour(), dt.GetMinute(), dt.GetSecond());
  const unsigned units = static_cast<unsigned>(dt.GetRepresentation() % 10000);
  if (units != 0) std::snprintf(buffer + n, sizeof buffer - static_cast<size_t>(n), ".%04u", units);
  return buffer;
}

std::string Capitalised(const char* name) {
  std::string s = name;
  s[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(s[0])));
  return s;
}

int RunDate(const std::vector<std::string>& args, vcd::CommandIo& io) {
  const DateRequest request = ParseArguments(args);
  const std::unique_ptr<TLocale> locale = MakeLocale(request.locale);
  std::unique_ptr<IDateOptions> options;
  if (request.iso) {
    options = std::make_unique<ISO8601DateOptions>();
  } else {
    options = std::make_unique<GregorianDateOptions>(static_cast<SOWValue>(request.weekStart.value_or(1)),
                                                     static_cast<FYSValues>(request.fiscalStart.value_or(1)));
  }
  const FYSValues fys = options->GetFiscalYearStart();
  const int sow = static_cast<int>(options->GetStartOfWeek());
  const DateTime dt = Read(request.text, *locale);

  char ole[40];
  std::snprintf(ole, sizeof ole, "%.10g", dt.ToOleDate());
  char isoWeek[40];
  std::snprintf(isoWeek, sizeof isoWeek, "%04d-W%02d-%d", dt.GetISO8601Year(), dt.GetISO8601Week(),
                dt.GetISO8601DayOfWeek());
  io.out << "text:          " << request.text << "\n"
         << "value:         " << IsoText(dt) << "\n"
         << "OLE date:      " << ole << "\n"
         << "day of week:   " << Capitalised(kDayNames[dt.GetDayOfWeek() - 1]) << " (" << dt.GetDayOfWeek()
         << ", 1 = Sunday)\n"
         << "ISO-8601:      " << isoWeek << " (year " << dt.GetISO8601Year() << ", week " << dt.GetISO8601Week()
         << ", weekday " << dt.GetISO8601DayOfWeek() << ", quarter " << dt.GetISO8601Quarter() << ")\n"
         << "quarter:       " << dt.GetQuarter() << "\n"
         << "fiscal:        year " << dt.GetFiscalYear(fys) << ", quarter " << dt.GetFiscalQuarter(fys) << ", month "
         << dt.GetFiscalMonth(fys) << ", week " << dt.GetFiscalWeek(*options) << " (year from "
         << Capitalised(kMonthNames[static_cast<int>(fys) - 1]) << ", weeks from "
         << Capitalised(kDayNames[sow - 1]) << ")\n";
  for (const DateRequest::Add& add : request.adds) {
    io.out << "add " << add.n << " " << kPeriodNames[static_cast<int>(add.period)] << ": "
           << IsoText(AdjustByDatePeriod(dt, add.period, add.n)) << "\n";
  }
  for (const DateRequest::Diff& diff : request.diffs) {
    const DateTime other = Read(diff.other, *locale);
    io.out << "diff " << kPeriodNames[static_cast<int>(diff.period)] << " from " << IsoText(other) << ": "
           << DatePeriodDifference(dt, other, diff.period, *options) << "\n";
  }
  for (DatePeriodType period : request.startsOf) {
    io.out << "start of " << kPeriodNames[static_cast<int>(period)] << ": "
           << IsoText(FindStartOfPeriod(dt, period, *options)) << "\n";
  }
  return 0;
}

const vcd::CommandRegistration kDate{
    "date",
    "date TEXT [--locale LCID|NAME] [--fiscal-start MONTH] [--week-start DAY] [--iso] [--add N PERIOD]... "
    "[--diff OTHER PERIOD]... [--start-of PERIOD]...",
    "read TEXT as a date-time and print its parts, fiscal and ISO-8601 weeks, and period arithmetic", &RunDate};

}  // namespace
