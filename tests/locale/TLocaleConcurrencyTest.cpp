// Many threads formatting, parsing, copying and filling caches through shared
// TLocale objects at once: every answer must be the one a single thread gets.

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/locale/TLocale.h"

namespace {

using Options = DateTimeParseOptions;

constexpr int kThreads = 8;
constexpr int kRounds = 60;

struct Expectation {
  TString text;
  DateTimeParseOptions options;
  bool parses;
  unsigned long long value;
};

// Texts of different forms, so that the shared cached parse formatter keeps
// changing hands between threads.
std::vector<Expectation> Expectations(const TLocale& locale) {
  const char16_t* texts[] = {u"2020-01-05", u"1/5/2020",        u"Jan 5, 2020 10:30:15 PM", u"10:30",
                             u"05.01.2020", u"2020-01-05T10:30:00+02:00", u"not a date", u"2020-W02-7",
                             u"31/12/1999", u"Sunday, January 5, 2020"};
  std::vector<Expectation> result;
  for (const char16_t* text : texts) {
    for (Options options : {Options::DateAndTime, Options::Date}) {
      Expectation e{text, options, false, 0};
      e.parses = locale.ParseDateTimeTryAllFormats(e.text.c_str(), &e.value, options);
      result.push_back(e);
    }
  }
  return result;
}

TEST(TLocaleConcurrencyTest, SharedLocalesFormatAndParseAsOneThreadWould) {
  const TLocale english(0x409);
  const TLocale german(0x407);
  // Expected answers from fresh locales, one thread.
  const std::vector<Expectation> englishExpected = Expectations(TLocale(0x409));
  const std::vector<Expectation> germanExpected = Expectations(TLocale(0x407));
  const char16_t* patterns[] = {u"yyyy-MM-dd", u"HH:mm:ss", u"EEEE d MMMM y", u"dd.MM.yy HH:mm", u"QQQ y", u"w/Y"};
  std::vector<TString> expectedFormats;
  const DateTime sample(2021, 11, 28, 14, 5, 6);
  for (const char16_t* pattern : patterns) expectedFormats.push_back(TLocale(0x409).Format(sample, pattern));

  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < kRounds; ++round) {
        const int i = (t * 7 + round) % static_cast<int>(englishExpected.size());
        for (const auto* pair : {&englishExpected, &germanExpected}) {
          const TLocale& locale = pair == &englishExpected ? english : german;
          const Expectation& e = (*pair)[static_cast<size_t>(i)];
          unsigned long long value = 0;
          const bool parses = locale.ParseDateTimeTryAllFormats(e.text.c_str(), &value, e.options);
          if (parses != e.parses || (parses && value != e.value)) ++failures;
        }
        // Formatting fills and reads the date-format cache.
        const size_t p = static_cast<size_t>(t + round) % std::size(patterns);
        if (english.Format(sample, patterns[p]) != expectedFormats[p]) ++failures;
        // A value written in the locale's default form reads back.
        const DateTime value = DateTime::FromValue(sample.GetRepresentation() + 864000000ULL * (t * 100 + round));
        DateTime parsed;
        if (!german.ParseDateTimeTryAllFormats(german.Format(value, Options::DateAndTime), parsed) || parsed != value) {
          ++failures;
        }
        // Copies clone the cache while other threads insert into it.
        if (round % 10 == t % 10) {
          const TLocale copy(english);
          if (copy.Format(sample, patterns[0]) != expectedFormats[0]) ++failures;
        }
        // The process-wide caches and static pattern queries.
        const uint32_t lcid = (t % 2 == 0) ? 0x40Cu : 0x410u;
        if (TLocale::GetCachedICULocale(lcid)->getLCID() != lcid) ++failures;
        if (TLocale::GetLocaleFormatAsICU(ICUUtils::DefaultDateTimeFormatSpec::ShortDate, lcid).isEmpty()) ++failures;
        if (TLocale::GetDateOrder(0x409) != TLocale::kMonthDayYear) ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
  EXPECT_GE(english.GetParseAttemptCount(), static_cast<uint32_t>(kThreads * kRounds));
}

TEST(TLocaleConcurrencyTest, DefaultLocalesAreMadeOnceUnderConcurrentFirstUse) {
  std::vector<const TLocale*> seen(kThreads, nullptr);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const TLocale& iso = TLocale::GetISODefaultLocale();
      DateTime parsed;
      if (iso.ParseDateTimeTryAllFormats(u"2020-01-05", parsed) && parsed == DateTime(2020, 1, 5)) seen[t] = &iso;
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const TLocale* locale : seen) EXPECT_EQ(locale, &TLocale::GetISODefaultLocale());
}

}  // namespace
