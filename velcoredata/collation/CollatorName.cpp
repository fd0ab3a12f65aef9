#include "velcoredata/collation/CollatorName.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <map>

#include "velcoredata/collation/BinaryCollatorPool.h"
#include "velcoredata/collation/CollationType.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/collation/internal/CollatorNameParts.h"
#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/platform/LogMessage.h"
#include "velcoredata/platform/LogicException.h"

using VelICU::ICUColAttributeValue;
using Attr = ICUCollator::Attr;

// --- parts --------------------------------------------------------------------

namespace CollatorNameParts {

std::vector<TString> Split(const char16_t* name) {
  std::vector<TString> parts;
  if (!name || !*name) return parts;  // no name, no parts (not one empty part)
  const char16_t* start = name;
  for (const char16_t* p = name;; ++p) {
    if (*p == u'_' || *p == 0) {
      parts.emplace_back(start, static_cast<int>(p - start));
      if (*p == 0) break;
      start = p + 1;
    }
  }
  return parts;
}

std::vector<TString> Split(const TString& name) { return Split(name.c_str()); }

TString Join(const std::vector<TString>& parts) {
  TString name;
  for (const TString& part : parts) {
    if (!name.isEmpty()) name += u'_';
    name += part;
  }
  return name;
}

std::string Underscored(std::string locale) {
  std::replace(locale.begin(), locale.end(), '-', '_');
  return locale;
}

}  // namespace CollatorNameParts

CollatorPool* GetPool(const char16_t* name, unsigned cmpFlags) {
  if (!name || !*name) name = CollationType::s_unknown;
  if (TString(name).compare(CollationType::s_binary, TString::CaseInsensitive) == 0) {
    return &BinaryCollatorPool::Singleton();
  }
  return ICUCollatorPool::Factory({TString(name), cmpFlags});
}

void CollatorNamePartsFromAttributes(const ICUCollator::AttrList& attributes,
                                     std::vector<TString>& parts) {
  std::map<char16_t, TString> byKey;
  for (auto i = parts.begin(); i != parts.end(); ++i) {
    VEL_ASSERT_IN("ICUCollator", !i->isEmpty());
    byKey[(*i)[0]] = *i;
  }
  for (auto i = attributes.begin(); i != attributes.end(); ++i) {
    const ICUCollator::AttrInfo& a = ICUCollator::GetAttrInfo(i->first);
    VEL_ASSERT_IN("ICUCollator", a.attr.enumVal == i->first.enumVal);
    if (i->second == UCOL_DEFAULT || i->second == a.defaultValue) {
      byKey.erase(a.letter);
      continue;
    }
    const ICUCollator::ValueInfo& v = ICUCollator::GetValueInfo(i->second);
    VEL_ASSERT_IN("ICUCollator", v.value == i->second);
    byKey[a.letter] = TString(1, a.letter) + v.letter;
  }
  parts.clear();
  for (auto& [key, part] : byKey) parts.push_back(std::move(part));
}

// --- builders -----------------------------------------------------------------

namespace {

constexpr int kLocalePartCapacity = 31;  // language, country and script codes
constexpr unsigned kWindowsVariantFlag = 0x80000000u;

using LocalePartFunc = int32_t (*)(const char*, char*, int32_t, UErrorCode*);

// ICU's language, country or script of a locale; a code that does not fit
// the buffer is a failure like any other.
std::string LocalePart(LocalePartFunc get, const std::string& locale) {
  char buffer[kLocalePartCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = get(locale.c_str(), buffer, kLocalePartCapacity, &status);
  if (status == U_STRING_NOT_TERMINATED_WARNING) status = U_BUFFER_OVERFLOW_ERROR;
  if (U_FAILURE(status)) CoreICUUtils::ThrowICUException(status, TString::fromUtf8(locale));
  return std::string(buffer, static_cast<size_t>(std::max(length, 0)));
}

TString UpperPart(char key, const std::string& code) {
  return TString::fromLatin1((std::string(1, key) + code).c_str()).toUpper();
}

// Sort options 2 and 3 were never implemented; asking for them is a
// programming error that is worth a line in the log before it fails.
void RejectUnsupportedSortOption(Collation::SortOpt sortOpt) {
  if (sortOpt == Collation::SortOpt::Unsupported2 || sortOpt == Collation::SortOpt::Unsupported3) {
    LogMessage(LogArea::Collation, LogSeverity::Error,
               TString(u"Collation sort option not handled: ") +
                   TString::number(static_cast<int>(sortOpt)));
    VEL_ASSERT_IN("ICUCollator", false);
  }
}

TString MergeAndJoin(std::vector<TString> parts, const ICUCollator::AttrList& attributes) {
  CollatorNamePartsFromAttributes(attributes, parts);
  return CollatorNameParts::Join(parts);
}

}  // namespace

TString MakeICUCollatorName(const std::string& locale, bool ignoreDigits, Collation::CaseOpt caseOpt,
                            Collation::AccentOpt accentOpt, Collation::SortOpt sortOpt,
                            Collation::PunctOpt punctOpt) {
  using CaseOpt = Collation::CaseOpt;
  std::vector<TString> parts;
  if (const std::string language = LocalePart(&uloc_getLanguage, locale); !language.empty()) {
    parts.push_back(UpperPart('L', language));
  }
  if (const std::string country = LocalePart(&uloc_getCountry, locale); !country.empty()) {
    parts.push_back(UpperPart('R', country));
  }
  if (const std::string script = LocalePart(&uloc_getScript, locale); !script.empty()) {
    parts.push_back(UpperPart('Z', script));
  }

  ICUColAttributeValue strength = UCOL_DEFAULT, caseFirst = UCOL_DEFAULT, alternate = UCOL_DEFAULT;
  auto applyCase = [&] {
    if (caseOpt == CaseOpt::LowerFirst) caseFirst = UCOL_LOWER_FIRST;
    else if (caseOpt == CaseOpt::UpperFirst) caseFirst = UCOL_UPPER_FIRST;
    else if (caseOpt == CaseOpt::CaseInsensitive) strength = UCOL_SECONDARY;
  };
  const bool ignorePunctuation = punctOpt == Collation::PunctOpt::IgnorePunctuation;
  if (ignoreDigits) {
    // The ignore-digits ordering keeps the locale's punctuation handling.
  } else if (ignorePunctuation) {
    strength = UCOL_TERTIARY;
    alternate = UCOL_SHIFTED;
    applyCase();
  } else {
    strength = punctOpt == Collation::PunctOpt::Quaternary ? UCOL_QUATERNARY : UCOL_DEFAULT;
  }
  if (ignoreDigits || !ignorePunctuation) applyCase();

  RejectUnsupportedSortOption(sortOpt);
  const ICUColAttributeValue wordSort = sortOpt == Collation::SortOpt::WordSort ? UCOL_ON : UCOL_DEFAULT;
  const bool accentInsensitive = accentOpt == Collation::AccentOpt::AccentInsensitive;
  const bool accentSensitiveOrIgnoreDigits = !accentInsensitive || ignoreDigits;
  const ICUColAttributeValue caseLevel =
      (caseOpt != CaseOpt::CaseInsensitive && accentInsensitive && !ignoreDigits) ? UCOL_ON
                                                                                  : UCOL_DEFAULT;

  ICUCollator::AttrList attributes = {
      {Attr::AlternateHandling, alternate},
      {Attr::Strength, accentSensitiveOrIgnoreDigits ? strength : UCOL_PRIMARY},
      {Attr::WordSort, wordSort},
      {Attr::CaseFirst, caseFirst},
      {Attr::CaseLevel, caseLevel},
  };
  if (ignoreDigits) attributes.emplace_back(Attr::IgnoreDigits, UCOL_ON);
  return MergeAndJoin(std::move(parts), attributes);
}

TString MakeCollatorName(const char16_t* name, Collation::CaseOpt caseOpt,
                         Collation::AccentOpt accentOpt, Collation::SortOpt sortOpt,
                         Collation::PunctOpt punctOpt) {
  using CaseOpt = Collation::CaseOpt;
  ICUColAttributeValue strength = UCOL_DEFAULT, alternate = UCOL_DEFAULT, caseFirst = UCOL_DEFAULT;
  if (punctOpt == Collation::PunctOpt::IgnorePunctuation) {
    strength = UCOL_TERTIARY;
    alternate = UCOL_SHIFTED;
  } else if (punctOpt == Collation::PunctOpt::Quaternary) {
    strength = UCOL_QUATERNARY;
  }
  if (caseOpt == CaseOpt::LowerFirst) caseFirst = UCOL_LOWER_FIRST;
  else if (caseOpt == CaseOpt::UpperFirst) caseFirst = UCOL_UPPER_FIRST;
  else if (caseOpt == CaseOpt::CaseInsensitive) strength = UCOL_SECONDARY;

  const bool accentInsensitive = accentOpt == Collation::AccentOpt::AccentInsensitive;
  ICUColAttributeValue strengthValue = accentInsensitive ? UCOL_PRIMARY : strength;
  ICUColAttributeValue wordSort = UCOL_DEFAULT;
  RejectUnsupportedSortOption(sortOpt);
  if (sortOpt == Collation::SortOpt::Identical) strengthValue = UCOL_IDENTICAL;
  else if (sortOpt == Collation::SortOpt::WordSort) wordSort = UCOL_ON;

  const ICUColAttributeValue caseLevel =
      (accentInsensitive && caseOpt != CaseOpt::CaseInsensitive) ? UCOL_ON : UCOL_DEFAULT;
  return MergeAndJoin(CollatorNameParts::Split(name), {
                                                          {Attr::AlternateHandling, alternate},
                                                          {Attr::Strength, strengthValue},
                                                          {Attr::WordSort, wordSort},
                                                          {Attr::CaseFirst, caseFirst},
                                                          {Attr::CaseLevel, caseLevel},
                                                      });
}

TString MakeCollatorName(unsigned lcid, unsigned cmpFlags, bool wordSort) {
  static const char16_t* const kStrengthParts[] = {u"S1", u"S2", u"S3"};
  const int strengthIndex = (cmpFlags & 2) ? 0 : (cmpFlags & 1) ? 1 : (cmpFlags & 4) ? 2 : -1;
  const bool windowsVariant = (cmpFlags & kWindowsVariantFlag) != 0;

  TString name;
  auto append = [&name](const TString& part) {
    if (!name.isEmpty()) name += u'_';
    name += part;
  };
  if (cmpFlags & 4) append(u"AS");
  if (!(cmpFlags & 1) && (cmpFlags & 2)) append(u"EO");

  std::string locale = LanguageUtils::GetLocaleForLCID(lcid);
  if (windowsVariant) locale += "_VWIN";
  if (const std::string language = LocalePart(&uloc_getLanguage, locale); !language.empty()) {
    append(UpperPart('L', language));
  }
  if (const std::string country = LocalePart(&uloc_getCountry, locale); !country.empty()) {
    append(UpperPart('R', country));
  }
  if (strengthIndex >= 0) append(kStrengthParts[strengthIndex]);
  // Written where it stands, with its own underscore: the pool reads it as
  // the locale variant WIN.
  if (windowsVariant) name += u"_VWIN";
  if (wordSort) append(u"WO");
  if (const std::string script = LocalePart(&uloc_getScript, locale); !script.empty()) {
    append(UpperPart('Z', script));
  }
  return name.toUpper();
}

TString CollatorNameFromLocaleName(const char* locale, bool ignoreDigits, Collation::CaseOpt caseOpt,
                                   Collation::AccentOpt accentOpt, Collation::SortOpt sortOpt,
                                   Collation::PunctOpt punctOpt) {
  const std::string name = CollatorNameParts::Underscored(locale ? locale : "");
  unsigned lcid = uloc_getLCID(name.c_str());
  if (lcid == 0) lcid = LanguageUtils::kUserDefaultLCID;
  TString collatorName = MakeCollatorName(lcid, 0, false);
  if (ignoreDigits) {
    if (!collatorName.isEmpty()) collatorName += u'_';
    collatorName += TString(1, ICUCollator::GetAttrInfo(Attr::IgnoreDigits).letter) +
                    ICUCollator::GetValueInfo(UCOL_ON).letter;
    accentOpt = Collation::AccentOpt::AccentInsensitive;
    punctOpt = Collation::PunctOpt::IgnorePunctuation;
  }
  return MakeCollatorName(collatorName.c_str(), caseOpt, accentOpt, sortOpt, punctOpt);
}
