// One stripe of the pool on its own: hundreds of texts in one factory, so
// that its first slots, its overflow table (growth, removal, freeing when
// empty) and strings that share a key's tag byte are all exercised against
// a model of what it must hold.

#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "collation/StringPoolTestSupport.h"
#include "velcoredata/collation/WeakIndirectStringFactory.h"
#include "velcoredata/collation/internal/GlobalPoolAccess.h"

namespace {

uint64_t KeyOf(const std::u16string& text) {
  return GlobalPoolAccess::HashOf(text.c_str(), static_cast<int>(text.size())).high;
}

// A factory and the collation its strings point to (the pool would pass
// one shared object per distinct collation; here the stripe's own).
class Stripe {
 public:
  explicit Stripe(const Collation& collation) : m_collation(collation) {}

  IndirectString::Ptr Lookup(const std::u16string& text) {
    WeakIndirectStringFactory::GarbageList garbage;
    IndirectString::Ptr found =
        factory.Lookup(&m_collation, text.c_str(), static_cast<int>(text.size()), KeyOf(text), garbage);
    WeakIndirectStringFactory::FreeGarbage(garbage);
    return found;
  }

 private:
  const Collation m_collation;  // outlives the factory's strings

 public:
  WeakIndirectStringFactory factory;
};

TEST(WeakIndirectStringFactoryTest, HoldsWhatAModelOfLiveAndDeadEntriesPredicts) {
  CountingHooks counters;
  {
    Stripe stripe(Collation(u"LEN_RUS"));
    std::vector<std::u16string> texts;
    for (int i = 0; i < 300; ++i) texts.push_back(u"entry " + TString::number(i * 37).str());

    // What each text has in the factory: nothing, a live string with its
    // holders, or a dead string not yet collected.
    struct State {
      std::vector<IndirectString::Ptr> holders;
      IndirectString* live = nullptr;
      bool dead = false;
    };
    std::vector<State> model(texts.size());
    std::mt19937 rng(11);
    for (int step = 0; step < 60000; ++step) {
      const size_t t = rng() % (step < 20000 ? texts.size() : 40);  // later steps churn a few texts
      State& s = model[t];
      switch (rng() % 8) {
        case 0:
        case 1:
        case 2: {  // lookup; a dead entry of the text is collected on the way
          IndirectString::Ptr p = stripe.Lookup(texts[t]);
          ASSERT_EQ(p->View(), texts[t]);
          if (s.live) {
            ASSERT_EQ(p.get(), s.live) << "step " << step;
          }
          s.live = p.get();
          s.dead = false;
          s.holders.push_back(std::move(p));
          break;
        }
        case 3:
        case 4:
        case 5:  // a holder lets go; the last one kills the string
          if (!s.holders.empty()) {
            s.holders.pop_back();
            if (s.holders.empty()) {
              ASSERT_EQ(s.live->GetRefCount(), 0);
              s.live = nullptr;
              s.dead = true;
            }
          }
          break;
        case 6:
          if (rng() % 64 == 0) {
            stripe.factory.ForceCollectAllGarbage();
            for (State& other : model) other.dead = false;
          }
          break;
        default:  // a live string stays the stripe's answer
          if (s.live) {
            ASSERT_EQ(WeakIndirectStringFactory::GetPtrIfStringIsAlive(*s.live).get(), s.live);
          }
          break;
      }
      long long live = 0, dead = 0, bytes = 0;
      for (size_t i = 0; i < model.size(); ++i) {
        live += model[i].live != nullptr;
        dead += model[i].dead;
        if (model[i].live) bytes += static_cast<long long>(texts[i].size()) * 2;
      }
      ASSERT_EQ(stripe.factory.GetEntryCount(), static_cast<size_t>(live + dead)) << "step " << step;
      ASSERT_EQ(counters.entries.load(), live + dead);
      ASSERT_EQ(counters.weakEntries.load(), dead);
      ASSERT_EQ(counters.bytes.load(), bytes);
    }
    // Everything released and collected: the factory is empty, and takes
    // strings again.
    for (State& s : model) s.holders.clear();
    stripe.factory.ForceCollectAllGarbage();
    EXPECT_EQ(stripe.factory.GetEntryCount(), 0u);
    EXPECT_EQ(counters.entries.load(), 0);
    const IndirectString::Ptr again = stripe.Lookup(texts[0]);
    EXPECT_EQ(stripe.Lookup(texts[0]).get(), again.get());
    EXPECT_EQ(stripe.factory.GetEntryCount(), 1u);
  }
  // The destroyed factory took its strings off the counters.
  EXPECT_EQ(counters.entries.load(), 0);
  EXPECT_EQ(counters.weakEntries.load(), 0);
  EXPECT_EQ(counters.bytes.load(), 0);
}

TEST(WeakIndirectStringFactoryTest, ADeadStringIsCollectedOnlyByALookupOfItsOwnKey) {
  // Texts whose keys share their top byte: the factory files them under
  // the same tag, and only the full key tells them apart.
  std::map<uint64_t, std::vector<std::u16string>> byTag;
  std::vector<std::u16string> sameTag;
  for (int i = 0; sameTag.empty(); ++i) {
    std::u16string text = u"tag " + TString::number(i).str();
    auto& group = byTag[KeyOf(text) >> 56];
    group.push_back(std::move(text));
    if (group.size() == 6) sameTag = group;
  }
  CountingHooks counters;
  Stripe stripe(Collation(u"LEN_RUS"));
  std::vector<IndirectString::Ptr> held;
  for (const auto& text : sameTag) held.push_back(stripe.Lookup(text));
  // The first and the last (in the overflow table) die.
  held.front().reset();
  held.back().reset();
  EXPECT_EQ(counters.weakEntries.load(), 2);

  // Lookups of the other texts walk over the dead strings without taking them.
  for (size_t i = 1; i + 1 < sameTag.size(); ++i) EXPECT_EQ(stripe.Lookup(sameTag[i]).get(), held[i].get());
  EXPECT_EQ(stripe.factory.GetEntryCount(), 6u);
  EXPECT_EQ(counters.weakEntries.load(), 2);

  // A lookup of a dead text collects it and makes a new string (which may
  // take over the dead one's memory).
  const IndirectString::Ptr again = stripe.Lookup(sameTag.front());
  EXPECT_EQ(again->View(), sameTag.front());
  EXPECT_EQ(again->GetRefCount(), 2);
  EXPECT_EQ(stripe.factory.GetEntryCount(), 6u);
  EXPECT_EQ(counters.weakEntries.load(), 1);
  EXPECT_EQ(counters.entries.load(), 6);
  (void)stripe.Lookup(sameTag.back());
  EXPECT_EQ(counters.weakEntries.load(), 1);  // the new one died with its temporary
  EXPECT_EQ(stripe.factory.ForceCollectAllGarbage(), 1u);
  EXPECT_EQ(stripe.factory.GetEntryCount(), 5u);
}

}  // namespace
