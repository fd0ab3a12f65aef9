// VersionNumber: a dotted version such as 2021.4.3 with optional descriptor
// texts ("beta", "Build"), compared numerically.
//
// Comparison looks at the numbers only, most significant first, and trailing
// zero components do not count: 1.2 == 1.2.0.0 and 1.2 < 1.2.0.1.
// Descriptors and the text form take no part in it.
//
// Thread-safety: a plain value.
#pragma once

#include <vector>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT VersionNumber {
 public:
  // No components, no descriptors, an empty text form.
  VersionNumber() = default;
  // The components in the given order; the text form is "major.minor.patch"
  // ("major.minor.patch.build").
  VersionNumber(unsigned major, unsigned minor, unsigned patch);
  VersionNumber(unsigned major, unsigned minor, unsigned patch, unsigned build);
  // Parses `text`:
  //  1. The text is cut at `descriptorSeparator` (SplitString: empty pieces
  //     are dropped, so doubled separators are harmless).
  //  2. The piece at position `numbersIndex` (from 0), if there is one, holds
  //     the numbers; every other piece is a descriptor, in order.
  //  3. The numbers are cut at `numberSeparator` (empty pieces dropped: "1..2"
  //     is 1.2) and each piece gives one component: its value as
  //     TString::toUInt reads it (surrounding white space is fine), or else
  //     the value of the piece cut after its first run of digits ("2rc" is 2,
  //     but "rc2" stays unreadable), or else 0.
  //  4. The text form is AsString(numberSeparator, descriptorSeparator).
  // "Build 2021.4.3 beta" with '.', ' ' and index 1 is 2021.4.3 with the
  // descriptors "Build" and "beta", written "2021.4.3 Build beta".
  explicit VersionNumber(const TString& text, char16_t numberSeparator = u'.',
                         char16_t descriptorSeparator = u' ', unsigned long numbersIndex = 0);

  // A file version's two 32-bit words: ms >> 16, ms & 0xFFFF, ls >> 16, ls & 0xFFFF.
  static VersionNumber FromFileVersion(unsigned ms, unsigned ls);

  const std::vector<unsigned int>& GetNumbers() const noexcept { return m_numbers; }
  const std::vector<TString>& GetDescriptors() const noexcept { return m_descriptors; }
  // The text form, rebuilt whenever the components change, with the
  // separators of construction ('.' and ' ' for the numeric constructors).
  const TString& GetAsString() const noexcept { return m_text; }

  // Keeps the first n components (no change when there are n or fewer);
  // descriptors are untouched and the text form is rebuilt.
  void Truncate(unsigned long n);

  // The components in decimal joined with `sep` ("" for no components).
  TString GetNumbersAsString(char16_t sep = u'.') const;
  // GetNumbersAsString(sep), then `descriptorSep` and each descriptor.
  TString AsString(char16_t sep = u'.', char16_t descriptorSep = u' ') const;
  // The first component, `sep`, the second; a missing component prints as 0.
  TString GetMajorAndMinorAsString(char16_t sep = u'.') const;

  // -1, 0 or 1.
  int compare(const VersionNumber& other) const noexcept;
  friend bool operator==(const VersionNumber& a, const VersionNumber& b) noexcept { return a.compare(b) == 0; }
  friend bool operator!=(const VersionNumber& a, const VersionNumber& b) noexcept { return a.compare(b) != 0; }
  friend bool operator<(const VersionNumber& a, const VersionNumber& b) noexcept { return a.compare(b) < 0; }
  friend bool operator<=(const VersionNumber& a, const VersionNumber& b) noexcept { return a.compare(b) <= 0; }
  friend bool operator>(const VersionNumber& a, const VersionNumber& b) noexcept { return a.compare(b) > 0; }
  friend bool operator>=(const VersionNumber& a, const VersionNumber& b) noexcept { return a.compare(b) >= 0; }

 private:
  void RebuildText() { m_text = AsString(m_numberSeparator, m_descriptorSeparator); }

  std::vector<unsigned int> m_numbers;
  std::vector<TString> m_descriptors;
  TString m_text;
  // The separators the text form is written with.
  char16_t m_numberSeparator = u'.';
  char16_t m_descriptorSeparator = u' ';
};
