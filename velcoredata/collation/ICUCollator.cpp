#include "velcoredata/collation/ICUCollator.h"

#include <unicode/uchar.h>
#include <unicode/uloc.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>

#include "velcoredata/collation/CollationType.h"
#include "velcoredata/collation/CollatorName.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/collation/internal/CollatorNameParts.h"
#include "velcoredata/collation/internal/CollatorText.h"
#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/THash.h"

using CollatorText::Length;
using CollatorText::Text;
using VelICU::ICUColAttribute;
using VelICU::ICUColAttributeValue;

// --- the name vocabulary ------------------------------------------------------

namespace {

constexpr int kAttrCount = 11;        // numbers 0-10
constexpr int kValueCount = 27;       // values -1 .. 25, indexed by value + 1
// The attr and value of a table slot without an entry. Values stay inside
// the range of ICU's value enumeration.
constexpr int kNoAttr = INT_MIN;
constexpr int kNoValue = 30;

struct Tables {
  // Two "no entry" answers, so that a lookup of kNoAttr/kNoValue still gets
  // an entry that differs from what it asked for.
  ICUCollator::AttrInfo noAttr[2] = {{ICUCollator::Attr(kNoAttr), 0, UCOL_DEFAULT},
                                     {ICUCollator::Attr(kNoAttr + 1), 0, UCOL_DEFAULT}};
  ICUCollator::ValueInfo noValue[2] = {{static_cast<ICUColAttributeValue>(kNoValue), 0},
                                       {static_cast<ICUColAttributeValue>(kNoValue + 1), 0}};
  std::array<ICUCollator::AttrInfo, kAttrCount> attrs;
  std::array<ICUCollator::ValueInfo, kValueCount> values;

  Tables() {
    attrs.fill(noAttr[0]);
    values.fill(noValue[0]);
    using A = ICUCollator::Attr;
    const ICUCollator::AttrInfo attrList[] = {
        {A::FrenchCollation, u'F', UCOL_DEFAULT},  {A::AlternateHandling, u'A', UCOL_DEFAULT},
        {A::CaseFirst, u'C', UCOL_DEFAULT},        {A::CaseLevel, u'E', UCOL_DEFAULT},
        {A::NormalizationMode, u'N', UCOL_DEFAULT}, {A::Strength, u'S', UCOL_TERTIARY},
        {A::HiraganaQuaternaryMode, u'H', UCOL_DEFAULT}, {A::NumericCollation, u'I', UCOL_DEFAULT},
        {A::WordSort, u'W', UCOL_OFF},             {A::IgnoreDigits, u'X', UCOL_OFF},
    };
    for (const auto& a : attrList) attrs[a.attr.enumVal] = a;
    const ICUCollator::ValueInfo valueList[] = {
        {UCOL_DEFAULT, u'D'},   {UCOL_PRIMARY, u'1'},     {UCOL_SECONDARY, u'2'},
        {UCOL_TERTIARY, u'3'},  {UCOL_QUATERNARY, u'4'},  {UCOL_IDENTICAL, u'I'},
        {UCOL_OFF, u'X'},       {UCOL_ON, u'O'},          {UCOL_SHIFTED, u'S'},
        {UCOL_NON_IGNORABLE, u'N'}, {UCOL_LOWER_FIRST, u'L'}, {UCOL_UPPER_FIRST, u'U'},
    };
    for (const auto& v : valueList) values[v.value + 1] = v;
  }
};

const Tables& GetTables() {
  static InitOnceValue<Tables> tables;
  return tables.Get();
}

}  // namespace

void ICUCollator::Initialize() { (void)GetTables(); }

const ICUCollator::AttrInfo& ICUCollator::GetAttrInfo(Attr attr) noexcept {
  const Tables& t = GetTables();
  const int i = attr.enumVal;
  if (i >= 0 && i < kAttrCount) return t.attrs[i];
  return t.noAttr[i == kNoAttr ? 1 : 0];
}

const ICUCollator::ValueInfo& ICUCollator::GetValueInfo(ICUColAttributeValue value) noexcept {
  const Tables& t = GetTables();
  const int i = static_cast<int>(value) + 1;
  if (i >= 0 && i < kValueCount) return t.values[i];
  return t.noValue[value == static_cast<ICUColAttributeValue>(kNoValue) ? 1 : 0];
}

const ICUCollator::ValueInfo* ICUCollator::FindValueByLetter(char16_t letter) noexcept {
  if (letter == 0) return nullptr;
  for (const ValueInfo& v : GetTables().values) {
    if (v.letter == letter) return &v;
  }
  return nullptr;
}

const ICUCollator::AttrInfo* ICUCollator::FindAttrByLetter(char16_t letter) noexcept {
  if (letter == 0) return nullptr;
  for (const AttrInfo& a : GetTables().attrs) {
    if (a.letter == letter) return &a;
  }
  return nullptr;
}

// --- names --------------------------------------------------------------------

unsigned ICUCollator::LCIDFromLocale(std::string locale, unsigned defaultLcid) {
  locale = CollatorNameParts::Underscored(std::move(locale));
  const unsigned lcid = uloc_getLCID(locale.c_str());
  return lcid != 0 ? lcid : defaultLcid;
}

ICUCollator::Key ICUCollator::GetID(unsigned lcid, unsigned cmpFlags, unsigned sortFlags) {
  return {MakeCollatorName(lcid, cmpFlags, (sortFlags & 0x1000) == 0), cmpFlags};
}

TString ICUCollator::AddAttrToName(const char16_t* name, Attr attr, ICUColAttributeValue value) {
  VEL_ASSERT_IN("ICUCollator",
                TString(name).compare(CollationType::s_binary, TString::CaseInsensitive) != 0);
  std::vector<TString> parts = CollatorNameParts::Split(name);
  CollatorNamePartsFromAttributes({{attr, value}}, parts);
  return CollatorNameParts::Join(parts);
}

TString ICUCollator::SetWordSort(const char16_t* name, bool on) {
  return AddAttrToName(name, Attr::WordSort, on ? UCOL_ON : UCOL_OFF);
}

// --- construction and rules ---------------------------------------------------

namespace {

// The apostrophe and the hyphen made equal to U+0000, which is ignorable.
// ICU's rule parser takes the U+0000 only as a real code unit, not as an
// escape, hence the explicit array and length.
constexpr char16_t kWordSortRule[] = {u'&', 0, u'=', u'\'', u'\'', u'=', u'\'', u'-', u'\''};
constexpr int kWordSortRuleLength = static_cast<int>(sizeof kWordSortRule / sizeof kWordSortRule[0]);

// The Windows variant of US English sorts '#' immediately before '@'.
constexpr char16_t kWindowsUsRule[] = u"&'#'<'@'";
constexpr int kWindowsUsRuleLength = 8;

struct UCollatorCloser {
  void operator()(UCollator* collator) const noexcept { ucol_close(collator); }
};
using UCollatorPtr = std::unique_ptr<UCollator, UCollatorCloser>;

}  // namespace

void ICUCollator::SearchCloser::operator()(UStringSearch* search) const noexcept {
  usearch_close(search);
}

ICUCollator::ICUCollator(ICUCollatorPool* pool, Key key, const CollationSpec& spec)
    : m_pool(pool), m_key(std::move(key)), m_locale(spec.locale), m_sortKey(128) {
  UErrorCode status = U_ZERO_ERROR;
  m_pUCollator = ucol_open(m_locale.c_str(), &status);
  if (U_FAILURE(status)) {
    Close();
    ThrowICU(status);
  }
  try {
    for (const auto& [attr, value] : spec.attributes) SetAttribute(attr, value);
    if (m_locale == "en_US_WIN") AddRules(kWindowsUsRule, kWindowsUsRuleLength);
  } catch (...) {
    Close();
    throw;
  }
}

ICUCollator::~ICUCollator() { Close(); }

void ICUCollator::Close() noexcept {
  m_search.reset();  // the search refers to the collator
  if (m_pUCollator) ucol_close(m_pUCollator);
  m_pUCollator = nullptr;
}

void ICUCollator::ThrowICU(UErrorCode status) const { CoreICUUtils::ThrowICUException(status, m_key.first); }

const TString& ICUCollator::GetName() const { return m_key.first; }

void ICUCollator::GetAttribute(ICUColAttribute attr, ICUColAttributeValue& value) const {
  VEL_ASSERT(m_pUCollator);
  UErrorCode status = U_ZERO_ERROR;
  value = ucol_getAttribute(m_pUCollator, attr, &status);
  if (U_FAILURE(status)) ThrowICU(status);
}

void ICUCollator::SetAttribute(ICUColAttribute attr, ICUColAttributeValue value) {
  VEL_ASSERT(m_pUCollator);
  UErrorCode status = U_ZERO_ERROR;
  ucol_setAttribute(m_pUCollator, attr, value, &status);
  if (U_FAILURE(status)) ThrowICU(status);
}

void ICUCollator::SetAttribute(Attr attr, ICUColAttributeValue value) {
  switch (attr.enumVal) {
    case Attr::IgnoreDigits:
      if (value == UCOL_ON) SetIgnoreDigits();
      return;
    case Attr::WordSort:
      if (value == UCOL_ON) SetWordSort();
      return;
    default:
      VEL_ASSERT(static_cast<VelICU::ICUColAttribute>(attr) < VelICU::UCOL_ATTRIBUTE_COUNT);
      SetAttribute(static_cast<VelICU::ICUColAttribute>(attr), value);
  }
}

void ICUCollator::AddRules(const char16_t* rules, int length) {
  VEL_ASSERT(m_pUCollator);
  int32_t currentLength = 0;
  const UChar* current = ucol_getRules(m_pUCollator, &currentLength);
  std::u16string combined(current, static_cast<size_t>(currentLength));
  combined.append(Text(rules), static_cast<size_t>(std::max(length, 0)));

  UParseError parseError{};
  UErrorCode status = U_ZERO_ERROR;
  UCollatorPtr replacement(ucol_openRules(combined.data(), static_cast<int32_t>(combined.size()),
                                          UCOL_DEFAULT, UCOL_DEFAULT_STRENGTH, &parseError, &status));
  if (U_FAILURE(status)) ThrowICU(status);

  // Rules rebuild the collator from scratch; carry the attributes over.
  std::array<ICUColAttributeValue, 8> values{};
  for (int a = 0; a < 8; ++a) GetAttribute(static_cast<ICUColAttribute>(a), values[a]);
  m_search.reset();
  UCollatorPtr previous(std::exchange(m_pUCollator, replacement.release()));
  for (int a = 0; a < 8; ++a) SetAttribute(static_cast<ICUColAttribute>(a), values[a]);
}

void ICUCollator::SetWordSort() { AddRules(kWordSortRule, kWordSortRuleLength); }

void ICUCollator::SetIgnoreDigits() {
  const TString& rule = VelICU::getIgnoreDigitsRule();
  AddRules(rule.data(), rule.size());
}

// --- comparison and hashing ---------------------------------------------------

int ICUCollator::Compare(const char16_t* a, const char16_t* b) const {
  VEL_ASSERT(m_pUCollator);
  return ucol_strcoll(m_pUCollator, Text(a), -1, Text(b), -1);
}

int ICUCollator::Compare(const char16_t* a, int lenA, const char16_t* b, int lenB) const {
  return CompareUnits(a, lenA, b, lenB);
}

int ICUCollator::GetSortKey(const char16_t* text, int length, uint8_t* buffer, int capacity) const {
  VEL_ASSERT(m_pUCollator);
  return ucol_getSortKey(m_pUCollator, Text(text), length, buffer, capacity);
}

uint32_t ICUCollator::Hash(const char16_t* text) const {
  VEL_ASSERT(m_pUCollator);
  text = Text(text);
  int length = ucol_getSortKey(m_pUCollator, text, -1, m_sortKey.data(),
                               static_cast<int32_t>(m_sortKey.size()));
  if (length > static_cast<int>(m_sortKey.size())) {
    m_sortKey.resize(static_cast<size_t>(length) * 2);
    length = ucol_getSortKey(m_pUCollator, text, -1, m_sortKey.data(),
                             static_cast<int32_t>(m_sortKey.size()));
  }
  return THash32(m_sortKey.data(), static_cast<size_t>(length), 0xDEADBEEF);
}

bool ICUCollator::IsEquivalent(const Collator& other) const {
  const auto* icu = dynamic_cast<const ICUCollator*>(&other);
  if (!icu) return false;
  if (icu->m_pool == m_pool || icu->m_locale == m_locale) return true;
  const bool windows = (m_pool && m_pool->IsWindowsSpecific()) ||
                       (icu->m_pool && icu->m_pool->IsWindowsSpecific());
  if (!windows) return false;
  // "en_US_WIN" and "en__WIN" are "en_US" and "en" with the variant.
  auto withoutVariant = [](std::string_view locale) {
    if (locale.ends_with("_WIN")) locale.remove_suffix(4);
    while (locale.ends_with('_')) locale.remove_suffix(1);
    return locale;
  };
  return withoutVariant(m_locale) == withoutVariant(icu->m_locale);
}

// --- searching ----------------------------------------------------------------

UStringSearch* ICUCollator::OpenSearch(const char16_t* text, int textLength,
                                       const char16_t* pattern, int patternLength) const {
  VEL_ASSERT(m_pUCollator);
  UErrorCode status = U_ZERO_ERROR;
  const std::u16string_view wanted(pattern, static_cast<size_t>(patternLength));
  if (!m_search) {
    // ICU keeps pointers to the pattern and the text: the pattern lives in
    // m_searchPattern, the text is re-set on every use.
    m_searchPattern.assign(wanted);
    m_search.reset(usearch_openFromCollator(m_searchPattern.data(), patternLength, text, textLength,
                                            m_pUCollator, nullptr, &status));
    if (U_FAILURE(status)) {
      m_search.reset();
      ThrowICU(status);
    }
    return m_search.get();
  }
  if (m_searchPattern != wanted) {
    m_searchPattern.assign(wanted);
    usearch_setPattern(m_search.get(), m_searchPattern.data(), patternLength, &status);
  }
  usearch_setText(m_search.get(), text, textLength, &status);
  if (U_FAILURE(status)) ThrowICU(status);
  return m_search.get();
}

int ICUCollator::Search(const char16_t* text, const char16_t* pattern) const {
  return Search(text, pattern, 0, nullptr);
}

int ICUCollator::Search(const char16_t* text, const char16_t* pattern, int start,
                        int* matchLength) const {
  VEL_ASSERT(m_pUCollator);
  const int textLength = Length(text), patternLength = Length(pattern);
  if (patternLength == 0 || textLength == 0 || start >= textLength) return -1;
  UStringSearch* search = OpenSearch(text, textLength, pattern, patternLength);
  UErrorCode status = U_ZERO_ERROR;
  const int found = usearch_following(search, std::max(start, 0), &status);
  if (U_FAILURE(status)) ThrowICU(status);
  if (found == USEARCH_DONE) return -1;
  if (matchLength) *matchLength = usearch_getMatchedLength(search);
  return found;
}

void ICUCollator::Replace(std::vector<char16_t>& out, const char16_t* text, const char16_t* pattern,
                          const char16_t* replacement) const {
  VEL_ASSERT(m_pUCollator);
  text = Text(text);
  const int textLength = Length(text), patternLength = Length(pattern);
  const std::u16string_view with(Text(replacement));
  out.clear();
  int from = 0;
  if (patternLength > 0 && textLength > 0) {
    UStringSearch* search = OpenSearch(text, textLength, pattern, patternLength);
    UErrorCode status = U_ZERO_ERROR;
    for (int at = usearch_first(search, &status); U_SUCCESS(status) && at != USEARCH_DONE;
         at = usearch_next(search, &status)) {
      out.insert(out.end(), text + from, text + at);
      out.insert(out.end(), with.begin(), with.end());
      from = at + usearch_getMatchedLength(search);
    }
    if (U_FAILURE(status)) ThrowICU(status);
  }
  out.insert(out.end(), text + from, text + textLength);
  out.push_back(0);
}

bool ICUCollator::StartsWith(const char16_t* text, const char16_t* prefix) const {
  VEL_ASSERT(m_pUCollator);
  if (!text || !prefix) return false;
  const int textLength = Length(text), prefixLength = Length(prefix);
  if (prefixLength == 0) return true;
  if (textLength == 0 || textLength < prefixLength) return false;
  UStringSearch* search = OpenSearch(text, textLength, prefix, prefixLength);
  UErrorCode status = U_ZERO_ERROR;
  const int found = usearch_preceding(search, prefixLength, &status);
  return U_SUCCESS(status) && found == 0;
}

bool ICUCollator::EndsWith(const char16_t* text, const char16_t* suffix) const {
  VEL_ASSERT(m_pUCollator);
  if (!text || !suffix) return false;
  const int textLength = Length(text), suffixLength = Length(suffix);
  if (suffixLength == 0) return true;
  if (textLength == 0 || textLength < suffixLength) return false;
  UStringSearch* search = OpenSearch(text, textLength, suffix, suffixLength);
  UErrorCode status = U_ZERO_ERROR;
  const int found = usearch_last(search, &status);
  return U_SUCCESS(status) && found != USEARCH_DONE &&
         found + usearch_getMatchedLength(search) == textLength;
}

// --- case and white space -----------------------------------------------------

namespace {

using CaseMap = int32_t (*)(UChar*, int32_t, const UChar*, int32_t, const char*, UErrorCode*);

void MapCase(CaseMap map, std::vector<char16_t>& out, const char16_t* text, const char* locale,
             const TString& context) {
  const int length = Length(text);
  out.resize(static_cast<size_t>(length) + 1);
  UErrorCode status = U_ZERO_ERROR;
  int32_t written = map(out.data(), static_cast<int32_t>(out.size()), Text(text), length, locale, &status);
  if (status == U_BUFFER_OVERFLOW_ERROR || written >= static_cast<int32_t>(out.size())) {
    out.resize(static_cast<size_t>(written) + 1);
    status = U_ZERO_ERROR;
    written = map(out.data(), static_cast<int32_t>(out.size()), Text(text), length, locale, &status);
  }
  if (U_FAILURE(status)) CoreICUUtils::ThrowICUException(status, context);
  out.resize(static_cast<size_t>(written) + 1);
  out.back() = 0;
}

bool IsWhitespace(char16_t c) { return u_isWhitespace(c) != 0; }

}  // namespace

void ICUCollator::Lower(std::vector<char16_t>& out, const char16_t* text) const {
  VEL_ASSERT(m_pUCollator);
  MapCase(&u_strToLower, out, text, m_locale.c_str(), m_key.first);
}

void ICUCollator::Upper(std::vector<char16_t>& out, const char16_t* text) const {
  VEL_ASSERT(m_pUCollator);
  MapCase(&u_strToUpper, out, text, m_locale.c_str(), m_key.first);
}

void ICUCollator::LTrim(std::vector<char16_t>& out, const char16_t* text) const {
  VEL_ASSERT(m_pUCollator);
  CollatorText::TrimInto(out, text, true, false, IsWhitespace);
}

void ICUCollator::RTrim(std::vector<char16_t>& out, const char16_t* text) const {
  VEL_ASSERT(m_pUCollator);
  CollatorText::TrimInto(out, text, false, true, IsWhitespace);
}

void ICUCollator::Trim(std::vector<char16_t>& out, const char16_t* text) const {
  VEL_ASSERT(m_pUCollator);
  CollatorText::TrimInto(out, text, true, true, IsWhitespace);
}
