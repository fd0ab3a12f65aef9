// TLocale parsing against ICU's own parse: the locale's short-date texts,
// parsed by ParseDateTimeTryAllFormats once its cached parse formatter is
// warm, and by a raw SimpleDateFormat of the same pattern.
#include <unicode/smpdtfmt.h>

#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "velcoredata/locale/TLocale.h"

namespace {

constexpr uint32_t kEnglishUS = 0x409;

// The ICU short-date pattern of the locale and 1024 texts written with it.
struct ShortDates {
  icu::UnicodeString pattern;
  std::vector<TString> texts;
};

const ShortDates& Texts() {
  static const ShortDates* const dates = [] {
    auto* d = new ShortDates();
    const TString pattern = TLocale::GetFormatString(TLocale::DateTimeFormatCodes::ShortDate, LanguageCode(kEnglishUS));
    d->pattern = VelICU::ToUnicodeString(pattern);
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(d->pattern, icu::Locale("en_US"), status);
    std::mt19937 random(42);
    std::uniform_real_distribution<double> days(0, 365.0 * 60);
    for (int i = 0; i < 1024; ++i) {
      icu::UnicodeString text;
      format.format((days(random) + 365.0 * 10) * 86400000.0, text);  // 1980-2040
      d->texts.push_back(VelICU::FromUnicodeString(text));
    }
    return d;
  }();
  return *dates;
}

void BM_TLocale_ParseDateTimeTryAllFormats(benchmark::State& state) {
  const ShortDates& dates = Texts();
  const TLocale locale(kEnglishUS);
  unsigned long long value = 0;
  locale.ParseDateTimeTryAllFormats(dates.texts[0].c_str(), &value);  // warms the cache
  size_t i = 0;
  for (auto _ : state) {
    const bool ok = locale.ParseDateTimeTryAllFormats(dates.texts[i++ & 1023].c_str(), &value);
    benchmark::DoNotOptimize(ok);
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(BM_TLocale_ParseDateTimeTryAllFormats);

void BM_TLocale_ParseDateTimeTryAllFormats_PeerRawICU(benchmark::State& state) {
  const ShortDates& dates = Texts();
  UErrorCode status = U_ZERO_ERROR;
  const icu::SimpleDateFormat format(dates.pattern, icu::Locale("en_US"), status);
  size_t i = 0;
  for (auto _ : state) {
    const TString& text = dates.texts[i++ & 1023];
    icu::ParsePosition position(0);
    const UDate date = format.parse(VelICU::ToUnicodeStringAlias(text), position);
    benchmark::DoNotOptimize(date);
  }
}
BENCHMARK(BM_TLocale_ParseDateTimeTryAllFormats_PeerRawICU);

}  // namespace
