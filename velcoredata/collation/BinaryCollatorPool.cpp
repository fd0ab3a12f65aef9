#include "velcoredata/collation/BinaryCollatorPool.h"

#include "velcoredata/collation/CollationType.h"

CollatorPool::~CollatorPool() = default;

BinaryCollatorPool::BinaryCollatorPool()
    : CollatorPool(Family::Binary),
      m_name(CollationType::s_binary), m_language(u"binary"), m_localeString(u"BINARY") {}

BinaryCollatorPool& BinaryCollatorPool::Singleton() {
  static BinaryCollatorPool* const pool = new BinaryCollatorPool();
  return *pool;
}

Collator* BinaryCollatorPool::AcquireCollator() { return &m_collator; }
void BinaryCollatorPool::ReleaseCollator(Collator*) {}
const TString& BinaryCollatorPool::GetName() const { return m_name; }
bool BinaryCollatorPool::IsCaseSensitive() const { return true; }
const TString& BinaryCollatorPool::GetLanguage() const { return m_language; }
unsigned BinaryCollatorPool::GetLCID() const { return 1; }
const TString& BinaryCollatorPool::GetLocaleString() const { return m_localeString; }
const TString& BinaryCollatorPool::GetDisplayCountry() const { return m_empty; }
const TString& BinaryCollatorPool::GetDisplayLanguage() const { return m_empty; }
unsigned BinaryCollatorPool::GetCmpFlags() const { return 0; }
bool BinaryCollatorPool::HasWordSort() const { return false; }
bool BinaryCollatorPool::IsWindowsSpecific() const { return false; }
