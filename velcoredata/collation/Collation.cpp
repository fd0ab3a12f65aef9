#include "velcoredata/collation/Collation.h"

#include <algorithm>

#include "velcoredata/collation/BinaryCollatorPool.h"
#include "velcoredata/collation/CollatorName.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/collation/internal/CollatorNameParts.h"
#include "velcoredata/collation/internal/ThreadCollators.h"

Collation::Collation() : Collation(static_cast<const char16_t*>(nullptr)) {}

Collation::Collation(const char16_t* name) : Collation(name, CollationType::s_unknownCharset) {}

Collation::Collation(const char16_t* name, unsigned short charset)
    : m_charset(charset), m_pool(::GetPool(name, 0)) {
  m_name = m_pool->GetName();
}

Collation::Collation(unsigned lcid, unsigned cmpFlags, unsigned short charset) : m_charset(charset) {
  if (lcid == 1) {
    m_pool = &BinaryCollatorPool::Singleton();
  } else {
    // 0x1000 asks for string sort, i.e. no word sort.
    m_pool = ICUCollatorPool::Factory(ICUCollator::GetID(lcid, cmpFlags, 0x1000));
  }
  m_name = m_pool->GetName();
}

Collation::Collation(std::string locale, bool ignoreDigits, CaseOpt caseOpt, AccentOpt accentOpt,
                     SortOpt sortOpt, PunctOpt punctOpt, unsigned short charset)
    : m_name(MakeICUCollatorName(CollatorNameParts::Underscored(std::move(locale)), ignoreDigits,
                                 caseOpt, accentOpt, sortOpt, punctOpt)),
      m_charset(charset),
      m_pool(::GetPool(m_name.c_str(), 0)) {}

Collation::Collation(const Collation& other) noexcept
    : m_name(other.m_name),
      m_charset(other.m_charset),
      m_hashCode(other.m_hashCode.load(std::memory_order_relaxed)),
      m_pool(other.m_pool) {}

Collation& Collation::operator=(const Collation& other) noexcept {
  m_name = other.m_name;
  m_charset = other.m_charset;
  m_hashCode.store(other.m_hashCode.load(std::memory_order_relaxed), std::memory_order_relaxed);
  m_pool = other.m_pool;
  return *this;
}

// --- string operations --------------------------------------------------------

namespace {

[[gnu::noinline]] int CompareThroughPool(CollatorPool& pool, const char16_t* a, int lenA,
                                         const char16_t* b, int lenB) {
  return CollatorRef(pool)->Compare(a, lenA, b, lenB);
}

}  // namespace

int Collation::Compare(const char16_t* a, int lenA, const char16_t* b, int lenB) const {
  // The hottest call of the library: when the thread already holds its
  // collator of an ICU pool, skip the three virtual calls of a CollatorRef
  // (acquire, compare, a release that does nothing for ICU pools).
  if (const ICUCollator* collator = ThreadCollators::FindFor(*m_pool)) [[likely]] {
    return collator->CompareUnits(a, lenA, b, lenB);
  }
  if (m_pool->GetFamily() == CollatorPool::Family::Binary && a && b) {
    return BinaryCollator::CompareUnits(a, lenA, b, lenB);
  }
  return CompareThroughPool(*m_pool, a, lenA, b, lenB);
}

int Collation::Compare(const char16_t* a, const char16_t* b) const {
  return CollatorRef(*m_pool)->Compare(a, b);
}

int Collation::Search(const char16_t* text, const char16_t* pattern) const {
  return CollatorRef(*m_pool)->Search(text, pattern);
}

int Collation::Search(const char16_t* text, const char16_t* pattern, int start,
                      int* matchLength) const {
  return CollatorRef(*m_pool)->Search(text, pattern, start, matchLength);
}

void Collation::Replace(std::vector<char16_t>& out, const char16_t* text, const char16_t* pattern,
                        const char16_t* replacement) const {
  CollatorRef(*m_pool)->Replace(out, text, pattern, replacement);
}

bool Collation::StartsWith(const char16_t* text, const char16_t* prefix) const {
  return CollatorRef(*m_pool)->StartsWith(text, prefix);
}

bool Collation::EndsWith(const char16_t* text, const char16_t* suffix) const {
  return CollatorRef(*m_pool)->EndsWith(text, suffix);
}

void Collation::Lower(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorRef(*m_pool)->Lower(out, text);
}

void Collation::Upper(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorRef(*m_pool)->Upper(out, text);
}

void Collation::LTrim(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorRef(*m_pool)->LTrim(out, text);
}

void Collation::RTrim(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorRef(*m_pool)->RTrim(out, text);
}

void Collation::Trim(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorRef(*m_pool)->Trim(out, text);
}

uint32_t Collation::Hash(const char16_t* text) const { return CollatorRef(*m_pool)->Hash(text); }

// --- queries ------------------------------------------------------------------

unsigned Collation::GetCmpFlags() const { return m_pool->GetCmpFlags(); }
bool Collation::HasWordSort() const { return m_pool->HasWordSort(); }
bool Collation::IsWindowsSpecific() const { return m_pool->IsWindowsSpecific(); }
bool Collation::IsCaseSensitive() const { return m_pool->IsCaseSensitive(); }
bool Collation::IsApproximation() const { return m_pool->HasWordSort(); }
const TString& Collation::GetLanguage() const { return m_pool->GetLanguage(); }
const TString& Collation::GetDisplayCountry() const { return m_pool->GetDisplayCountry(); }
const TString& Collation::GetDisplayLanguage() const { return m_pool->GetDisplayLanguage(); }
unsigned Collation::GetLocale() const { return m_pool->GetLCID(); }
CollatorRef Collation::GetCollator() const { return CollatorRef(*m_pool); }

// --- variants -----------------------------------------------------------------

void Collation::UseWordSort(bool use) {
  if (m_pool->HasWordSort() == use) return;
  m_hashCode.store(0, std::memory_order_relaxed);
  const TString name = ICUCollator::SetWordSort(m_name.c_str(), use);
  m_pool = ::GetPool(name.c_str(), m_pool->GetCmpFlags());
  m_name = m_pool->GetName();
}

Collation Collation::Clone(bool keepWindowsVariant) const {
  const unsigned flags = keepWindowsVariant ? m_pool->GetCmpFlags() : (m_pool->GetCmpFlags() & 0x7FFFFFFFu);
  return Collation(m_pool->GetLCID(), flags, m_charset);
}

Collation Collation::CopyWithCharset(unsigned short charset) const {
  Collation copy(*this);
  copy.m_charset = charset;
  return copy;
}

TString Collation::GetDescription() const {
  return TString(u"charset=0x") + TString::number(static_cast<unsigned>(m_charset), 16) + u" " +
         m_pool->GetLocaleString() + u" (" + m_name + u")";
}

unsigned Collation::LCIDFromLocale(const TString& locale, unsigned defaultLcid) {
  if (locale == CollationType::s_binary || locale == u"C") return 1;
  return ICUCollator::LCIDFromLocale(locale.toUtf8(), defaultLcid);
}

// --- equality, order, hash ----------------------------------------------------

bool Collation::IsLess(const Collation& other) const noexcept {
  if (m_charset != other.m_charset) return m_charset < other.m_charset;
  return m_name < other.m_name;
}

bool Collation::IsEquivalent(const Collation& other) const {
  if (m_pool == other.m_pool) return true;
  CollatorRef mine(*m_pool);
  CollatorRef theirs(*other.m_pool);
  return mine->IsEquivalent(*theirs);
}

uint32_t Collation::GetHashCode() const noexcept {
  uint32_t hash = m_hashCode.load(std::memory_order_relaxed);
  if (hash == 0) {
    hash = StringHash(m_name);
    m_hashCode.store(hash, std::memory_order_relaxed);
  }
  return hash;
}

bool Equivalent(const Collation& a, const Collation& b) { return a.IsEquivalent(b); }

namespace {

struct StandardCollations {
  Collation unknown;
  Collation binary{CollationType::s_binary};
};

const StandardCollations& GetStandardCollations() {
  static const StandardCollations* const collations = new StandardCollations();
  return *collations;
}

}  // namespace

const Collation& GetUnknownCollation() { return GetStandardCollations().unknown; }
const Collation& GetBinaryCollation() { return GetStandardCollations().binary; }
