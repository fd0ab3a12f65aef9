// Interned strings: identity per (text, collation), the weak hold and its
// counters, collection, collation-aware comparison, pool configuration and
// replacement.

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "collation/CollationTestSupport.h"
#include "collation/StringPoolTestSupport.h"
#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/collation/IndirectStringLookupCache.h"
#include "velcoredata/collation/internal/FastRemainder.h"
#include "velcoredata/collation/internal/ShortText.h"

namespace {

using CollationTestSupport::LogicConditionOf;

TEST(IndirectStringTest, OneObjectPerTextAndCollation) {
  PoolUnderTest pool;
  const Collation english(u"LEN_RUS_S2");
  const IndirectString::Ptr a = IndirectString::Lookup(english, u"Berlin");
  const IndirectString::Ptr b = IndirectString::Lookup(Collation(u"LEN_RUS_S2"), u"Berlin");
  EXPECT_EQ(a.get(), b.get());
  EXPECT_EQ(a->GetRefCount(), 3);  // two users and the pool
  EXPECT_EQ(a->GetString(), TString(u"Berlin"));
  EXPECT_EQ(a->GetCollation(), english);
  // Same name, another charset: another collation, another object.
  const IndirectString::Ptr latin1 = IndirectString::Lookup(Collation(u"LEN_RUS_S2", 1252), u"Berlin");
  EXPECT_NE(latin1.get(), a.get());
  EXPECT_EQ(latin1->GetCollation().GetCharsetID(), 1252);
  // Matching is exact: equal under the collation is not the same text.
  EXPECT_NE(IndirectString::Lookup(english, u"BERLIN").get(), a.get());
  // The empty text (and a null one) is interned like any other.
  const IndirectString::Ptr empty = IndirectString::Lookup(english, u"");
  EXPECT_EQ(IndirectString::Lookup(english, nullptr).get(), empty.get());
  EXPECT_EQ(empty->GetLength(), 0);
  EXPECT_EQ(pool.pool().GetEntryCount(), 4u);
}

TEST(IndirectStringTest, TheLastReleaseKillsTheStringAndALaterLookupCollectsIt) {
  PoolUnderTest pool;
  const Collation c(u"LDE_RDE");
  IndirectString::Ptr s = IndirectString::Lookup(c, u"Stra\u00DFe");
  IndirectString* const first = s.get();
  EXPECT_EQ(pool.counters.entries, 1);
  EXPECT_EQ(pool.counters.bytes, 12);
  EXPECT_EQ(pool.counters.weakEntries, 0);
  EXPECT_TRUE(WeakIndirectStringFactory::GetPtrIfStringIsAlive(*first));

  s.reset();
  EXPECT_EQ(pool.counters.weakEntries, 1);
  EXPECT_EQ(pool.counters.bytes, 0);
  EXPECT_EQ(pool.counters.entries, 1);  // still in its stripe
  EXPECT_EQ(first->GetRefCount(), 0);
  EXPECT_FALSE(WeakIndirectStringFactory::GetPtrIfStringIsAlive(*first));  // never revived

  // The same text again: a new string (it may take over the dead one's
  // memory); the dead one under the same key is collected on the way.
  const IndirectString::Ptr again = IndirectString::Lookup(c, u"Stra\u00DFe");
  EXPECT_EQ(again->GetRefCount(), 2);
  EXPECT_EQ(again->View(), u"Stra\u00DFe");
  EXPECT_EQ(pool.counters.entries, 1);
  EXPECT_EQ(pool.counters.weakEntries, 0);
  EXPECT_EQ(pool.counters.bytes, 12);
  EXPECT_EQ(pool.pool().GetEntryCount(), 1u);
}

// A string made where a dead one of the same length was collected is new in
// every respect: its collation, its hash, its count and its text.
TEST(IndirectStringTest, AStringMadeAgainAfterItDiedCarriesNothingOfTheDeadOne) {
  PoolUnderTest pool;
  const Collation caseless(u"LEN_RUS_S1");
  const Collation exact(u"LEN_RUS_S3");
  IndirectString::Ptr s = IndirectString::Lookup(caseless, u"Berlin");
  const uint32_t caselessHash = s->GetHash();
  EXPECT_EQ(caselessHash, caseless.Hash(u"BERLIN"));
  s.reset();

  // Same text, same key, same length: only the collation differs.
  const IndirectString::Ptr again = IndirectString::Lookup(exact, u"Berlin");
  EXPECT_EQ(again->GetCollation(), exact);
  EXPECT_EQ(again->GetHash(), exact.Hash(u"Berlin"));
  EXPECT_NE(again->GetHash(), exact.Hash(u"BERLIN"));
  EXPECT_EQ(again->GetRefCount(), 2);
  EXPECT_EQ(IndirectString::Lookup(exact, u"Berlin").get(), again.get());
  EXPECT_NE(IndirectString::Lookup(caseless, u"Berlin").get(), again.get());
  EXPECT_EQ(pool.counters.entries, 2);
  EXPECT_EQ(pool.counters.weakEntries, 1);  // the caseless one just looked up and dropped
  EXPECT_EQ(pool.counters.bytes, 12);
}

TEST(IndirectStringTest, ForcedCollectionFreesEveryDeadStringAndNoLiveOne) {
  PoolUnderTest pool(8);
  const Collation c(u"LEN_RUS");
  std::vector<IndirectString::Ptr> kept;
  for (int i = 0; i < 200; ++i) {
    IndirectString::Ptr s = IndirectString::Lookup(c, TString::number(i).c_str());
    if (i % 4 == 0) kept.push_back(std::move(s));
  }
  EXPECT_EQ(pool.counters.entries, 200);
  EXPECT_EQ(pool.counters.weakEntries, 150);
  EXPECT_EQ(pool.pool().ForceCollectAllGarbage(), 150u);
  EXPECT_EQ(pool.counters.entries, 50);
  EXPECT_EQ(pool.counters.weakEntries, 0);
  EXPECT_EQ(pool.pool().GetEntryCount(), 50u);
  long long bytes = 0;
  for (const auto& s : kept) {
    bytes += s->GetLength() * 2;
    EXPECT_EQ(IndirectString::Lookup(c, s->GetText()).get(), s.get());
  }
  EXPECT_EQ(pool.counters.bytes, bytes);
  EXPECT_EQ(pool.pool().ForceCollectAllGarbage(), 0u);
}

TEST(IndirectStringTest, EqualityAndOrderFollowTheCollation) {
  PoolUnderTest pool;
  const Collation insensitive(u"LEN_RUS_S2");
  const Collation sensitive(u"LEN_RUS");
  const auto upper = IndirectString::Lookup(insensitive, u"APPLE");
  const auto lower = IndirectString::Lookup(insensitive, u"apple");
  const auto pear = IndirectString::Lookup(insensitive, u"pear");
  EXPECT_NE(upper.get(), lower.get());
  EXPECT_TRUE(*upper == *lower);
  EXPECT_FALSE(*upper < *lower);
  EXPECT_TRUE(*lower < *pear);
  EXPECT_EQ(upper->GetHash(), insensitive.Hash(u"APPLE"));
  EXPECT_EQ(upper->GetHash(), lower->GetHash());
  EXPECT_TRUE(*upper == *lower);  // with both hashes cached
  // Case counts under a case-sensitive collation of the same locale.
  const auto sensitiveUpper = IndirectString::Lookup(sensitive, u"APPLE");
  const auto sensitiveLower = IndirectString::Lookup(sensitive, u"apple");
  EXPECT_FALSE(*sensitiveUpper == *sensitiveLower);
  EXPECT_EQ(sensitiveUpper->ComputeHash(), sensitive.Hash(u"APPLE"));
  // Collations that are not equivalent order by the collations themselves.
  const auto german = IndirectString::Lookup(Collation(u"LDE_RDE"), u"zzz");
  const auto binary = IndirectString::Lookup(GetBinaryCollation(), u"aaa");
  EXPECT_FALSE(*german == *binary);
  EXPECT_TRUE(*german < *binary);   // "LDE_RDE" < "binary"
  EXPECT_FALSE(*binary < *german);
}

TEST(IndirectStringTest, ADestroyedPoolLetsGoOfItsStringsAndTakesThemOffTheCounters) {
  CountingHooks counters;
  IndirectString::Ptr survivor;
  {
    const std::unique_ptr<IGlobalIndirectStringPool> pool(MakeDefaultGlobalIndirectStringPool(8));
    const auto scope = ReplaceGlobalIndirectStringPoolInScope(pool.get());
    survivor = IndirectString::Lookup(Collation(u"LEN_RUS"), u"kept");
    IndirectString::Lookup(Collation(u"LEN_RUS"), u"gone");
    EXPECT_EQ(counters.entries, 2);
    EXPECT_EQ(counters.weakEntries, 1);
    EXPECT_EQ(counters.bytes, 8);
  }  // the scope ends, then the pool is destroyed
  EXPECT_EQ(counters.entries, 0);
  EXPECT_EQ(counters.weakEntries, 0);
  EXPECT_EQ(counters.bytes, 0);
  EXPECT_EQ(survivor->GetString(), TString(u"kept"));
  EXPECT_EQ(survivor->GetRefCount(), 1);  // only its user now
  IndirectString::Ptr copy = survivor;
  copy.reset();
  survivor.reset();  // freed by its last user (the sanitizers check)
  EXPECT_EQ(counters.weakEntries, 0);
  EXPECT_EQ(counters.bytes, 0);
}

TEST(IndirectStringTest, ADeadStringGivesItsTextBackBeforeAnyCollection) {
  PoolUnderTest pool;
  const Collation c(u"LEN_RUS");
  constexpr size_t kTexts = 20 * 1024, kUnits = 512;  // 20 MiB of text
  std::vector<IndirectString::Ptr> held;
  held.reserve(kTexts);
  std::u16string text(kUnits, u'x');
  for (size_t i = 0; i < kTexts; ++i) {
    for (size_t d = 0, n = i; d < 6; ++d, n /= 16) text[d] = static_cast<char16_t>(u'a' + n % 16);
    held.push_back(IndirectString::Lookup(c, text.c_str()));
  }
  const size_t textBytes = kTexts * kUnits * sizeof(char16_t);
  const size_t whileHeld = HeapInUse();
  held.clear();
  held.shrink_to_fit();
  const size_t afterDeath = HeapInUse();
  // Every entry is still in the pool, dead and not yet collected...
  EXPECT_EQ(pool.pool().GetEntryCount(), kTexts);
  EXPECT_EQ(pool.counters.weakEntries, static_cast<long long>(kTexts));
  EXPECT_EQ(pool.counters.bytes, 0);
  // ...but the texts are already gone.
  ASSERT_LT(afterDeath, whileHeld);
  EXPECT_GE(whileHeld - afterDeath, textBytes / 10 * 9);
  EXPECT_EQ(pool.pool().ForceCollectAllGarbage(), kTexts);
  EXPECT_EQ(pool.counters.weakEntries, 0);
  // A text interned again after its string died is a new, whole string.
  text[0] = u'a';
  EXPECT_EQ(IndirectString::Lookup(c, text.c_str())->View(), text);
}

TEST(IndirectStringTest, AnEmptyHookIsRefusedWhenInstalledAndThePreviousHookStays) {
  PoolUnderTest pool;
  const Collation c(u"LEN_RUS");
  EXPECT_THROW(IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(nullptr), std::bad_function_call);
  EXPECT_THROW(IndirectStringConfig::SetUpdateStringPoolWeakEntryCounterFunction({}), std::bad_function_call);
  EXPECT_THROW(CoreDataOptions::SetUpdateStringPoolTotalBytesCounter(nullptr), std::bad_function_call);
  EXPECT_EQ(IndirectString::Lookup(c, u"new")->GetString(), TString(u"new"));
  EXPECT_EQ(pool.counters.entries, 1);
  EXPECT_EQ(pool.counters.bytes, 0);  // 6 bytes in, 6 out when the temporary went
  EXPECT_EQ(pool.counters.weakEntries, 1);
}

TEST(IndirectStringTest, SwappingHooksKeepsOnlyTheInstalledOnes) {
  PoolUnderTest pool;
  const Collation c(u"LEN_RUS");
  std::atomic<long long> calls{0};
  // Each hook owns a kilobyte: were every hook kept, 100,000 swaps would
  // hold 100 MB.
  auto hookWithPayload = [&calls] {
    return [&calls, payload = std::vector<char>(1024, 'x')](long long) { calls += payload.size() > 0; };
  };
  const size_t before = HeapInUse();
  auto previous = IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(hookWithPayload());
  for (int i = 0; i < 100000; ++i) {
    (void)IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(hookWithPayload());
  }
  EXPECT_LT(HeapInUse() - before, size_t{1} << 20);
  (void)IndirectString::Lookup(c, u"counted");
  EXPECT_EQ(calls, 1);
  // The function handed back is the one that was installed, whole.
  auto last = IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(previous);
  last(1);
  EXPECT_EQ(calls, 2);
}

// A lookup that collects a dead string and then fails on the entry hook
// still frees what it collected, and the hooks that are there hear of it.
TEST(IndirectStringTest, ALookupFailingOnAHookStillFreesTheDeadStringsItCollected) {
  PoolUnderTest pool;
  const Collation c(u"LEN_RUS");
  (void)IndirectString::Lookup(c, u"gone");
  EXPECT_EQ(pool.counters.weakEntries, 1);
  const auto previous = IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(
      [](long long) { throw std::bad_function_call(); });
  EXPECT_THROW(IndirectString::Lookup(c, u"gone"), std::bad_function_call);
  IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(previous);
  EXPECT_EQ(pool.pool().GetEntryCount(), 0u);
  EXPECT_EQ(pool.counters.weakEntries, 0);
  EXPECT_EQ(pool.counters.bytes, 0);
  EXPECT_EQ(pool.counters.entries, 1);  // its hook was away when the string went
  EXPECT_EQ(IndirectString::Lookup(c, u"gone")->View(), u"gone");
}

TEST(IndirectStringTest, ConfigurationIsSharedWithCoreDataOptionsAndCheckedWhenAPoolIsMade) {
  const int width = IndirectStringConfig::GetStringPoolGlobalStripedMapWidth();
  EXPECT_EQ(width, 10000);
  IndirectStringConfig::SetStringPoolGlobalStripedMapWidth(77);
  EXPECT_EQ(CoreDataOptions::GetStringPoolGlobalStripedMapWidth(), 77);
  CoreDataOptions::SetStringPoolGlobalStripedMapWidth(width);
  EXPECT_EQ(IndirectStringConfig::GetStringPoolGlobalStripedMapWidth(), width);

  const unsigned long size = IndirectStringLookupCache::GetStringPoolThreadLocalCacheSize();
  EXPECT_EQ(size, 1000u);
  CoreDataOptions::SetStringPoolThreadLocalCacheSize(3);
  EXPECT_EQ(IndirectStringLookupCache(Collation()).GetCapacity(), 3u);
  IndirectStringLookupCache::SetStringPoolThreadLocalCacheSize(size);
  EXPECT_EQ(CoreDataOptions::GetStringPoolThreadLocalCacheSize(), size);

  EXPECT_EQ(LogicConditionOf([] { IndirectStringFactoryMT pool(0); }), "m_width > 0");
  EXPECT_EQ(LogicConditionOf([] { delete MakeDefaultGlobalIndirectStringPool(-3); }), "m_width > 0");
  IndirectString::Ptr none;
  EXPECT_EQ(LogicConditionOf([&] { (void)none->GetLength(); }), "m_ptr");
}

TEST(IndirectStringTest, ScopesReplaceTheGlobalPoolAndPutThePreviousBack) {
  IGlobalIndirectStringPool& global = GetGlobalIndirectStringPool();
  const Collation c(u"LEN_RUS");
  const IndirectString::Ptr inGlobal = IndirectString::Lookup(c, u"scoped");
  std::unique_ptr<IGlobalIndirectStringPool> outer(MakeDefaultGlobalIndirectStringPool(4));
  std::unique_ptr<IGlobalIndirectStringPool> inner(MakeDefaultGlobalIndirectStringPool(1));
  {
    auto outerScope = ReplaceGlobalIndirectStringPoolInScope(outer.get());
    EXPECT_EQ(&GetGlobalIndirectStringPool(), outer.get());
    const IndirectString::Ptr inOuter = IndirectString::Lookup(c, u"scoped");
    EXPECT_NE(inOuter.get(), inGlobal.get());
    {
      auto innerScope = ReplaceGlobalIndirectStringPoolInScope(inner.get());
      EXPECT_EQ(&GetGlobalIndirectStringPool(), inner.get());
      EXPECT_NE(IndirectString::Lookup(c, u"scoped").get(), inOuter.get());
    }
    EXPECT_EQ(&GetGlobalIndirectStringPool(), outer.get());
    EXPECT_EQ(IndirectString::Lookup(c, u"scoped").get(), inOuter.get());
  }
  EXPECT_EQ(&GetGlobalIndirectStringPool(), &global);
  EXPECT_EQ(IndirectString::Lookup(c, u"scoped").get(), inGlobal.get());
}

TEST(IndirectStringTest, StripeReductionEqualsTheRemainder) {
  std::mt19937_64 rng(5);
  const uint64_t divisors[] = {1, 2, 3, 7, 10000, 65536, 0xFFFFFFFFull, 0x100000001ull,
                               0x7FFFFFFFFFFFFFFFull, 0xFFFFFFFFFFFFFFFFull};
  for (uint64_t d : divisors) {
    const auto magic = FastRemainder::Magic(d);
    for (uint64_t a : {uint64_t{0}, uint64_t{1}, d - 1, d, d + 1, ~uint64_t{0}}) {
      ASSERT_EQ(FastRemainder::Of(a, magic, d), a % d) << a << " % " << d;
    }
    for (int i = 0; i < 20000; ++i) {
      const uint64_t a = rng();
      ASSERT_EQ(FastRemainder::Of(a, magic, d), a % d) << a << " % " << d;
    }
  }
  for (int i = 0; i < 2000; ++i) {
    const uint64_t d = (rng() >> (rng() % 64)) | 1;
    const uint64_t a = rng();
    ASSERT_EQ(FastRemainder::Of(a, FastRemainder::Magic(d), d), a % d) << a << " % " << d;
  }
}

TEST(IndirectStringTest, ShortTextLengthReadsNothingPastTheText) {
  // Texts in allocations of exactly their size, at every length a fast path
  // could step over: under the address sanitizer a read past the terminating
  // 0 fails the test.
  for (size_t length = 0; length < 70; ++length) {
    auto text = std::make_unique<char16_t[]>(length + 1);
    for (size_t i = 0; i < length; ++i) text[i] = static_cast<char16_t>(u'a' + i % 26);
    text[length] = 0;
    ASSERT_EQ(ShortText::Length(text.get()), length);
    if (length > 0) {
      ASSERT_EQ(ShortText::Length(text.get() + 1), length - 1);  // an odd start within the buffer
    }
  }
}

TEST(IndirectStringTest, ShortTextEqualitySeesADifferenceAnywhere) {
  // Every length up to 40 code units, both texts at every 2-byte offset,
  // and a difference in each code unit, in its low or its high byte.
  alignas(16) char16_t a[64], b[64];
  for (size_t offset = 0; offset < 8; ++offset) {
    for (size_t length = 0; length <= 40; ++length) {
      char16_t* x = a + offset;
      char16_t* y = b + (7 - offset);
      for (size_t i = 0; i < length; ++i) x[i] = y[i] = static_cast<char16_t>(0x4100 + i * 7);
      ASSERT_TRUE(ShortText::Equal(x, y, length)) << offset << " " << length;
      for (size_t i = 0; i < length; ++i) {
        for (char16_t flip : {char16_t{0x0001}, char16_t{0x0100}}) {
          y[i] ^= flip;
          ASSERT_FALSE(ShortText::Equal(x, y, length)) << offset << " " << length << " " << i;
          y[i] ^= flip;
        }
      }
    }
  }
}

TEST(IndirectStringTest, TextLengthFindsTheTerminatorAtEveryAlignment) {
  // Texts of every length up to 40 code units, starting at every offset of
  // a 16-byte block, after zeros (a previous text's end) that do not count.
  alignas(16) char16_t buffer[80];
  for (size_t start = 0; start < 8; ++start) {
    for (size_t length = 0; length <= 40; ++length) {
      std::fill(std::begin(buffer), std::end(buffer), u'x');
      std::fill(buffer, buffer + start, u'\0');
      buffer[start + length] = 0;
      if (length > 0) buffer[start + length - 1] = 0xFF00;  // high byte set, low byte zero
      ASSERT_EQ(ShortText::Length(buffer + start), length) << "start " << start << " length " << length;
    }
  }
  // A zero byte in the middle of a code unit is no terminator.
  const char16_t text[] = {0x0100, 0x00FF, 0x4100, 0};
  EXPECT_EQ(ShortText::Length(text), 3u);
}

}  // namespace
