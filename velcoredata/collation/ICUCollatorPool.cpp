#include "velcoredata/collation/ICUCollatorPool.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <atomic>

#include <oneapi/tbb/concurrent_unordered_map.h>

#include "velcoredata/collation/internal/CollatorNameParts.h"
#include "velcoredata/collation/internal/LeakCheckScope.h"
#include "velcoredata/collation/internal/ThreadCollators.h"
#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/platform/CoreThreadContext.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/THash.h"
#include "velcoredata/platform/TSystem.h"

using Attr = ICUCollator::Attr;
using VelICU::ICUColAttributeValue;

namespace {

struct KeyHash {
  size_t operator()(const ICUCollatorPool::Key& key) const noexcept {
    return THashCombine32(StringHash(key.first), key.second);
  }
};

// On the system allocator, so that leak checkers can follow it to the pools.
using Registry = tbb::concurrent_unordered_map<
    ICUCollatorPool::Key, std::shared_ptr<ICUCollatorPool>, KeyHash,
    std::equal_to<ICUCollatorPool::Key>,
    std::allocator<std::pair<const ICUCollatorPool::Key, std::shared_ptr<ICUCollatorPool>>>>;

// Never destroyed: threads that end during static destruction still run
// FreeOnThread over it.
Registry& GetRegistry() {
  static InitOnceValue<Registry> registry;
  return registry.Get([] {
    AddGlobalThreadExitFunc(&ICUCollatorFreeOnThread);
    return new Registry();
  });
}

std::atomic<uint64_t> g_nextPoolSerial{1};


TString TitleCase(const TString& code) {
  return code.left(1).toUpper() + code.mid(1).toLower();
}

// A display name of the locale in the process's display language.
using DisplayFunc = int32_t (*)(const char*, const char*, UChar*, int32_t, UErrorCode*);
TString DisplayName(DisplayFunc get, const std::string& locale, const TString& context) {
  constexpr int32_t kCapacity = 1024;
  UChar buffer[kCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = get(locale.c_str(), nullptr, buffer, kCapacity, &status);
  if (U_FAILURE(status)) CoreICUUtils::ThrowICUException(status, context);
  return TString(buffer, std::min(length, kCapacity));
}

}  // namespace

size_t ICUCollatorPool::ThreadCompare::hash(unsigned long long threadId) noexcept {
  uint64_t h = threadId * 0x9E3779B97F4A7C15ull;
  return static_cast<size_t>(h ^ (h >> 32));
}

// --- collator names to locales and attributes -----------------------------------

CollationSpec ICUCollatorPool::ParseName(const TString& name) {
  CollationSpec spec;
  TString language, region, script, variant;
  const std::vector<TString> parts = CollatorNameParts::Split(name);
  for (auto i = parts.begin(); i != parts.end(); ++i) {
    VEL_ASSERT(!i->isEmpty());
    const TString rest = i->mid(1);
    const char16_t key = (*i)[0];
    switch (key) {
      case u'L': language = rest.toLower(); break;
      case u'R': region = rest; break;
      case u'Z': script = TitleCase(rest); break;  // ICU reads "HANS" and "Hans" differently
      case u'V': variant = rest; break;
      case u'S': {
        VEL_ASSERT(i->length() == 2);
        ICUColAttributeValue strength = UCOL_IDENTICAL;
        if ((*i)[1] != TC('I')) {
          VEL_ASSERT((*i)[1] >= TC('1') && (*i)[1] <= TC('4'));
          strength = static_cast<ICUColAttributeValue>((*i)[1] - TC('1'));
        }
        spec.attributes.emplace_back(Attr::Strength, strength);
        break;
      }
      case u'W':
      case u'X':
        VEL_ASSERT(i->length() == 2);
        spec.attributes.emplace_back(key == u'W' ? Attr::WordSort : Attr::IgnoreDigits,
                                     (*i)[1] == TC('O') ? UCOL_ON : UCOL_OFF);
        break;
      default: {
        // Every other attribute letter the name builders write (A, C, E, F,
        // H, I, N) carries a value letter.
        const ICUCollator::AttrInfo* attr = ICUCollator::FindAttrByLetter(key);
        if (!attr) VEL_FAIL("Unhandled specifier");
        VEL_ASSERT(i->length() == 2);
        const ICUCollator::ValueInfo* value = ICUCollator::FindValueByLetter((*i)[1]);
        VEL_ASSERT(value != nullptr);
        spec.attributes.emplace_back(attr->attr, value->value);
        break;
      }
    }
  }

  // ICU's order: language_Script_REGION_VARIANT. A variant without a region
  // keeps the empty region ("en__WIN"), or ICU would read it as the region.
  TString locale = language;
  auto append = [&locale](const TString& part) {
    VEL_ASSERT(!locale.isEmpty());
    locale += u'_';
    locale += part;
  };
  if (!script.isEmpty()) append(script);
  if (!region.isEmpty()) append(region);
  if (!variant.isEmpty()) {
    if (region.isEmpty()) append(TString());
    append(variant);
  }
  spec.locale = locale.toUtf8();
  return spec;
}

// --- pools --------------------------------------------------------------------

ICUCollatorPool::ICUCollatorPool(Key key)
    : CollatorPool(Family::ICU),
      m_key(std::move(key)),
      m_spec(ParseName(m_key.first)),
      m_serial(g_nextPoolSerial.fetch_add(1, std::memory_order_relaxed)) {
  auto first = std::make_shared<ICUCollator>(this, m_key, m_spec);
  const std::string& locale = m_spec.locale;
  m_localeString = TString::fromUtf8(locale);

  m_lcid = uloc_getLCID(locale.c_str());
  if (m_lcid == 0) m_lcid = LanguageUtils::kUserDefaultLCID;
  const size_t windows = locale.find("_WIN");
  m_windowsSpecific = windows != std::string::npos && windows > 0 && locale.find('_') < windows;
  m_wordSort = std::find(m_spec.attributes.begin(), m_spec.attributes.end(),
                         std::make_pair(Attr(Attr::WordSort), UCOL_ON)) != m_spec.attributes.end();
  m_displayLanguage = DisplayName(&uloc_getDisplayLanguage, locale, m_key.first);
  m_displayCountry = DisplayName(&uloc_getDisplayCountry, locale, m_key.first);
  char language[11];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t languageLength = uloc_getLanguage(locale.c_str(), language, sizeof language, &status);
  if (status == U_STRING_NOT_TERMINATED_WARNING) status = U_BUFFER_OVERFLOW_ERROR;
  if (U_FAILURE(status)) CoreICUUtils::ThrowICUException(status, m_key.first);
  m_language = TString::fromLatin1(language, languageLength);

  ICUColAttributeValue strength = UCOL_DEFAULT, alternate = UCOL_DEFAULT;
  first->GetAttribute(UCOL_STRENGTH, strength);
  first->GetAttribute(UCOL_ALTERNATE_HANDLING, alternate);
  unsigned flags = 0;
  bool countShifted = true;
  switch (strength) {
    case UCOL_PRIMARY: flags = 3; break;    // ignore case | ignore non-spacing marks
    case UCOL_SECONDARY: flags = 1; break;  // ignore case
    case UCOL_TERTIARY: flags = 0; break;
    default: countShifted = false; break;   // quaternary and identical: no Windows flags
  }
  if (countShifted && alternate == UCOL_SHIFTED) flags |= 4;  // ignore symbols
  if (m_windowsSpecific) flags |= 0x80000000u;
  m_cmpFlags = flags;
  m_caseSensitive = strength > UCOL_SECONDARY;

  CollatorMap::accessor slot;
  m_collators.insert(slot, TSystem::ThreadID());
  slot->second = std::move(first);
}

ICUCollatorPool::~ICUCollatorPool() = default;

// Per-thread cache of each thread's collators, see ThreadCollators.h.
constinit thread_local ThreadCollators::Slot ThreadCollators::t_slots[ThreadCollators::kSlots] = {};

Collator* ICUCollatorPool::AcquireCollator() {
  if (ICUCollator* cached = ThreadCollators::Find(m_serial)) return cached;
  return AcquireCollatorSlow();
}

Collator* ICUCollatorPool::AcquireCollatorSlow() {
  const uint64_t threadId = TSystem::ThreadID();
  ICUCollator* collator = nullptr;
  {
    CollatorMap::const_accessor found;
    if (m_collators.find(found, threadId)) collator = static_cast<ICUCollator*>(found->second.get());
  }
  if (!collator) {
    auto created = std::make_shared<ICUCollator>(this, m_key, m_spec);
    collator = created.get();
    CollatorMap::accessor slot;
    m_collators.insert(slot, threadId);
    slot->second = std::move(created);
  }
  ThreadCollators::Remember(m_serial, collator);
  return collator;
}

// A thread keeps its collator until it ends: opening one is expensive.
void ICUCollatorPool::ReleaseCollator(Collator*) {}

const TString& ICUCollatorPool::GetName() const { return m_key.first; }
bool ICUCollatorPool::IsCaseSensitive() const { return m_caseSensitive; }
const TString& ICUCollatorPool::GetLanguage() const { return m_language; }
unsigned ICUCollatorPool::GetLCID() const { return m_lcid; }
const TString& ICUCollatorPool::GetLocaleString() const { return m_localeString; }
const TString& ICUCollatorPool::GetDisplayCountry() const { return m_displayCountry; }
const TString& ICUCollatorPool::GetDisplayLanguage() const { return m_displayLanguage; }
unsigned ICUCollatorPool::GetCmpFlags() const { return m_cmpFlags; }
bool ICUCollatorPool::HasWordSort() const { return m_wordSort; }
bool ICUCollatorPool::IsWindowsSpecific() const { return m_windowsSpecific; }

size_t ICUCollatorPool::GetThreadCollatorCount() const { return m_collators.size(); }

bool ICUCollatorPool::HasCollatorForThread(uint64_t threadId) const {
  CollatorMap::const_accessor found;
  return m_collators.find(found, threadId);
}

// --- the registry ---------------------------------------------------------------

ICUCollatorPool* ICUCollatorPool::Factory(const Key& key) {
  ICUCollator::Initialize();
  Registry& registry = GetRegistry();
  {
    const IgnoreLeaksScope registryLivesUntilExit;
    if (auto it = registry.find(key); it != registry.end()) return it->second.get();
  }
  // Built outside any lock; when another thread registered the key first,
  // its pool wins and this one is dropped.
  std::shared_ptr<ICUCollatorPool> pool(new ICUCollatorPool(key));
  const IgnoreLeaksScope registryLivesUntilExit;
  return registry.insert({key, std::move(pool)}).first->second.get();
}

ICUCollatorPool* ICUCollatorPool::Find(const Key& key) {
  Registry& registry = GetRegistry();
  const IgnoreLeaksScope registryLivesUntilExit;
  auto it = registry.find(key);
  return it == registry.end() ? nullptr : it->second.get();
}

size_t ICUCollatorPool::GetPoolCount() { return GetRegistry().size(); }

void ICUCollatorPool::FreeOnThread() {
  ThreadCollators::Clear();
  const uint64_t threadId = TSystem::ThreadID();
  for (auto& [key, pool] : GetRegistry()) {
    VEL_ASSERT(pool);
    pool->m_collators.erase(threadId);
  }
}

void ICUCollatorInitialize() { (void)GetRegistry(); }

void ICUCollatorFreeOnThread() { ICUCollatorPool::FreeOnThread(); }
