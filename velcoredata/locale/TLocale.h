// TLocale: a locale identified by a Windows locale identifier (LCID), with
// its ICU locale, a cache of ICU date formats, and the date-pattern utilities
// that go with locales.
//
// A TLocale is made from an LCID (optionally with a calendar name), or from
// an ICU/BCP-47 locale name. Its identity never changes after construction.
//
// Thread-safety: one TLocale may be shared by any number of threads; every
// member is safe to call concurrently. The date-format cache is guarded by a
// reader-writer lock (readers look up, one writer inserts); parsing, which
// goes through one cached parse formatter and calendar, is serialised by a
// recursive mutex; formatting with a cached ICU format holds that format's
// own lock (ICU formats keep mutable state and are not safe for concurrent
// use). The static operations are thread-safe; the process-wide caches they
// use are concurrent hash maps built on first use and kept to process exit.
//
// Date-format patterns come in four dialects, and the six Morph* functions
// translate between them (see below): ICU ("yyyy", "MMM", "EEEE", "a"), Qt
// (QLocale/QDateTime: "dddd", "AP", "zzz", "t"), Windows ("dddd", "tt",
// "g") and the custom dialect of the product's number-format strings
// (literals in double quotes, "n" for minutes, "AM/PM" and "A/P").
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/datetime/DateTimeParseOptions.h"
#include "velcoredata/datetime/Interval.h"
#include "velcoredata/datetime/Time.h"
#include "velcoredata/locale/ICUUtils.h"
#include "velcoredata/locale/LanguageCode.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/Locks.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelICU.h"

class QLocale;
struct NUMBER_FORMAT_OPTIONS;

class VELCOREDATA_EXPORT TLocale {
 public:
  // The 24 non-empty pairs of a date style and a time style (styles 4 full,
  // 3 long, 2 medium, 1 short, 0 none): code k has date style 4 - k / 5 and
  // time style 4 - k % 5.
  enum class DateTimeFormatCodes : int {
    FullDateFullTime = 0,
    FullDateLongTime = 1,
    FullDateMediumTime = 2,
    FullDateShortTime = 3,
    FullDate = 4,
    LongDateFullTime = 5,
    LongDateLongTime = 6,
    LongDateMediumTime = 7,
    LongDateShortTime = 8,
    LongDate = 9,
    MediumDateFullTime = 10,
    MediumDateLongTime = 11,
    MediumDateMediumTime = 12,
    MediumDateShortTime = 13,
    MediumDate = 14,
    ShortDateFullTime = 15,
    ShortDateLongTime = 16,
    ShortDateMediumTime = 17,
    ShortDateShortTime = 18,
    ShortDate = 19,
    FullTime = 20,
    LongTime = 21,
    MediumTime = 22,
    ShortTime = 23,
  };

  // The order of day, month and year in a locale's short date.
  enum DateOrder : int {
    kDateOrderUnknown = 0,
    kDayMonthYear = 1,
    kMonthDayYear = 2,
    kYearMonthDay = 3,
    kYearDayMonth = 4,
  };

  // Implementation types, defined inside the library.
  struct CachedDateFormat;
  struct ParseFormats;
  struct ParseTraits;

  // Flags of GetSupportedLocales.
  enum SupportedLocalesFlags : uint32_t {
    kSpecificLocales = 0,  // locales with a region ("de_DE")
    kIncludeNeutralLocales = 1,  // also language-only locales ("de")
  };

  // ---- Construction ----

  // The locale of an LCID: identity LanguageCode(lcid), ICU locale from the
  // language table's name for it (pseudo-LCIDs 1024 and 2048 resolve to the
  // user's and the system's locale now, and stay resolved).
  explicit TLocale(uint32_t lcid);
  // As above, with the ICU keyword "calendar=<calendar>" ("japanese",
  // "buddhist", "islamic-umalqura", ...): the formats and calendars of this
  // locale use that calendar system.
  TLocale(uint32_t lcid, const TString& calendar);
  // The locale of an ICU or BCP-47 name: identity LanguageCode(isoName), ICU
  // locale from the name itself.
  explicit TLocale(const TString& isoName);
  // Copies identity and ICU locale (calendar keyword included) and clones
  // every cached ICU date format; the parse formatter and calendar are not
  // copied (the copy makes its own on first need).
  TLocale(const TLocale& other);
  TLocale& operator=(const TLocale& other);
  ~TLocale();

  // ---- Identity ----

  uint32_t GetLCID() const noexcept { return m_languageCode.GetLCID(); }
  const LanguageCode& getLanguageCode() const noexcept { return m_languageCode; }
  const VelICU::ICULocale& getICULocale() const noexcept { return *m_icuLocale; }

  // ---- Date formats ----

  // The cached ICU date format of `pattern` under this locale, made on first
  // request (UTC, proleptic Gregorian or the locale's calendar system). The
  // object lives as long as this TLocale. It is shared by every user of this
  // TLocale and ICU formats are not safe for concurrent use: a caller that
  // formats or parses with it directly on several threads must clone() it.
  // ICU accepts any pattern (unknown letters end what it writes); a failure
  // to make the format (out of memory, missing data) is a logic error.
  const VelICU::ICUDateFormat& GetICUDateFormat(const TString& pattern) const;

  // The number of patterns in the date-format cache.
  size_t GetICUDateFormatCacheSize() const;

  // ---- Parsing ----
  //
  // Parsing reads a text as a date, a time of day or both (as `options`
  // allows), in this locale's calendar system, and writes the raw value of a
  // DateTime (GetRepresentation()). It never throws: a text that does not
  // parse, or that names an instant outside the valid DateTime range, gives
  // false and leaves the output alone. White space around the text is
  // ignored, and so is the difference between plain, no-break and narrow
  // no-break spaces. A time without a date lies on 1899-12-30 (the day
  // DateTime::HasDate() reports as no date); a date without a time is at
  // midnight; a text with a UTC offset ("Z", "+02:00") is converted to UTC.
  //
  // The forms tried: first the format that last succeeded on this TLocale
  // (the cached parse formatter); then, for the default ISO locale (en_US),
  // the parsing-format table (LookupDateTimeParsingFormatString) followed by
  // the locale's ICU patterns of every date and time style (each date-time
  // pair also joined by a plain space, as Format writes it); for any other
  // locale its ICU patterns followed by the locale-neutral entries of the
  // table (ISO 8601 and other year-first forms); last, the locale's Qt
  // formats (short and long date, time and date-time) translated to ICU
  // patterns. One-digit days, months and hours are accepted where the
  // pattern has two.

  // Parses a text with one pattern (as given: two-letter fields want two
  // digits) through the date-format cache. `options` must allow the parts the
  // pattern carries.
  bool ParseDateTime(const TString& text, const TString& pattern, DateTime& out, DateTimeParseOptions options) const;
  // Every form, as described above.
  bool ParseDateTimeTryAllFormats(const TString& text, DateTime& out,
                                  DateTimeParseOptions options = DateTimeParseOptions::DateAndTime) const;
  bool ParseDateTimeTryAllFormats(const TString& text, const DateTime& reference, DateTime& out,
                                  DateTimeParseOptions options = DateTimeParseOptions::DateAndTime) const;
  // A time of day alone (on 1899-12-30); the flag tells whether it parsed.
  std::pair<bool, DateTime> ParseTimeTryAllFormats(const TString& text) const;
  // The single steps of the search: the locale's ICU patterns of every style
  // pair; the cached parse formatter alone; the parsing-format table (all of
  // it for the default ISO locale, its neutral entries for the others); the
  // locale's Qt formats.
  bool ParseInternationalDateTime(const TString& text, DateTimeParseOptions options, DateTime& out) const;
  bool ParseDateTimeWithCachedFormatter(const TString& text, const DateTime& reference, DateTime& out) const;
  bool ParseDateTimeUsingISODefaultDateTimeFormatStrings(const TString& text, const DateTime& reference,
                                                         DateTime& out) const;
  bool ParseDateTimeUsingNativeAPIs(const TString& text, const DateTime& reference, DateTime& out,
                                    DateTimeParseOptions options = DateTimeParseOptions::DateAndTime) const;

  // Parses the text [begin, end). Without `stop` the whole text must be a
  // date-time. With `stop`, the longest date-time at the start of the text is
  // taken and *stop is set to the first character after it (to `begin` when
  // nothing parses).
  bool ParseDateTime(const char16_t* begin, const char16_t* end, unsigned long long* value,
                     DateTimeParseOptions options = DateTimeParseOptions::DateAndTime,
                     const char16_t** stop = nullptr) const;
  // Parses a zero-terminated text (a null pointer is an empty text).
  bool ParseDateTimeTryAllFormats(const char16_t* text, unsigned long long* value,
                                  DateTimeParseOptions options = DateTimeParseOptions::DateAndTime) const;
  // As above; the parts the text lacks come from the date of `reference`
  // (its time of day is not used): "10:30" is 10:30 on the reference date,
  // "Jan 5" is January 5 of the reference year. A reference outside the valid
  // range is read as 1899-12-30.
  bool ParseDateTimeTryAllFormats(const char16_t* text, unsigned long long reference, unsigned long long* value,
                                  DateTimeParseOptions options) const;

  // How many parses went through this TLocale, and whether the cached parse
  // formatter failed on the latest one that tried it (cleared by the next
  // success).
  uint32_t GetParseAttemptCount() const;
  bool HasParseFormatterFailed() const;

  // ---- Formatting ----
  //
  // Through the cached ICU format of the pattern, in this locale's calendar
  // system, reading the value's fields as they are (no zone; to the
  // millisecond). An instant ICU's calendars cannot hold gives "".

  TString Format(const DateTime& value, const TString& pattern) const;
  // The locale's short date (Date), long time (Time) or both joined by a
  // space (DateAndTime), with four-digit years.
  TString Format(const DateTime& value, DateTimeParseOptions options) const;
  // A time of day, as on 1899-12-30.
  TString Format(const Time& value, const TString& pattern) const;
  // An interval laid from 1899-12-30 00:00: "HH:mm:ss" writes the time part
  // of a positive interval below one day.
  TString Format(const Interval& value, const TString& pattern) const;

  // The pattern Format(value, options) writes with.
  TString GetDefaultPattern(DateTimeParseOptions options) const;

  // ---- Default patterns of a locale ----

  // The locale's default pattern of kind `spec`. Pseudo-LCIDs 1024 and 2048
  // use the current user/system locale; an LCID the language table does not
  // know yields the pattern of LCID 9 (English). AsICU writes two-digit
  // years of the short date (specs 2 and 4) with four digits; AsWindows and
  // AsCustom translate the pattern with MorphICUtoWindowsCustom (AsWindows
  // first rewrites the day periods and unquoted ideographs of Chinese,
  // Japanese and Korean patterns, see ConvertCJKTimeFormatIfNeeded).
  static TString GetLocaleFormatAsICU(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid);
  static TString GetLocaleFormatAsWindows(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid);
  static TString GetLocaleFormatAsCustom(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid);
  // The Qt dialect's pattern of kind `spec`, from QLocale's date and time
  // formats (long date, short date, long time, short date + " " + long time,
  // short time).
  static TString GetLocaleFormatQLocaleInternal(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid);

  // Rewrites an ICU pattern of a Chinese, Japanese or Korean locale so that
  // it survives translation to the Windows dialect: the flexible day periods
  // "B"/"b" become the AM/PM marker "a", a day period directly followed by an
  // hour gets a space after it ("Bh:mm" -> "a h:mm"), and unquoted
  // ideographs and Hangul (which the translation would drop as letters) are
  // quoted ("y年M月d日" -> "y'年'M'月'd'日'"). Other locales' patterns are
  // returned unchanged.
  static TString ConvertCJKTimeFormatIfNeeded(const TString& icuPattern, uint32_t lcid);

  // The pattern of a date/time style pair for the language's LCID. Failures
  // are logged (area Locale) and give "": an LCID without a locale ("Unable
  // to find language reference for %1 in GetFormatString"), a locale ICU
  // cannot make formats for ("Unable to create locale for LCID %1"), a code
  // outside 0..23 ("Invalid format identifier %1 passed to GetFormatString"),
  // no current locale for 1024 ("Unable to copy default locale in
  // GetFormatString").
  static TString GetFormatString(DateTimeFormatCodes code, const LanguageCode& language);

  // The order of d, M and y in the locale's short date (code ShortDate):
  // kDateOrderUnknown when one is missing or the order is none of the four.
  static int GetDateOrder(uint32_t lcid);

  // The legacy (Windows) pattern paired with an ICU default pattern in the
  // built-in table. A pattern not in the table is a logic error.
  static const TString& GetLegacyFormatFromICU(const TString& icuPattern);

  // ---- First week of the year ----

  // The first-week code of the locale (the LCID its ICU locale reports):
  // 1 = the week containing January 1 (also for locales not in the table),
  // 2 = the first week with at least four days (ISO 8601), 3 = the first
  // full week.
  static int GetFirstWeekBehaviourMap(uint32_t lcid);
  static int GetFirstWeekBehaviour(uint32_t lcid);
  // 4 for code 2, 7 for code 3, 1 otherwise.
  static int GetMinimalDaysInFirstWeek(uint32_t lcid);
  // True for code 1: week 1 may be a partial week.
  static bool FirstWeekIsBroken(uint32_t lcid);

  // ---- Default locales and the system locale ----

  // TLocale(2048), TLocale(1024) and the locale of the default ISO string
  // ("en_US"): made on first call, destroyed at exit.
  static const TLocale& GetSystemInvariantLocale();
  static const TLocale& GetUserDefaultLocale();
  static const TLocale& GetISODefaultLocale();
  // The name of ICU's default locale, taken on first call.
  static const TString& GetUserDefaultICULocale();
  // The LCID of the user's locale (pseudo-LCID 1024 made specific).
  static uint32_t GetUserDefaultLCID();

  // The locales ICU makes available that have an LCID of their own (the
  // LCID's locale name is the locale itself), as parallel vectors of LCIDs,
  // ICU names and English display names, in ICU's order. The vectors are
  // cleared first. GetSupportedLocales answers from ICU as well.
  static void GetSupportedLocales(uint32_t flags, std::vector<uint32_t>& lcids, std::vector<TString>& names,
                                  std::vector<TString>& displayNames);
  static void GetSupportedLocalesICU(uint32_t flags, std::vector<uint32_t>& lcids, std::vector<TString>& names,
                                     std::vector<TString>& displayNames);

  // ---- Process-wide ICU caches, keyed by LCID ----
  //
  // Pseudo-LCIDs (1024, 2048) are not cached: they follow the current
  // user/system locale. Returned formats are shared between threads: only
  // their const queries that keep no state (toPattern, clone) may be used.

  static std::shared_ptr<const VelICU::ICULocale> GetCachedICULocale(uint32_t lcid);
  // The date-only format of a date style (kFull..kShort) for an LCID.
  static std::shared_ptr<const VelICU::ICUDateFormat> GetCachedICUDateFormat(uint32_t lcid,
                                                                             VelICU::ICUEStyle dateStyle);
  // The time-only format of a time style (kFull..kShort) for an LCID.
  static std::shared_ptr<const VelICU::ICUSimpleDateFormat> GetCachedICUSimpleDateFormat(
      uint32_t lcid, VelICU::ICUEStyle timeStyle);

  // ---- Morphs between pattern dialects ----
  //
  // Pure functions. A pattern is read in runs of one repeated character; a
  // single quote starts a literal that ends at the next single quote not
  // followed by another (a doubled quote inside is part of it; an
  // unterminated literal runs to the end), and a run of two or more quotes is
  // the escaped quote pair. Each run is translated whole by the morph's
  // table; a character outside the table is copied through, or - in the
  // morphs that drop unknown letters - dropped when it is a letter, with the
  // white space written just before it trimmed.

  // Qt to ICU. An AM/PM marker anywhere makes "h" the 12-hour ICU "h";
  // without one "h" becomes the 24-hour "H". Callers pass false.
  static TString MorphQLocaleToICU(const TString& pattern, bool twelveHour);
  // ICU to Qt.
  static TString MorphICUToQlocale(const TString& pattern);
  // ICU to Windows (toWindows) or to the custom dialect.
  static TString MorphICUtoWindowsCustom(const TString& pattern, bool toWindows);
  // Windows to ICU, Qt and custom.
  static TString MorphWindowsToICU(const TString& pattern);
  static TString MorphWindowsToQLocale(const TString& pattern);
  static TString MorphWindowsToCustom(const TString& pattern);

  // ---- Locale settings (number formats) ----

  // The locale's number / currency options from ICU's decimal and currency
  // formats: separators, grouping, decimal places, prefix and suffix of
  // positive numbers, negative format. Units are 0.
  static void GetSystemNumberSettings(uint32_t lcid, NUMBER_FORMAT_OPTIONS* options);
  static void GetSystemCurrencySettings(uint32_t lcid, NUMBER_FORMAT_OPTIONS* options);
  // The number of decimals of the locale's currency (ISO 4217 minor unit),
  // from the built-in table by LanguageUtils::ConvertDefaultLocale(lcid);
  // 2 when the locale is not in it.
  static int GetCurrencyDecimalPlaces(uint32_t lcid);
  // The locale's decimal separator.
  static TString GetDecimalPoint(uint32_t lcid);
  // The Qt locale's currency symbol.
  static TString GetCurrencyString(uint32_t lcid);
  // The Qt locale of an LCID (pseudo-LCIDs resolved now).
  static QLocale GetQLocale(uint32_t lcid);
  // The list separator: the settings value "UserDefaults/ListSeparator"
  // (1024), "SystemDefaults/ListSeparator" (2048) or
  // "<ICU locale name>/ListSeparator" when present, else ",".
  static TString GetListSeparator(uint32_t lcid);

 private:
  // Entries are shared so that a format in use stays alive if the cache is
  // replaced by operator= meanwhile.
  using DateFormatCache = std::unordered_map<TString, std::shared_ptr<CachedDateFormat>>;

  TLocale(LanguageCode languageCode, std::unique_ptr<VelICU::ICULocale> icuLocale);

  // The steps of the search, in the order they are tried (the table and the
  // locale's patterns swap places for the default ISO locale).
  static constexpr uint32_t kCachedFormatterStep = 1;
  static constexpr uint32_t kLocaleStylesStep = 2;
  static constexpr uint32_t kTableStep = 4;
  static constexpr uint32_t kNativeStep = 8;
  static constexpr uint32_t kAllSteps = 15;

  // The parse behind every public parsing entry point. An invalid
  // `reference` is read as 1899-12-30.
  bool ParseText(const char16_t* begin, const char16_t* end, unsigned long long reference,
                 DateTimeParseOptions options, uint32_t steps, unsigned long long& value,
                 const char16_t** stop) const;
  // Made on first need; under m_parseMutex.
  ParseFormats& GetParseFormats() const;
  // Makes the parse calendar if missing and, given a format that parsed,
  // caches a clone of it as the parse formatter.
  void PopulateFormatterAndCalendar(const VelICU::ICUSimpleDateFormat* format, const ParseTraits* traits) const;

  // Clones every cached format while holding this locale's read lock.
  DateFormatCache CloneICUDateFormatCache() const;
  std::shared_ptr<CachedDateFormat> GetCachedDateFormat(const TString& pattern) const;

  mutable TReadWriteLock m_lock;  // guards m_dateFormats
  std::unique_ptr<VelICU::ICULocale> m_icuLocale;
  LanguageCode m_languageCode;
  mutable DateFormatCache m_dateFormats;
  // Made by PopulateFormatterAndCalendar on the first successful parse;
  // used under m_parseMutex only.
  mutable std::unique_ptr<VelICU::ICUSimpleDateFormat> m_parseFormatter;
  mutable std::unique_ptr<VelICU::ICUCalendar> m_parseCalendar;
  mutable TRecursiveMutex m_parseMutex;
  mutable uint32_t m_parseAttempts = 0;
  mutable uint32_t m_parseFormatterFailed = 0;
  // The formats parsing tries, made on first need; under m_parseMutex.
  mutable std::unique_ptr<ParseFormats> m_parseFormats;
  // The patterns of Format(value, options) by options (Date, Time, both),
  // made on first need; under m_lock.
  mutable TString m_defaultPatterns[3];
};
