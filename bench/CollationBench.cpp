// Collation against raw ICU on the same thread: comparing, hashing, sorting
// 100,000 strings, `vcd sort`, and the cost of a pool's first collator.
#include <unicode/ucol.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/ICUCollator.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/platform/THash.h"

#if defined(VCD_BENCH_HAS_TOOL)
#include "Command.h"
#endif

namespace {

// Words of 3-12 letters with mixed case and accents (Latin-1 and Latin
// Extended-A letters), so that every comparison level is exercised.
const std::vector<std::u16string>& Words(size_t count) {
  static std::vector<std::u16string> words;
  if (words.size() < count) {
    const std::u16string letters = u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                   u"\u00E4\u00E9\u00F6\u00FC\u00C5\u00DF\u00E7\u0142\u0161\u00F1-'";
    std::mt19937 rng(2024);
    std::uniform_int_distribution<int> length(3, 12);
    std::uniform_int_distribution<size_t> letter(0, letters.size() - 1);
    words.clear();
    for (size_t i = 0; i < count; ++i) {
      std::u16string w(static_cast<size_t>(length(rng)), u'a');
      for (auto& c : w) c = letters[letter(rng)];
      words.push_back(std::move(w));
    }
  }
  return words;
}

constexpr size_t kWordCount = 4096;
constexpr size_t kSortCount = 100000;

UCollator* OpenRawSecondary() {
  UErrorCode status = U_ZERO_ERROR;
  UCollator* collator = ucol_open("en_US", &status);
  ucol_setStrength(collator, UCOL_SECONDARY);
  return collator;
}

void BM_Collation_Compare(benchmark::State& state) {
  const auto& words = Words(kWordCount);
  const Collation collation(u"LEN_RUS_S2");
  size_t i = 0;
  for (auto _ : state) {
    const auto& a = words[i & (kWordCount - 1)];
    const auto& b = words[(i + 1) & (kWordCount - 1)];
    ++i;
    benchmark::DoNotOptimize(collation.Compare(a.data(), static_cast<int>(a.size()), b.data(),
                                               static_cast<int>(b.size())));
  }
}
BENCHMARK(BM_Collation_Compare);

void BM_Collation_Compare_PeerRawICU(benchmark::State& state) {
  const auto& words = Words(kWordCount);
  UCollator* collator = OpenRawSecondary();
  size_t i = 0;
  for (auto _ : state) {
    const auto& a = words[i & (kWordCount - 1)];
    const auto& b = words[(i + 1) & (kWordCount - 1)];
    ++i;
    benchmark::DoNotOptimize(ucol_strcoll(collator, a.data(), static_cast<int>(a.size()), b.data(),
                                          static_cast<int>(b.size())));
  }
  ucol_close(collator);
}
BENCHMARK(BM_Collation_Compare_PeerRawICU);

void BM_Collation_Hash(benchmark::State& state) {
  const auto& words = Words(kWordCount);
  const Collation collation(u"LEN_RUS_S2");
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(collation.Hash(words[i++ & (kWordCount - 1)].c_str()));
}
BENCHMARK(BM_Collation_Hash);

void BM_Collation_Hash_PeerRawICU(benchmark::State& state) {
  const auto& words = Words(kWordCount);
  UCollator* collator = OpenRawSecondary();
  std::vector<uint8_t> key(128);
  size_t i = 0;
  for (auto _ : state) {
    const auto& w = words[i++ & (kWordCount - 1)];
    int length = ucol_getSortKey(collator, w.c_str(), -1, key.data(), static_cast<int>(key.size()));
    if (length > static_cast<int>(key.size())) {
      key.resize(static_cast<size_t>(length) * 2);
      length = ucol_getSortKey(collator, w.c_str(), -1, key.data(), static_cast<int>(key.size()));
    }
    benchmark::DoNotOptimize(THash32(key.data(), static_cast<size_t>(length), 0xDEADBEEF));
  }
  ucol_close(collator);
}
BENCHMARK(BM_Collation_Hash_PeerRawICU);

// --- sorting 100,000 strings ----------------------------------------------------

template <class Less>
void SortCopies(benchmark::State& state, Less less) {
  const auto& words = Words(kSortCount);
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<std::u16string> copy = words;
    state.ResumeTiming();
    std::sort(copy.begin(), copy.end(), less);
    benchmark::DoNotOptimize(copy.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kSortCount));
}

void BM_Collation_Sort(benchmark::State& state) {
  const Collation collation(u"LEN_RUS_S2");
  SortCopies(state, [&](const std::u16string& a, const std::u16string& b) {
    return collation.Compare(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size())) < 0;
  });
}
BENCHMARK(BM_Collation_Sort)->Unit(benchmark::kMillisecond);

void BM_Collation_Sort_PeerRawICU(benchmark::State& state) {
  UCollator* collator = OpenRawSecondary();
  SortCopies(state, [&](const std::u16string& a, const std::u16string& b) {
    return ucol_strcoll(collator, a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size())) ==
           UCOL_LESS;
  });
  ucol_close(collator);
}
BENCHMARK(BM_Collation_Sort_PeerRawICU)->Unit(benchmark::kMillisecond);

// Sort keys computed once per string (included in the time), then sorted
// with memcmp.
void BM_Collation_Sort_PeerSortKeys(benchmark::State& state) {
  const auto& words = Words(kSortCount);
  UCollator* collator = OpenRawSecondary();
  for (auto _ : state) {
    std::vector<std::vector<uint8_t>> keys(words.size());
    for (size_t i = 0; i < words.size(); ++i) {
      const auto& w = words[i];
      auto& key = keys[i];
      key.resize(w.size() * 4 + 16);
      int length = ucol_getSortKey(collator, w.data(), static_cast<int>(w.size()), key.data(),
                                   static_cast<int>(key.size()));
      if (length > static_cast<int>(key.size())) {
        key.resize(static_cast<size_t>(length));
        length = ucol_getSortKey(collator, w.data(), static_cast<int>(w.size()), key.data(), length);
      }
      key.resize(static_cast<size_t>(length));
    }
    std::vector<uint32_t> order(words.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) {
      const auto& ka = keys[a];
      const auto& kb = keys[b];
      const int c = std::memcmp(ka.data(), kb.data(), std::min(ka.size(), kb.size()));
      return c != 0 ? c < 0 : ka.size() < kb.size();
    });
    benchmark::DoNotOptimize(order.data());
  }
  ucol_close(collator);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kSortCount));
}
BENCHMARK(BM_Collation_Sort_PeerSortKeys)->Unit(benchmark::kMillisecond);

void BM_Collation_SortBinary(benchmark::State& state) {
  const Collation& binary = GetBinaryCollation();
  SortCopies(state, [&](const std::u16string& a, const std::u16string& b) {
    return binary.Compare(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size())) < 0;
  });
}
BENCHMARK(BM_Collation_SortBinary)->Unit(benchmark::kMillisecond);

void BM_Collation_SortBinary_PeerCodeUnits(benchmark::State& state) {
  SortCopies(state, [](const std::u16string& a, const std::u16string& b) { return a < b; });
}
BENCHMARK(BM_Collation_SortBinary_PeerCodeUnits)->Unit(benchmark::kMillisecond);

#if defined(VCD_BENCH_HAS_TOOL)
// `vcd sort --collation LEN_RUS_S2` on the same 100,000 words as UTF-8
// lines, input decoding and output included.
void BM_Collation_SortCommand(benchmark::State& state) {
  std::string input;
  for (const auto& w : Words(kSortCount)) input += TString(w).toUtf8() + "\n";
  for (auto _ : state) {
    std::istringstream in(input);
    std::ostringstream out, err;
    vcd::CommandIo io{in, out, err};
    if (vcd::RunVcd({"sort", "--collation", "LEN_RUS_S2"}, io) != 0) state.SkipWithError("vcd sort failed");
    benchmark::DoNotOptimize(out.str().size());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kSortCount));
}
BENCHMARK(BM_Collation_SortCommand)->Unit(benchmark::kMillisecond);
#endif

// --- the first collator of a pool -------------------------------------------

const char16_t* const kCreatedNames[] = {u"LEN_RUS_S2",    u"LEN_RUS_S2_WO", u"LEN_RUS_XO", u"LEN_RUS_VWIN",
                                         u"LSV_RSE_S2_WO", u"LZH_RCN_WO",    u"LJA_RJP_WO"};

void BM_Collation_CreateCollator(benchmark::State& state) {
  const char16_t* name = kCreatedNames[state.range(0)];
  ICUCollatorPool* pool = ICUCollatorPool::Factory({name, 0u});
  state.SetLabel(TString(name).toUtf8());
  for (auto _ : state) {
    ICUCollator collator(pool, pool->GetKey(), pool->GetSpec());
    benchmark::DoNotOptimize(&collator);
  }
}
BENCHMARK(BM_Collation_CreateCollator)->DenseRange(0, 6)->Unit(benchmark::kMicrosecond);

}  // namespace
