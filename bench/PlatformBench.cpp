// Platform hashes against raw xxHash, and TString number parsing against QString.
#include <QString>

#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "velcoredata/platform/THash.h"
#include "velcoredata/platform/TString.h"

namespace {

std::vector<std::u16string> Words() {
  std::mt19937 rng(42);
  std::uniform_int_distribution<int> len(8, 24), ch(u'a', u'z');
  std::vector<std::u16string> words(4096);
  for (auto& w : words) {
    w.resize(static_cast<size_t>(len(rng)));
    for (auto& c : w) c = static_cast<char16_t>(ch(rng));
  }
  return words;
}

void BM_Platform_THash128(benchmark::State& state) {
  const auto words = Words();
  size_t i = 0;
  for (auto _ : state) {
    const auto& w = words[i++ & 4095];
    benchmark::DoNotOptimize(THash128(w.data(), w.size() * 2, 0xDEADBEEF, 0xCAFEBABE));
  }
}
BENCHMARK(BM_Platform_THash128);

void BM_Platform_THash128_PeerRawXXH3(benchmark::State& state) {
  const auto words = Words();
  size_t i = 0;
  for (auto _ : state) {
    const auto& w = words[i++ & 4095];
    benchmark::DoNotOptimize(XXH3_128bits_withSeed(w.data(), w.size() * 2, 0xDEADBEEFCAFEBABEull));
  }
}
BENCHMARK(BM_Platform_THash128_PeerRawXXH3);

void BM_Platform_ToDouble(benchmark::State& state) {
  const TString text(u"12345.6789");
  for (auto _ : state) benchmark::DoNotOptimize(text.toDouble());
}
BENCHMARK(BM_Platform_ToDouble);

void BM_Platform_ToDouble_PeerQString(benchmark::State& state) {
  const QString text = QStringLiteral("12345.6789");
  for (auto _ : state) benchmark::DoNotOptimize(text.toDouble());
}
BENCHMARK(BM_Platform_ToDouble_PeerQString);

}  // namespace
