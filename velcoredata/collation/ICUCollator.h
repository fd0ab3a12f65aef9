// ICUCollator: a collator over an ICU collator opened for one collator name.
//
// A collator name (see CollatorName.h) selects a locale and a list of
// attributes: ICU's own collation attributes 0-7 plus two of ours, word sort
// (hyphens and apostrophes ignored) and ignore digits (decimal digits
// ignored), which are applied as tailoring rules.
//
// An ICUCollator belongs to one ICUCollatorPool and is used by one thread
// only; it keeps a sort-key buffer and a string-search object for reuse, so
// comparisons and hashes allocate nothing once warmed up. Construction (ICU
// open, attributes, rules) is expensive and happens once per pool and thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <unicode/usearch.h>

#include "velcoredata/collation/Collator.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelICU.h"

class ICUCollatorPool;
struct CollationSpec;

class VELCOREDATA_EXPORT ICUCollator final : public Collator {
 public:
  // The attribute numbers of collator names: ICU's numbering for 0-7 and two
  // of our own. 8 is unused. Wraps the number so that tables and lists can
  // carry it as a small value.
  struct Attr {
    enum Value : int {
      FrenchCollation = 0,
      AlternateHandling = 1,
      CaseFirst = 2,
      CaseLevel = 3,
      NormalizationMode = 4,
      Strength = 5,
      HiraganaQuaternaryMode = 6,
      NumericCollation = 7,
      WordSort = 9,
      IgnoreDigits = 10,
    };
    constexpr Attr(Value value) noexcept : enumVal(value) {}  // NOLINT: an Attr is its number
    constexpr explicit Attr(int value) noexcept : enumVal(static_cast<Value>(value)) {}
    constexpr explicit operator VelICU::ICUColAttribute() const noexcept {
      return static_cast<VelICU::ICUColAttribute>(enumVal);
    }
    friend constexpr bool operator==(Attr a, Attr b) noexcept { return a.enumVal == b.enumVal; }

    Value enumVal;
  };
  using AttrList = std::vector<std::pair<Attr, VelICU::ICUColAttributeValue>>;
  // A pool's identity: collator name and the comparison flags asked for.
  using Key = std::pair<TString, unsigned>;

  // One attribute of the name vocabulary: its key letter in names and the
  // value a name leaves out.
  struct AttrInfo {
    Attr attr = Attr(-1);
    char16_t letter = 0;
    VelICU::ICUColAttributeValue defaultValue = UCOL_DEFAULT;
  };
  // One attribute value and its letter in names.
  struct ValueInfo {
    VelICU::ICUColAttributeValue value;
    char16_t letter;
  };

  // Fills the attribute and value tables; idempotent and thread-safe. Every
  // accessor below calls it, so an explicit call only moves the work to
  // start-up.
  static void Initialize();
  // The table entry of an attribute. For a number without an entry (8,
  // negative, beyond 10) the entry's attr differs from the one asked for.
  static const AttrInfo& GetAttrInfo(Attr attr) noexcept;
  // The table entry of a value; for a value without a letter the entry's
  // value differs from the one asked for.
  static const ValueInfo& GetValueInfo(VelICU::ICUColAttributeValue value) noexcept;
  // The value written with `letter`, or null.
  static const ValueInfo* FindValueByLetter(char16_t letter) noexcept;
  // The attribute whose key letter is `letter`, or null.
  static const AttrInfo* FindAttrByLetter(char16_t letter) noexcept;

  // Opens the ICU collator for spec.locale and applies spec.attributes in
  // order; the locale "en_US_WIN" also sorts '#' just before '@'. Raises
  // ICUException (context: the collator name) when ICU fails.
  ICUCollator(ICUCollatorPool* pool, Key key, const CollationSpec& spec);
  ~ICUCollator() override;
  ICUCollator(const ICUCollator&) = delete;
  ICUCollator& operator=(const ICUCollator&) = delete;

  int Compare(const char16_t* a, const char16_t* b) const override;
  int Compare(const char16_t* a, int lenA, const char16_t* b, int lenB) const override;
  // Matches are collation-equal stretches of text found by ICU's string
  // search (on character boundaries, no overlaps).
  int Search(const char16_t* text, const char16_t* pattern) const override;
  int Search(const char16_t* text, const char16_t* pattern, int start,
             int* matchLength) const override;
  void Replace(std::vector<char16_t>& out, const char16_t* text, const char16_t* pattern,
               const char16_t* replacement) const override;
  // True when a match of prefix ends within the first prefix-length code
  // units and starts at 0; an empty prefix is always a prefix.
  bool StartsWith(const char16_t* text, const char16_t* prefix) const override;
  // True when the last match of suffix ends at the end of the text; an
  // empty suffix is always a suffix.
  bool EndsWith(const char16_t* text, const char16_t* suffix) const override;
  // Full Unicode case mapping in the collator's locale (the length may change).
  void Lower(std::vector<char16_t>& out, const char16_t* text) const override;
  void Upper(std::vector<char16_t>& out, const char16_t* text) const override;
  void LTrim(std::vector<char16_t>& out, const char16_t* text) const override;
  void RTrim(std::vector<char16_t>& out, const char16_t* text) const override;
  void Trim(std::vector<char16_t>& out, const char16_t* text) const override;
  // THash32 (seed 0xDEADBEEF) of the ICU sort key.
  uint32_t Hash(const char16_t* text) const override;
  // Same pool, or the same locale (the Windows variant of a locale counts as
  // that locale when either side is Windows-specific). Strength and the
  // other attributes are not compared: equivalence means "same language
  // family", which is what callers key caches on.
  bool IsEquivalent(const Collator& other) const override;

  // The pool key's collator name.
  virtual const TString& GetName() const;

  // Compare without the virtual call, for callers that know the collator.
  int CompareUnits(const char16_t* a, int lenA, const char16_t* b, int lenB) const {
    VEL_ASSERT(m_pUCollator);
    return ucol_strcoll(m_pUCollator, a ? a : u"", lenA, b ? b : u"", lenB);
  }

  // The ICU sort key of text[0, length) (length -1: null-terminated) written
  // to buffer; returns the key's full length in bytes, terminating 0
  // included. When that exceeds capacity the buffer holds a truncated key:
  // call again with a larger buffer.
  int GetSortKey(const char16_t* text, int length, uint8_t* buffer, int capacity) const;

  const std::string& GetLocale() const noexcept { return m_locale; }
  ICUCollatorPool* GetPool() const noexcept { return m_pool; }
  const Key& GetKey() const noexcept { return m_key; }

  // ICU attributes 0-7 of the underlying collator. ICU failures raise ICUException.
  void GetAttribute(VelICU::ICUColAttribute attr, VelICU::ICUColAttributeValue& value) const;
  void SetAttribute(VelICU::ICUColAttribute attr, VelICU::ICUColAttributeValue value);
  // A name attribute: 9 and 10 switch their tailoring on (only the value
  // UCOL_ON does anything), 0-7 go to ICU, anything else is a logic error.
  void SetAttribute(Attr attr, VelICU::ICUColAttributeValue value);
  // Re-opens the collator from its current rules followed by `rules`
  // (`length` code units, which may include U+0000), keeping attributes 0-7.
  void AddRules(const char16_t* rules, int length);
  // Hyphens and apostrophes become ignorable.
  void SetWordSort();
  // Decimal digits of every script become ignorable.
  void SetIgnoreDigits();

  // The LCID ICU gives the locale ("-" read as "_"), or defaultLcid when it has none.
  static unsigned LCIDFromLocale(std::string locale, unsigned defaultLcid);
  // The pool key of a Windows locale: (MakeCollatorName(lcid, cmpFlags,
  // wordSort), cmpFlags), where word sort is on unless sortFlags has 0x1000
  // (string sort).
  static Key GetID(unsigned lcid, unsigned cmpFlags, unsigned sortFlags);
  // `name` with one attribute set (or removed, for -1 and the default).
  // Calling it on the binary name is a logic error.
  static TString AddAttrToName(const char16_t* name, Attr attr, VelICU::ICUColAttributeValue value);
  // `name` with the word-sort part "WO" added or removed.
  static TString SetWordSort(const char16_t* name, bool on);

 private:
  struct SearchCloser {
    void operator()(UStringSearch* search) const noexcept;
  };

  // Points the cached search at text and pattern (both non-empty); null
  // when ICU cannot search them.
  UStringSearch* OpenSearch(const char16_t* text, int textLength, const char16_t* pattern,
                            int patternLength) const;
  [[noreturn]] void ThrowICU(UErrorCode status) const;
  void Close() noexcept;

  ICUCollatorPool* m_pool;
  Key m_key;
  std::string m_locale;
  UCollator* m_pUCollator = nullptr;
  mutable std::vector<uint8_t> m_sortKey;
  mutable std::unique_ptr<UStringSearch, SearchCloser> m_search;
  mutable std::u16string m_searchPattern;
};
