#include "velcoredata/datetime/DateTimeParsingFormats.h"

#include <iterator>

#include "velcoredata/platform/LogicException.h"

namespace {

struct ParsingFormat {
  const char16_t* pattern;
  bool localeNeutral;
};

constexpr bool kNeutral = true;
constexpr bool kDefaultLocale = false;

// Ordered so that a text is read by the most specific form first: offsets
// and fractions before plain seconds, seconds before minutes.
const ParsingFormat kFormats[] = {
    // ISO 8601 date-times, extended
    {u"yyyy-MM-dd'T'HH:mm:ss.SSSXXX", kNeutral},    // 0
    {u"yyyy-MM-dd'T'HH:mm:ssXXX", kNeutral},        // 1
    {u"yyyy-MM-dd'T'HH:mmXXX", kNeutral},           // 2
    {u"yyyy-MM-dd'T'HH:mm:ss.SSS", kNeutral},       // 3
    {u"yyyy-MM-dd HH:mm:ss.SSS", kNeutral},         // 4: date-time with milliseconds
    {u"yyyy-MM-dd'T'HH:mm:ss", kNeutral},           // 5
    {u"yyyy-MM-dd'T'HH:mm", kNeutral},              // 6
    {u"yyyy-MM-dd HH:mm:ss.SSSXXX", kNeutral},      // 7
    {u"yyyy-MM-dd HH:mm:ssXXX", kNeutral},          // 8
    {u"yyyy-MM-dd HH:mmXXX", kNeutral},             // 9
    {u"yyyy-MM-dd HH:mm:ss", kNeutral},             // 10: date-time
    {u"yyyy-MM-dd HH:mm", kNeutral},                // 11
    {u"yyyy-MM-dd h:mm:ss a", kDefaultLocale},      // 12
    {u"yyyy-MM-dd h:mm a", kDefaultLocale},         // 13
    // ISO 8601 date-times, basic
    {u"yyyyMMdd'T'HHmmss.SSSXXX", kNeutral},        // 14
    {u"yyyyMMdd'T'HHmmssXXX", kNeutral},            // 15
    {u"yyyyMMdd'T'HHmmss", kNeutral},               // 16
    {u"yyyyMMdd'T'HHmm", kNeutral},                 // 17
    // dates, year first
    {u"yyyy-MM-dd", kNeutral},                      // 18: date
    {u"yyyyMMdd", kNeutral},                        // 19
    {u"yyyy-DDD", kNeutral},                        // 20: ordinal date (three digits: before year-month)
    {u"yyyy-MM", kNeutral},                         // 21
    {u"yyyy/MM/dd HH:mm:ss", kNeutral},             // 22
    {u"yyyy/MM/dd HH:mm", kNeutral},                // 23
    {u"yyyy/MM/dd", kNeutral},                      // 24
    {u"yyyy.MM.dd HH:mm:ss", kNeutral},             // 25
    {u"yyyy.MM.dd", kNeutral},                      // 26
    // U.S. English, month first
    {u"M/d/yy h:mm:ss a", kDefaultLocale},          // 27
    {u"M/d/yy h:mm a", kDefaultLocale},             // 28
    {u"M/d/yy HH:mm:ss", kDefaultLocale},           // 29
    {u"M/d/yy HH:mm", kDefaultLocale},              // 30
    {u"M/d/yy", kDefaultLocale},                    // 31
    {u"M/d", kDefaultLocale},                       // 32: the year comes from the reference
    {u"M-d-yy", kDefaultLocale},                    // 33
    {u"MMM d, yy h:mm:ss a", kDefaultLocale},       // 34
    {u"MMM d, yy h:mm a", kDefaultLocale},          // 35
    {u"MMM d, yy", kDefaultLocale},                 // 36
    {u"MMM d yy", kDefaultLocale},                  // 37
    {u"EEE, MMM d, yy", kDefaultLocale},            // 38
    {u"EEEE, MMMM d, yy", kDefaultLocale},          // 39
    {u"EEEE, MMMM d, yy h:mm:ss a", kDefaultLocale},  // 40
    {u"MMMM d, yy 'at' h:mm:ss a", kDefaultLocale},   // 41
    {u"d MMM yy", kDefaultLocale},                  // 42
    {u"d MMM yy HH:mm:ss", kDefaultLocale},         // 43
    {u"d-MMM-yy", kDefaultLocale},                  // 44
    {u"MMM yy", kDefaultLocale},                    // 45: the day comes from the reference
    {u"MMM d", kDefaultLocale},                     // 46: the year comes from the reference
    {u"EEE, d MMM yy HH:mm:ss zzz", kDefaultLocale},  // 47: e-mail, zone name
    {u"EEE, d MMM yy HH:mm:ss Z", kDefaultLocale},    // 48: e-mail, offset
    {u"EEE MMM d HH:mm:ss yy", kDefaultLocale},       // 49: asctime
    {u"EEE MMM d HH:mm:ss zzz yy", kDefaultLocale},   // 50: date(1)
    // ISO 8601 week dates
    {u"YYYY-'W'ww-e", kNeutral},                    // 51
    {u"YYYY'W'wwe", kNeutral},                      // 52
    // more U.S. English date-times
    {u"MMMM d, yy h:mm a", kDefaultLocale},         // 53
    {u"MMM d, yy HH:mm:ss", kDefaultLocale},        // 54
    {u"MMM d, yy HH:mm", kDefaultLocale},           // 55
    {u"M/d/yy h a", kDefaultLocale},                // 56
    {u"EEE M/d/yy", kDefaultLocale},                // 57
    {u"d MMMM yy HH:mm", kDefaultLocale},           // 58
    {u"d-MMM-yy HH:mm:ss", kDefaultLocale},         // 59
    // more ISO 8601 and timestamp forms
    {u"yyyy-MM-dd'T'HH:mm:ss,SSS", kNeutral},       // 60: decimal comma
    {u"yyyy-MM-dd HH:mm:ss,SSS", kNeutral},         // 61
    {u"yyyy-MM-dd'T'HH", kNeutral},                 // 62
    {u"yyyyMMddHHmmss", kNeutral},                  // 63
    {u"yyyyMMddHHmm", kNeutral},                    // 64
    // times of day
    {u"HH:mm:ss", kNeutral},                        // 65: time of day
    {u"HH:mm:ss.SSS", kNeutral},                    // 66
    {u"HH:mm", kNeutral},                           // 67
    {u"h:mm:ss a", kDefaultLocale},                 // 68
    {u"h:mm a", kDefaultLocale},                    // 69
    {u"h a", kDefaultLocale},                       // 70
    {u"HH:mm:ssXXX", kNeutral},                     // 71
    {u"'T'HH:mm:ss", kNeutral},                     // 72
};

constexpr int kCount = static_cast<int>(std::size(kFormats));

// Built once, never destroyed: callers may format values at process exit.
const TString* Patterns() {
  static const TString* const patterns = [] {
    auto* table = new TString[kCount];
    for (int i = 0; i < kCount; ++i) table[i] = TString(kFormats[i].pattern);
    return table;
  }();
  return patterns;
}

}  // namespace

int GetDateTimeParsingFormatCount() noexcept { return kCount; }

const TString& LookupDateTimeParsingFormatString(int index) {
  VEL_ASSERT(index >= 0 && index < kCount);
  return Patterns()[index];
}

bool IsLocaleNeutralDateTimeParsingFormat(int index) {
  VEL_ASSERT(index >= 0 && index < kCount);
  return kFormats[index].localeNeutral;
}
