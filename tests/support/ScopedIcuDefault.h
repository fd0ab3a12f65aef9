// Sets ICU's default locale (what the process environment gives the
// library) for one scope, and puts the previous one back.
#pragma once

#include <unicode/locid.h>

class ScopedIcuDefault {
 public:
  explicit ScopedIcuDefault(const char* name) : m_saved(icu::Locale::getDefault()) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale(name), status);
  }
  ~ScopedIcuDefault() {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(m_saved, status);
  }
  ScopedIcuDefault(const ScopedIcuDefault&) = delete;
  ScopedIcuDefault& operator=(const ScopedIcuDefault&) = delete;

 private:
  icu::Locale m_saved;
};
