// IndirectStringFactoryMT: the striped string pool.
//
// `width` stripes, each a WeakIndirectStringFactory behind its own
// recursive mutex, the two together in one cache line. A text's 128-bit
// hash (THash128, seeds 0xDEADBEEF and 0xCAFEBABE) picks the stripe (low 64
// bits modulo the width) and the key within it (high 64 bits), so threads
// interning different texts rarely meet on a lock. Dead strings met during
// a lookup are freed after the stripe's lock is released.
//
// Thread-safety: Lookup and ForceCollectAllGarbage may be called from any
// thread. Destroy the pool only when no other thread uses it; its live
// strings stay valid for their users.
#pragma once

#include <cstdint>
#include <memory>

#include "velcoredata/collation/IGlobalIndirectStringPool.h"
#include "velcoredata/collation/WeakIndirectStringFactory.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/Locks.h"
#include "velcoredata/platform/THash.h"

class VELCOREDATA_EXPORT IndirectStringFactoryMT final : public IGlobalIndirectStringPool {
 public:
  // A width below 1 is a logic error ("m_width > 0").
  explicit IndirectStringFactoryMT(int width);
  ~IndirectStringFactoryMT() override;

  IndirectString::Ptr Lookup(const Collation& collation, const char16_t* text) override;
  // The same with a known length (the text need not be terminated).
  IndirectString::Ptr Lookup(const Collation& collation, const char16_t* text, int length);
  // The same with the text's THash128 (seeds 0xDEADBEEF and 0xCAFEBABE)
  // already computed by the caller.
  IndirectString::Ptr Lookup(const Collation& collation, const char16_t* text, int length,
                             const THash128Value& hash);

  // Collects every dead string of every stripe (each under its lock), then
  // reports and frees them; returns how many.
  size_t ForceCollectAllGarbage();

  int GetWidth() const noexcept { return m_width; }
  // Strings in all stripes, dead ones included (locks each stripe in turn).
  size_t GetEntryCount();

 private:
  friend class IndirectString;  // IndirectString::Lookup
  friend struct GlobalPoolAccess;
  struct Stripe;  // the lock and the map of one stripe

  [[gnu::visibility("hidden")]] size_t StripeOf(uint64_t hash) const noexcept;
  // What every Lookup comes down to; not exported, so calls stay direct.
  [[gnu::visibility("hidden")]] IndirectString::Ptr LookupText(const Collation& collation, const char16_t* text);
  // The string with `references` (1 or 2) taken for the caller.
  [[gnu::visibility("hidden")]] IndirectString* LookupImpl(const Collation& collation, const char16_t* text,
                                                           int length, THash128Value hash,
                                                           int32_t references);

  TRecursiveMutex m_mutex;  // the pool's own; stripes do not need it
  int m_width;
  // Precomputed for the stripe reduction (hash % width without a
  // division): a 128-bit constant, low and high halves.
  uint64_t m_widthMagicLow = 0;
  uint64_t m_widthMagicHigh = 0;
  std::unique_ptr<Stripe[]> m_stripes;
};
