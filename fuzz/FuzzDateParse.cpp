// Fuzzes date-time parsing through shared TLocale objects. The input is read
// as UTF-16 code units (two bytes each, little-endian, after one control
// byte), so lone surrogates and embedded zeros reach the parser. Checks:
// nothing crashes; a text that parses gives a valid DateTime; a partial
// parse stops inside the text; the two-pointer constructor throws exactly
// when the range does not parse; and in Gregorian locales a parsed value,
// written in the locale's default form, reads back to the same second.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/VelmoraException.h"

namespace {

struct FuzzLocale {
  const TLocale* locale;
  bool gregorian;
};

const FuzzLocale& PickLocale(uint8_t control) {
  static const FuzzLocale locales[] = {
      {new TLocale(0x409), true},  {new TLocale(0x407), true},          {new TLocale(0x411), true},
      {new TLocale(0x40C), true},  {new TLocale(0x412), true},          {new TLocale(0x804), true},
      {new TLocale(0x41E), false}, {new TLocale(0x411, u"japanese"), false},
  };
  return locales[control % (sizeof locales / sizeof locales[0])];
}

void Check(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const uint8_t control = data[0];
  const FuzzLocale& fuzz = PickLocale(control);
  const TLocale& locale = *fuzz.locale;
  const auto options = static_cast<DateTimeParseOptions>((control >> 4) & 3);
  std::u16string text;
  for (size_t i = 1; i + 1 < size; i += 2) text.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  const char16_t* begin = text.data();
  const char16_t* end = begin + text.size();

  // Zero-terminated: ends at the first embedded zero.
  unsigned long long value = 0;
  if (locale.ParseDateTimeTryAllFormats(text.c_str(), &value, options)) {
    Check(DateTime(value).IsValid());
    if (fuzz.gregorian) {
      const DateTime parsed(value);
      DateTime again;
      Check(locale.ParseDateTimeTryAllFormats(locale.Format(parsed, DateTimeParseOptions::DateAndTime), again));
      Check(again.GetRepresentation() == value / 10000 * 10000);
    }
  }
  const DateTime oneArgument(text.c_str(), options, locale);
  Check(oneArgument.GetRepresentation() == 0 || oneArgument.IsValid());

  // Ranges: the whole range, then the longest date at its start.
  const bool whole = locale.ParseDateTime(begin, end, &value, options);
  if (whole) Check(DateTime(value).IsValid());
  const char16_t* stop = nullptr;
  if (locale.ParseDateTime(begin, end, &value, options, &stop)) {
    Check(DateTime(value).IsValid());
    Check(stop > begin && stop <= end);
  } else {
    Check(stop == begin && !whole);
  }
  bool threw = false;
  try {
    const DateTime constructed(begin, end, locale);
    Check(constructed.IsValid());
  } catch (const VelmoraException& e) {
    threw = true;
    Check(e.GetErrorId() == 0x8E8A7D12u);
  }
  // The constructor reads the whole range with the default options.
  unsigned long long check = 0;
  Check(threw == !locale.ParseDateTime(begin, end, &check));
  return 0;
}
