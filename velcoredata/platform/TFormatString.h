// TFormatString: a message with numbered arguments %1, %2, ... %99.
//
// The k-th call of arg() supplies %k, wherever %k stands in the pattern and
// however often. A marker without an argument is left in the text as it is
// ("%3" stays "%3" when only two arguments were given); surplus arguments are
// ignored. "%" not followed by a digit 1-9 is an ordinary character.
//
//   TFormatString(u"Unable to create locale for LCID %1").arg(lcid).str()
#pragma once

#include <vector>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT TFormatString {
 public:
  explicit TFormatString(TString pattern);
  explicit TFormatString(const char16_t* pattern) : TFormatString(TString(pattern)) {}
  // The localised text of a message as the pattern.
  explicit TFormatString(CoreData::StringId message);

  TFormatString& arg(const TString& text);
  TFormatString& arg(const char16_t* text) { return arg(TString(text)); }
  // One character writes the character, as QString::arg(QChar) does; without
  // these overloads a char16_t would promote to int and print its code.
  TFormatString& arg(char16_t ch) { return arg(TString(1, ch)); }
  TFormatString& arg(char ch) { return arg(TString(1, static_cast<char16_t>(static_cast<unsigned char>(ch)))); }
  TFormatString& arg(int n, int base = 10) { return arg(TString::number(n, base)); }
  TFormatString& arg(unsigned int n, int base = 10) { return arg(TString::number(n, base)); }
  TFormatString& arg(long n, int base = 10) { return arg(TString::number(n, base)); }
  TFormatString& arg(unsigned long n, int base = 10) { return arg(TString::number(n, base)); }
  TFormatString& arg(long long n, int base = 10) { return arg(TString::number(n, base)); }
  TFormatString& arg(unsigned long long n, int base = 10) { return arg(TString::number(n, base)); }
  // Doubles in QString::number form ('g' with 6 significant digits by default).
  TFormatString& arg(double x, char format = 'g', int precision = 6) {
    return arg(TString::number(x, format, precision));
  }

  const TString& pattern() const noexcept { return m_pattern; }
  int argumentCount() const noexcept { return static_cast<int>(m_args.size()); }

  // The pattern with its markers replaced.
  TString str() const;
  operator TString() const { return str(); }  // NOLINT

 private:
  TString m_pattern;
  std::vector<TString> m_args;
};
