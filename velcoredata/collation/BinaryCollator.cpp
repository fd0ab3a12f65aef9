#include "velcoredata/collation/BinaryCollator.h"

#include <algorithm>
#include <cstring>

#include "velcoredata/collation/internal/CollatorText.h"
#include "velcoredata/platform/TCType.h"
#include "velcoredata/platform/THash.h"

using CollatorText::Length;
using CollatorText::Text;

Collator::~Collator() = default;

int BinaryCollator::Compare(const char16_t* a, const char16_t* b) const {
  return Compare(a, Length(a), b, Length(b));
}

int BinaryCollator::Compare(const char16_t* a, int lenA, const char16_t* b, int lenB) const {
  return CompareUnits(Text(a), lenA, Text(b), lenB);
}

int BinaryCollator::Search(const char16_t* text, const char16_t* pattern) const {
  return Search(text, pattern, 0, nullptr);
}

int BinaryCollator::Search(const char16_t* text, const char16_t* pattern, int start,
                           int* matchLength) const {
  const std::u16string_view haystack(Text(text));
  const std::u16string_view needle(Text(pattern));
  if (needle.empty() || start > static_cast<int>(haystack.size())) return -1;
  const size_t found = haystack.find(needle, static_cast<size_t>(std::max(start, 0)));
  if (found == std::u16string_view::npos) return -1;
  if (matchLength) *matchLength = static_cast<int>(needle.size());
  return static_cast<int>(found);
}

void BinaryCollator::Replace(std::vector<char16_t>& out, const char16_t* text,
                             const char16_t* pattern, const char16_t* replacement) const {
  const std::u16string_view haystack(Text(text));
  const std::u16string_view needle(Text(pattern));
  const std::u16string_view with(Text(replacement));
  out.clear();
  size_t from = 0;
  if (!needle.empty()) {
    for (size_t at = haystack.find(needle); at != std::u16string_view::npos;
         at = haystack.find(needle, from)) {
      out.insert(out.end(), haystack.begin() + static_cast<std::ptrdiff_t>(from),
                 haystack.begin() + static_cast<std::ptrdiff_t>(at));
      out.insert(out.end(), with.begin(), with.end());
      from = at + needle.size();
    }
  }
  out.insert(out.end(), haystack.begin() + static_cast<std::ptrdiff_t>(from), haystack.end());
  out.push_back(0);
}

bool BinaryCollator::StartsWith(const char16_t* text, const char16_t* prefix) const {
  return std::u16string_view(Text(text)).starts_with(Text(prefix));
}

bool BinaryCollator::EndsWith(const char16_t* text, const char16_t* suffix) const {
  return std::u16string_view(Text(text)).ends_with(Text(suffix));
}

namespace {

char16_t LowerUnit(char16_t c) {
  if (c < 128) return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
  return TCType::isUpper(c) ? TCType::toLower(c) : c;
}

char16_t UpperUnit(char16_t c) {
  if (c < 128) return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c;
  return TCType::isLower(c) ? TCType::toUpper(c) : c;
}

template <class Map>
void MapUnits(std::vector<char16_t>& out, const char16_t* text, Map map) {
  const std::u16string_view in(Text(text));
  out.resize(in.size() + 1);
  std::transform(in.begin(), in.end(), out.begin(), map);
  out.back() = 0;
}

}  // namespace

void BinaryCollator::Lower(std::vector<char16_t>& out, const char16_t* text) const {
  MapUnits(out, text, LowerUnit);
}

void BinaryCollator::Upper(std::vector<char16_t>& out, const char16_t* text) const {
  MapUnits(out, text, UpperUnit);
}

void BinaryCollator::LTrim(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorText::TrimInto(out, text, true, false, TCType::isSpace);
}

void BinaryCollator::RTrim(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorText::TrimInto(out, text, false, true, TCType::isSpace);
}

void BinaryCollator::Trim(std::vector<char16_t>& out, const char16_t* text) const {
  CollatorText::TrimInto(out, text, true, true, TCType::isSpace);
}

uint32_t BinaryCollator::Hash(const char16_t* text) const {
  text = Text(text);
  return THash32(text, static_cast<size_t>(Length(text)) * sizeof(char16_t), 1);
}

bool BinaryCollator::IsEquivalent(const Collator& other) const {
  return dynamic_cast<const BinaryCollator*>(&other) != nullptr;
}
