// Collation: how the strings of a value, field or column compare.
//
// A small copyable value: a collator name (see CollatorName.h), the
// character-set id of the data it came from (0: none), a cached hash of the
// name, and a pointer to the shared CollatorPool of the name. It does no
// comparing itself: each string operation borrows the calling thread's
// collator from the pool for the length of the call.
//
//   Collation c(u"LEN_RUS_S2");                 // English (US), case-insensitive
//   c.Compare(u"apple", u"APPLE") == 0;
//   Collation w("en_US", false, Collation::CaseOpt::CaseInsensitive, {}, {}, {}, 0);
//
// Thread-safety: string operations and queries are safe from any thread.
// UseWordSort and assignment change the object and must not run while
// another thread reads it. Pools outlive every Collation.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "velcoredata/collation/CollationType.h"
#include "velcoredata/collation/CollatorRef.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class CollatorPool;

class VELCOREDATA_EXPORT Collation {
 public:
  // Options of the name builders; 0 is the default of each.
  enum class CaseOpt : int {
    CaseSensitive = 0,  // ICU's default for the locale
    CaseInsensitive = 1,
    UpperFirst = 2,
    LowerFirst = 3,
  };
  enum class AccentOpt : int { AccentSensitive = 0, AccentInsensitive = 1 };
  enum class SortOpt : int {
    Default = 0,
    WordSort = 1,
    Unsupported2 = 2,  // rejected by the builders
    Unsupported3 = 3,  // rejected by the builders
    Identical = 4,
  };
  enum class PunctOpt : int { Default = 0, IgnorePunctuation = 1, Quaternary = 2 };

  // The root ordering "LROOT", no character set.
  Collation();
  // The ordering `name` names; null (or empty) is "LROOT". "binary" in any
  // letter case is the code-unit ordering. Malformed names are logic errors;
  // a locale ICU cannot open raises ICUException.
  Collation(const char16_t* name);  // NOLINT: a name is a collation
  Collation(const char16_t* name, unsigned short charset);
  // The ordering of a Windows locale and Windows comparison flags (see
  // MakeCollatorName); LCID 1 is the binary ordering. Never word sort.
  Collation(unsigned lcid, unsigned cmpFlags, unsigned short charset);
  // The ordering of an ICU locale ("en_US" or "en-US") with options, named
  // by MakeICUCollatorName.
  Collation(std::string locale, bool ignoreDigits, CaseOpt caseOpt, AccentOpt accentOpt,
            SortOpt sortOpt, PunctOpt punctOpt, unsigned short charset);

  Collation(const Collation& other) noexcept;
  Collation& operator=(const Collation& other) noexcept;

  // String operations: each borrows the calling thread's collator (see
  // Collator.h for their contracts).
  int Compare(const char16_t* a, int lenA, const char16_t* b, int lenB) const;
  int Compare(const char16_t* a, const char16_t* b) const;
  int Search(const char16_t* text, const char16_t* pattern) const;
  int Search(const char16_t* text, const char16_t* pattern, int start, int* matchLength) const;
  void Replace(std::vector<char16_t>& out, const char16_t* text, const char16_t* pattern,
               const char16_t* replacement) const;
  bool StartsWith(const char16_t* text, const char16_t* prefix) const;
  bool EndsWith(const char16_t* text, const char16_t* suffix) const;
  void Lower(std::vector<char16_t>& out, const char16_t* text) const;
  void Upper(std::vector<char16_t>& out, const char16_t* text) const;
  void LTrim(std::vector<char16_t>& out, const char16_t* text) const;
  void RTrim(std::vector<char16_t>& out, const char16_t* text) const;
  void Trim(std::vector<char16_t>& out, const char16_t* text) const;
  uint32_t Hash(const char16_t* text) const;

  // What the pool says about the ordering.
  unsigned GetCmpFlags() const;
  bool HasWordSort() const;
  bool IsWindowsSpecific() const;
  bool IsCaseSensitive() const;
  // An ordering that ignores hyphens and apostrophes only approximates the
  // locale's: the same as HasWordSort().
  bool IsApproximation() const;
  const TString& GetLanguage() const;
  const TString& GetDisplayCountry() const;
  const TString& GetDisplayLanguage() const;
  // The pool's LCID.
  unsigned GetLocale() const;
  CollatorRef GetCollator() const;
  CollatorPool& GetPool() const noexcept { return *m_pool; }

  const TString& GetName() const noexcept { return m_name; }
  bool HasCharsetID() const noexcept { return m_charset != CollationType::s_unknownCharset; }
  unsigned short GetCharsetID() const noexcept { return m_charset; }

  // Switches word sort on or off: the name gains or loses "WO" and the
  // collation moves to that name's pool (keeping the comparison flags). No
  // change when the pool already answers `use`. Switching the binary
  // collation is a logic error.
  void UseWordSort(bool use);
  // A new collation from the pool's LCID and comparison flags; without the
  // Windows-specific bit unless keepWindowsVariant. Attributes the flags do
  // not express (word sort, case first, ...) are not carried over.
  Collation Clone(bool keepWindowsVariant) const;
  Collation CopyWithCharset(unsigned short charset) const;
  // "charset=0x<hex> <locale string> (<name>)", for diagnostics.
  TString GetDescription() const;

  // 1 for "binary" and "C"; otherwise the LCID ICU gives the locale, or
  // defaultLcid.
  static unsigned LCIDFromLocale(const TString& locale, unsigned defaultLcid);

  // Same character set and the same name (exact, case-sensitive).
  bool IsEqual(const Collation& other) const noexcept {
    return m_charset == other.m_charset && m_name == other.m_name;
  }
  // By character set, then by name.
  bool IsLess(const Collation& other) const noexcept;
  // Whether the two order texts the same way (see Collator::IsEquivalent).
  bool IsEquivalent(const Collation& other) const;
  // StringHash of the name, cached; the character set takes no part.
  uint32_t GetHashCode() const noexcept;

  friend bool operator==(const Collation& a, const Collation& b) noexcept { return a.IsEqual(b); }
  friend bool operator!=(const Collation& a, const Collation& b) noexcept { return !a.IsEqual(b); }
  friend bool operator<(const Collation& a, const Collation& b) noexcept { return a.IsLess(b); }

 private:
  TString m_name;
  unsigned short m_charset = CollationType::s_unknownCharset;
  // 0 until computed. Threads racing to fill it store the same value.
  mutable std::atomic<uint32_t> m_hashCode{0};
  CollatorPool* m_pool = nullptr;
};

// a.IsEquivalent(b).
VELCOREDATA_EXPORT bool Equivalent(const Collation& a, const Collation& b);

// Hashes a Collation by its cached hash code (for unordered containers).
struct CollationHashFunc {
  size_t operator()(const Collation& collation) const noexcept { return collation.GetHashCode(); }
};

// The process-wide root ("LROOT") and binary collations, created together on
// first use and never destroyed.
VELCOREDATA_EXPORT const Collation& GetUnknownCollation();
VELCOREDATA_EXPORT const Collation& GetBinaryCollation();
