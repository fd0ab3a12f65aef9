// CollatorPool: where a Collation borrows its collators.
//
// A pool stands for one ordering (one collator name) and hands out collators
// for it. AcquireCollator gives the calling thread a collator that only that
// thread uses; ReleaseCollator gives it back after one operation (wrap the
// pair in a CollatorRef). The remaining queries describe the ordering and are
// safe from any thread.
//
// Pools are process-wide and live until the process ends; a Collation holds
// a plain pointer to its pool and never frees it.
#pragma once

#include <cstdint>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class Collator;

class VELCOREDATA_EXPORT CollatorPool {
 public:
  // The library's two pool families; pools made elsewhere are Other. Lets
  // the hottest paths reach a known pool's collator without virtual calls.
  enum class Family : uint8_t { Other = 0, Binary = 1, ICU = 2 };

  virtual ~CollatorPool();

  // A collator for the calling thread; never null.
  virtual Collator* AcquireCollator() = 0;
  virtual void ReleaseCollator(Collator* collator) = 0;

  // The canonical collator name of the pool ("binary", "LEN_RUS_S2", ...).
  virtual const TString& GetName() const = 0;
  // Whether upper and lower case letters are told apart.
  virtual bool IsCaseSensitive() const = 0;
  // The language code ("en"); "binary" for the binary pool.
  virtual const TString& GetLanguage() const = 0;
  // The Windows locale identifier of the ordering's locale.
  virtual unsigned GetLCID() const = 0;
  // The locale the collators were opened for ("en_US", "en_US_WIN").
  virtual const TString& GetLocaleString() const = 0;
  virtual const TString& GetDisplayCountry() const = 0;
  virtual const TString& GetDisplayLanguage() const = 0;
  // Windows comparison flags: 1 ignore case, 2 ignore non-spacing marks,
  // 4 ignore symbols, 0x80000000 the Windows-specific variant.
  virtual unsigned GetCmpFlags() const = 0;
  // Whether hyphens and apostrophes are ignored (word sort).
  virtual bool HasWordSort() const = 0;
  // Whether the ordering is the Windows-specific variant of its locale.
  virtual bool IsWindowsSpecific() const = 0;

  Family GetFamily() const noexcept { return m_family; }

 protected:
  explicit CollatorPool(Family family = Family::Other) noexcept : m_family(family) {}
  CollatorPool(const CollatorPool&) = delete;
  CollatorPool& operator=(const CollatorPool&) = delete;

 private:
  Family m_family;
};
