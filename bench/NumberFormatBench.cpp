// ParseOleFormatString against the grammar run through std::regex, on a
// mixed corpus of valid pictures, text outside the grammar and long texts.
// Both give identical answers on the corpus (checked before timing).
#include <cstdlib>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "../tests/support/OleFormatReference.h"
#include "velcoredata/locale/NumberFormat.h"

namespace {

const std::vector<TString>& Corpus() {
  static const std::vector<TString>* const corpus = [] {
    auto* texts = new std::vector<TString>();
    std::mt19937 random(7);
    // Valid pictures built from options.
    const char16_t* prefixes[] = {u"", u"$", u"EUR ", u"\u00A5"};
    const char16_t* suffixes[] = {u"", u" \u20AC", u" kr", u"%"};
    for (int i = 0; i < 128; ++i) {
      NUMBER_FORMAT_OPTIONS o;
      o.decimalPlaces = static_cast<uint32_t>(random() % 5);
      o.grouping = random() % 2 == 0;
      o.prefix = prefixes[random() % 4];
      o.suffix = suffixes[random() % 4];
      o.units = static_cast<UnitsFormatEnum>(random() % 5);
      o.negativeFormat = static_cast<NegativeFormatEnum>(random() % 6);
      texts->push_back(BuildOleFormatString(&o, true));
    }
    // Text outside the grammar: words, numbers, broken pictures.
    const char16_t* words[] = {u"General", u"1234.5", u"#,##0.00x", u"dd/MM/yyyy", u"\"$\"#,#0", u"0.0.0 ",
                               u"Percent", u"0\n", u"(0.00", u"yyyy-MM-dd HH:mm:ss"};
    for (int i = 0; i < 96; ++i) texts->push_back(TString(words[random() % 10]) + TString::number(i));
    // Long texts: pictures after long leads and long runs.
    for (int i = 0; i < 32; ++i) {
      const int length = 200 + static_cast<int>(random() % 600);
      TString text(length, u"x,0\"-"[i % 5]);
      if (i % 2 == 0) text += u"#,##0.00;(#,##0.00)";
      texts->push_back(text);
    }
    for (const TString& text : *texts) {
      NUMBER_FORMAT_OPTIONS a, b;
      if (ParseOleFormatString(text, &a) != OleFormatReference::Parse(text, &b) || !(a == b)) std::abort();
    }
    return texts;
  }();
  return *corpus;
}

void BM_NumFmt_ParseOleFormatString(benchmark::State& state) {
  const std::vector<TString>& corpus = Corpus();
  size_t i = 0;
  for (auto _ : state) {
    NUMBER_FORMAT_OPTIONS options;
    benchmark::DoNotOptimize(ParseOleFormatString(corpus[i++ % corpus.size()], &options));
    benchmark::DoNotOptimize(options);
  }
}
BENCHMARK(BM_NumFmt_ParseOleFormatString);

void BM_NumFmt_ParseOleFormatString_PeerStdRegex(benchmark::State& state) {
  const std::vector<TString>& corpus = Corpus();
  size_t i = 0;
  for (auto _ : state) {
    NUMBER_FORMAT_OPTIONS options;
    benchmark::DoNotOptimize(OleFormatReference::Parse(corpus[i++ % corpus.size()], &options));
    benchmark::DoNotOptimize(options);
  }
}
BENCHMARK(BM_NumFmt_ParseOleFormatString_PeerStdRegex);

}  // namespace
