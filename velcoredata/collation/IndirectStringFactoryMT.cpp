#include "velcoredata/collation/IndirectStringFactoryMT.h"

#include "velcoredata/collation/internal/CanonicalCollations.h"
#include "velcoredata/collation/internal/CollatorText.h"
#include "velcoredata/collation/internal/FastRemainder.h"
#include "velcoredata/collation/internal/GlobalPoolAccess.h"
#include "velcoredata/collation/internal/StripeMutex.h"
#include "velcoredata/collation/internal/ShortText.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/THash.h"

// One cache line: a lookup whose string sits in the stripe's first slots
// misses on the stripe and on the string, nothing else.
struct alignas(64) IndirectStringFactoryMT::Stripe {
  StripeMutex mutex;
  WeakIndirectStringFactory factory;
};

namespace {
using StripeLock = std::lock_guard<StripeMutex>;
}  // namespace

IndirectStringFactoryMT::IndirectStringFactoryMT(int width) : m_width(width) {
  VEL_ASSERT(m_width > 0);
  static_assert(sizeof(Stripe) == 64);
  const FastRemainder::Uint128 magic = FastRemainder::Magic(static_cast<uint64_t>(m_width));
  m_widthMagicLow = static_cast<uint64_t>(magic);
  m_widthMagicHigh = static_cast<uint64_t>(magic >> 64);
  m_stripes = std::make_unique<Stripe[]>(static_cast<size_t>(m_width));
}

IndirectStringFactoryMT::~IndirectStringFactoryMT() = default;

size_t IndirectStringFactoryMT::StripeOf(uint64_t hash) const noexcept {
  const FastRemainder::Uint128 magic = (static_cast<FastRemainder::Uint128>(m_widthMagicHigh) << 64) | m_widthMagicLow;
  return static_cast<size_t>(FastRemainder::Of(hash, magic, static_cast<uint64_t>(m_width)));
}

IndirectString::Ptr IndirectStringFactoryMT::Lookup(const Collation& collation, const char16_t* text) {
  return LookupText(collation, text);
}

IndirectString::Ptr IndirectStringFactoryMT::LookupText(const Collation& collation, const char16_t* text) {
  text = CollatorText::Text(text);
  const int length = static_cast<int>(ShortText::Length(text));
  return IndirectString::Ptr(LookupImpl(collation, text, length, GlobalPoolAccess::HashOf(text, length), 1),
                             AdoptRef);
}

IndirectString::Ptr IndirectStringFactoryMT::Lookup(const Collation& collation, const char16_t* text,
                                                    int length) {
  return IndirectString::Ptr(LookupImpl(collation, text, length, GlobalPoolAccess::HashOf(text, length), 1),
                             AdoptRef);
}

IndirectString::Ptr IndirectStringFactoryMT::Lookup(const Collation& collation, const char16_t* text,
                                                    int length, const THash128Value& hash) {
  return IndirectString::Ptr(LookupImpl(collation, text, length, hash, 1), AdoptRef);
}

IndirectString* IndirectStringFactoryMT::LookupImpl(const Collation& collation, const char16_t* text, int length,
                                                    THash128Value hash, int32_t references) {
  Stripe& stripe = m_stripes[StripeOf(hash.low)];
  // The stripe and the string are most likely not in cache: start loading
  // them while the collation is looked up and the lock is taken.
  __builtin_prefetch(&stripe, 1);
  const Collation* canonical = CanonicalCollations::Get(collation);
  stripe.factory.Prefetch(hash.high);
  WeakIndirectStringFactory::GarbageList garbage;
  IndirectString* found;
  try {
    StripeLock lock(stripe.mutex);
    found = stripe.factory.LookupImpl(canonical, text, length, hash.high, garbage, references);
  } catch (...) {
    // A hook failed after dead strings were collected on the way: they are
    // unlinked, so they are freed (and reported as far as the hooks allow)
    // all the same, and the lookup's own failure is what the caller sees.
    try {
      WeakIndirectStringFactory::FreeGarbage(garbage);
    } catch (...) {
    }
    throw;
  }
  if (!garbage.empty()) WeakIndirectStringFactory::FreeGarbage(garbage);
  return found;
}

size_t IndirectStringFactoryMT::ForceCollectAllGarbage() {
  size_t collected = 0;
  for (int i = 0; i < m_width; ++i) {
    WeakIndirectStringFactory::GarbageList garbage;
    {
      StripeLock lock(m_stripes[i].mutex);
      m_stripes[i].factory.CollectGarbage(garbage);
    }
    collected += garbage.size();
    WeakIndirectStringFactory::FreeGarbage(garbage);
  }
  return collected;
}

size_t IndirectStringFactoryMT::GetEntryCount() {
  size_t count = 0;
  for (int i = 0; i < m_width; ++i) {
    StripeLock lock(m_stripes[i].mutex);
    count += m_stripes[i].factory.GetEntryCount();
  }
  return count;
}
