// BinaryCollatorPool: the one pool of the "binary" ordering.
//
// Its single BinaryCollator is stateless and lent to every thread at once;
// releasing it does nothing. The pool describes itself as LCID 1, language
// "binary", locale "BINARY", case-sensitive, comparison flags 0.
#pragma once

#include "velcoredata/collation/BinaryCollator.h"
#include "velcoredata/collation/CollatorPool.h"

class VELCOREDATA_EXPORT BinaryCollatorPool final : public CollatorPool {
 public:
  // The process-wide pool: created on first call, never destroyed. Safe
  // from any thread.
  static BinaryCollatorPool& Singleton();

  Collator* AcquireCollator() override;
  void ReleaseCollator(Collator* collator) override;
  const TString& GetName() const override;
  bool IsCaseSensitive() const override;
  const TString& GetLanguage() const override;
  unsigned GetLCID() const override;
  const TString& GetLocaleString() const override;
  const TString& GetDisplayCountry() const override;
  const TString& GetDisplayLanguage() const override;
  unsigned GetCmpFlags() const override;
  bool HasWordSort() const override;
  bool IsWindowsSpecific() const override;

 private:
  BinaryCollatorPool();

  BinaryCollator m_collator;
  TString m_name;
  TString m_language;
  TString m_localeString;
  TString m_empty;
};
