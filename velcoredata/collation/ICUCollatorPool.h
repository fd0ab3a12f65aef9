// ICUCollatorPool: the collators of one ICU collator name, one per thread.
//
// A pool is identified by its key (collator name, comparison flags as asked
// for) and made once per key by Factory; the registry keeps every pool until
// the process ends. Each thread that uses a pool gets its own ICUCollator,
// created on the thread's first AcquireCollator and kept until the thread
// ends (a thread-exit hook drops it) or calls FreeOnThread.
//
// Thread-safety: everything here may be called from any thread. A collator
// handed out by AcquireCollator must only be used by the calling thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <oneapi/tbb/concurrent_hash_map.h>

#include "velcoredata/collation/CollatorPool.h"
#include "velcoredata/collation/ICUCollator.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

// What a collator name asks ICU for: a locale and attribute settings in the
// order the name gives them.
struct CollationSpec {
  std::string locale;
  ICUCollator::AttrList attributes;
};

class VELCOREDATA_EXPORT ICUCollatorPool final : public CollatorPool {
 public:
  using Key = ICUCollator::Key;

  // Hash and equality of thread ids for the per-thread map.
  struct ThreadCompare {
    static size_t hash(unsigned long long threadId) noexcept;
    static bool equal(unsigned long long a, unsigned long long b) noexcept { return a == b; }
  };

  // The pool of `key`, made on first use. The first caller's thread gets the
  // pool's first collator. A name that is not a collator name is a logic
  // error ("Unhandled specifier" for an unknown key letter); a locale ICU
  // cannot open raises ICUException. Either way nothing is registered.
  // Never null; the registry keeps ownership.
  static ICUCollatorPool* Factory(const Key& key);
  // The registered pool of `key`, or null; never creates one.
  static ICUCollatorPool* Find(const Key& key);
  // How many pools the registry holds.
  static size_t GetPoolCount();
  // Drops the calling thread's collator from every pool. Runs by itself at
  // the end of every thread that used the library.
  static void FreeOnThread();

  // The locale and attributes a collator name asks for. Unknown key
  // letters, parts of the wrong length, bad strength digits and empty parts
  // are logic errors.
  static CollationSpec ParseName(const TString& name);

  ~ICUCollatorPool() override;

  Collator* AcquireCollator() override;
  void ReleaseCollator(Collator* collator) override;
  const TString& GetName() const override;
  bool IsCaseSensitive() const override;
  const TString& GetLanguage() const override;
  unsigned GetLCID() const override;
  const TString& GetLocaleString() const override;
  const TString& GetDisplayCountry() const override;
  const TString& GetDisplayLanguage() const override;
  // Derived from the first collator: strength primary 3, secondary 1,
  // tertiary 0 (others 0, shifting not counted), | 4 when punctuation is
  // shifted, | 0x80000000 when Windows-specific.
  unsigned GetCmpFlags() const override;
  bool HasWordSort() const override;
  bool IsWindowsSpecific() const override;

  const Key& GetKey() const noexcept { return m_key; }
  // Identifies the pool for the life of the process (never reused).
  uint64_t GetSerial() const noexcept { return m_serial; }
  const CollationSpec& GetSpec() const noexcept { return m_spec; }
  // How many threads hold a collator of this pool, and whether the thread
  // with that TSystem::ThreadID does.
  size_t GetThreadCollatorCount() const;
  bool HasCollatorForThread(uint64_t threadId) const;

 private:
  // On the system allocator (not oneTBB's), so that leak checkers can follow
  // what the map holds.
  using CollatorMap = tbb::concurrent_hash_map<
      unsigned long long, std::shared_ptr<Collator>, ThreadCompare,
      std::allocator<std::pair<const unsigned long long, std::shared_ptr<Collator>>>>;

  explicit ICUCollatorPool(Key key);
  Collator* AcquireCollatorSlow();

  Key m_key;
  CollationSpec m_spec;
  // Identifies the pool in the threads' collator caches; never reused.
  uint64_t m_serial;
  unsigned m_lcid = 0;
  unsigned m_cmpFlags = 0;
  bool m_windowsSpecific = false;
  bool m_wordSort = false;
  bool m_caseSensitive = true;
  TString m_localeString;
  TString m_language;
  TString m_displayLanguage;
  TString m_displayCountry;
  CollatorMap m_collators;
};

// Creates the pool registry (and registers FreeOnThread as a thread-exit
// hook); Factory does it on first use.
VELCOREDATA_EXPORT void ICUCollatorInitialize();
// ICUCollatorPool::FreeOnThread().
VELCOREDATA_EXPORT void ICUCollatorFreeOnThread();
