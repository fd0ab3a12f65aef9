// Text encodings of enumerations.
//
// An EnumEncodingTable maps each value of an enumeration to its text, ordered
// by value, with a default value for decoding. Encoding a value that the table
// does not hold raises the enumeration-encoding exception
// (XMLEnumEncodingException, error 0x3E0C1A75); decoding an unknown text
// yields the default.
//
// Tables are immutable after construction and may be read from any thread;
// build them once (a function-local static).
#pragma once

#include <initializer_list>
#include <map>

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelmoraException.h"

class VELCOREDATA_EXPORT XMLEnumEncodingException : public VelmoraException {
 public:
  XMLEnumEncodingException(const char* enumName, long long value);
  std::unique_ptr<VelmoraException> Clone() const override;
  [[noreturn]] void Throw() const override;
};

namespace Implementation {
// Raises XMLEnumEncodingException for `value` of the enumeration `enumName`.
[[noreturn]] VELCOREDATA_EXPORT void ThrowXMLEnumEncodingException(const char* enumName, long long value);
}  // namespace Implementation

template <class E>
class EnumEncodingTable {
 public:
  struct Entry {
    E value;
    const char16_t* text;
  };

  EnumEncodingTable(const char* enumName, std::initializer_list<Entry> entries, E defaultValue)
      : m_enumName(enumName), m_default(defaultValue) {
    for (const Entry& e : entries) m_entries.emplace(e.value, TString(e.text));
  }

  const TString& Encode(E value) const {
    auto it = m_entries.find(value);
    if (it == m_entries.end()) {
      Implementation::ThrowXMLEnumEncodingException(m_enumName, static_cast<long long>(value));
    }
    return it->second;
  }

  bool Contains(E value) const { return m_entries.count(value) != 0; }

  bool TryDecode(const TString& text, E& out) const {
    for (const auto& [value, encoded] : m_entries) {
      if (encoded == text) {
        out = value;
        return true;
      }
    }
    return false;
  }

  E Decode(const TString& text) const {
    E out = m_default;
    TryDecode(text, out);
    return out;
  }

  E GetDefault() const noexcept { return m_default; }
  const std::map<E, TString>& Entries() const noexcept { return m_entries; }

 private:
  const char* m_enumName;
  E m_default;
  std::map<E, TString> m_entries;
};
