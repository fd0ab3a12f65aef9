#include "velcoredata/util/VersionNumber.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "velcoredata/strings/StringUtils.h"

namespace {

// One numeric piece of a version text; see the constructor's contract.
unsigned int ReadComponent(TString piece) {
  bool ok = false;
  unsigned int value = piece.toUInt(&ok, 10);
  if (ok) return value;
  static const TString kDigits(u"0123456789");
  const int firstDigit = piece.findOneOf(kDigits);
  if (firstDigit < 0) return 0;
  const int endOfRun = piece.findOneNotOf(kDigits, firstDigit);
  if (endOfRun >= 0) piece.truncate(endOfRun);
  value = piece.toUInt(&ok, 10);
  return ok ? value : 0;
}

}  // namespace

VersionNumber::VersionNumber(unsigned major, unsigned minor, unsigned patch)
    : m_numbers{major, minor, patch} {
  RebuildText();
}

VersionNumber::VersionNumber(unsigned major, unsigned minor, unsigned patch, unsigned build)
    : m_numbers{major, minor, patch, build} {
  RebuildText();
}

VersionNumber::VersionNumber(const TString& text, char16_t numberSeparator, char16_t descriptorSeparator,
                             unsigned long numbersIndex)
    : m_descriptors(SplitString(text, descriptorSeparator)),
      m_numberSeparator(numberSeparator),
      m_descriptorSeparator(descriptorSeparator) {
  if (m_descriptors.size() > numbersIndex) {
    const auto numbersPiece = m_descriptors.begin() + static_cast<std::ptrdiff_t>(numbersIndex);
    const TString numbers = std::move(*numbersPiece);
    m_descriptors.erase(numbersPiece);
    for (const TString& piece : SplitString(numbers, numberSeparator)) m_numbers.push_back(ReadComponent(piece));
  }
  RebuildText();
}

VersionNumber VersionNumber::FromFileVersion(unsigned ms, unsigned ls) {
  return VersionNumber(ms >> 16, ms & 0xFFFF, ls >> 16, ls & 0xFFFF);
}

void VersionNumber::Truncate(unsigned long n) {
  if (m_numbers.size() <= n) return;
  m_numbers.resize(n);
  RebuildText();
}

TString VersionNumber::GetNumbersAsString(char16_t sep) const {
  TString text;
  for (size_t i = 0; i < m_numbers.size(); ++i) {
    if (i > 0) text.append(sep);
    text.append(TString::number(m_numbers[i]));
  }
  return text;
}

TString VersionNumber::AsString(char16_t sep, char16_t descriptorSep) const {
  TString text = GetNumbersAsString(sep);
  for (const TString& descriptor : m_descriptors) {
    text.append(descriptorSep);
    text.append(descriptor);
  }
  return text;
}

TString VersionNumber::GetMajorAndMinorAsString(char16_t sep) const {
  const unsigned int major = m_numbers.empty() ? 0 : m_numbers[0];
  const unsigned int minor = m_numbers.size() < 2 ? 0 : m_numbers[1];
  return TString::number(major) + sep + TString::number(minor);
}

int VersionNumber::compare(const VersionNumber& other) const noexcept {
  const size_t common = std::min(m_numbers.size(), other.m_numbers.size());
  for (size_t i = 0; i < common; ++i) {
    if (m_numbers[i] > other.m_numbers[i]) return 1;
    if (m_numbers[i] < other.m_numbers[i]) return -1;
  }
  // Trailing zero components do not count: 1.2 is 1.2.0.
  const auto nonZero = [](unsigned int n) { return n != 0; };
  if (std::any_of(m_numbers.begin() + static_cast<std::ptrdiff_t>(common), m_numbers.end(), nonZero)) return 1;
  if (std::any_of(other.m_numbers.begin() + static_cast<std::ptrdiff_t>(common), other.m_numbers.end(), nonZero)) {
    return -1;
  }
  return 0;
}
