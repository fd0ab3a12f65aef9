// TLocale: construction, identity, the date-format cache, the process-wide
// ICU caches, default locales and patterns, and the first-week rules.

#include "velcoredata/locale/TLocale.h"

#include <unicode/uloc.h>

#include <iterator>
#include <mutex>
#include <string>
#include <unordered_set>

#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/internal/ICUDateFormats.h"
#include "velcoredata/locale/internal/LcidCache.h"
#include "velcoredata/locale/internal/TLocaleParseFormats.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/LogMessage.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TCType.h"
#include "velcoredata/platform/TFormatString.h"

// Qt after oneTBB: Qt's "emit" keyword macro breaks oneTBB's headers.
#include <QLocale>

namespace {

using Spec = ICUUtils::DefaultDateTimeFormatSpec;

using LocaleInternal::ConcurrentMap;
using LocaleInternal::FindOrMake;
using LocaleInternal::IsPseudoLCID;

// Whether ICU has a locale of its own for the LCID (the language table falls
// back to English for the others).
bool HasLocaleForLCID(uint32_t lcid) {
  if (IsPseudoLCID(lcid)) return true;
  char name[ULOC_FULLNAME_CAPACITY];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = uloc_getLocaleForLCID(lcid, name, ULOC_FULLNAME_CAPACITY, &status);
  return U_SUCCESS(status) && status != U_STRING_NOT_TERMINATED_WARNING && length > 0 &&
         std::string(name, static_cast<size_t>(length)) != "root";
}

std::unique_ptr<VelICU::ICULocale> MakeICULocale(const TString& name) {
  // The name as a plain locale ID, with no separate country, variant or
  // keywords (ICU parses them out of the ID).
  const std::string id = name.toLocal8Bit();
  auto locale = std::make_unique<VelICU::ICULocale>(id.c_str(), nullptr, nullptr, nullptr);
  VEL_ASSERT(!locale->isBogus());
  return locale;
}

// ---- Process-wide caches ----

template <class Key>
struct KeyHashCompare {
  static size_t hash(const Key& key) { return std::hash<uint64_t>()((uint64_t{key.first} << 8) ^ (key.second & 0xFF)); }
  static bool equal(const Key& a, const Key& b) { return a == b; }
};

using StyleKey = std::pair<uint32_t, int>;
using LocaleCache = ConcurrentMap<uint32_t, std::shared_ptr<const VelICU::ICULocale>>;
using DateFormatCache =
    ConcurrentMap<StyleKey, std::shared_ptr<const VelICU::ICUDateFormat>, KeyHashCompare<StyleKey>>;
using SimpleDateFormatCache =
    ConcurrentMap<StyleKey, std::shared_ptr<const VelICU::ICUSimpleDateFormat>, KeyHashCompare<StyleKey>>;

LocaleCache& Locales() {
  static InitOnceValue<LocaleCache> cache;
  return cache.Get();
}
DateFormatCache& DateFormats() {
  static InitOnceValue<DateFormatCache> cache;
  return cache.Get();
}
SimpleDateFormatCache& TimeFormats() {
  static InitOnceValue<SimpleDateFormatCache> cache;
  return cache.Get();
}

// ---- Default patterns ----

TString DatePattern(uint32_t lcid, VelICU::ICUEStyle style) {
  const auto format = TLocale::GetCachedICUDateFormat(lcid, style);
  return format ? ICUUtils::GetPattern(*format) : TString();
}

TString TimePattern(uint32_t lcid, VelICU::ICUEStyle style) {
  const auto format = TLocale::GetCachedICUSimpleDateFormat(lcid, style);
  return format ? ICUUtils::GetPattern(*format) : TString();
}

// The default pattern of a spec for an LCID, as ICU gives it (the base of the
// three dialects).
TString BasePattern(Spec spec, uint32_t lcid) {
  if (!HasLocaleForLCID(lcid)) {
    return lcid == LanguageUtils::kEnglishLCID ? TString() : BasePattern(spec, LanguageUtils::kEnglishLCID);
  }
  const ICUUtils::DateTimeStyles styles = ICUUtils::GetStylesOfSpec(spec);
  if (styles.time == VelICU::ICUDateFormat::kNone) return DatePattern(lcid, styles.date);
  if (styles.date == VelICU::ICUDateFormat::kNone) return TimePattern(lcid, styles.time);
  return DatePattern(lcid, styles.date) + u" " + TimePattern(lcid, styles.time);
}

// Displays the year of a short date in full: "M/d/yy" would make 2020 and
// 1920 look alike.
TString WidenYear(TString pattern) {
  if (pattern.contains(u"yy") && !pattern.contains(u"yyyy")) pattern.replace(u"yy", u"yyyy");
  return pattern;
}

bool IsCJKLanguage(uint32_t lcid) {
  const std::string name = LanguageUtils::GetLocaleForLCID(lcid);
  const std::string language = name.substr(0, name.find_first_of("_@"));
  return language == "zh" || language == "ja" || language == "ko";
}

// ---- First week of the year ----

// The locales whose first week is the first with four days or more (code 2),
// by the LCID their ICU locale reports. Locales not listed use code 1.
const uint32_t kFourDayFirstWeekLCIDs[] = {
    0x0002, 0x0003, 0x0005, 0x0006, 0x0007, 0x0008, 0x000A, 0x000B, 0x000C, 0x000E, 0x000F, 0x0010,
    0x0013, 0x0014, 0x0015, 0x0017, 0x0019, 0x001B, 0x001D, 0x0025, 0x0027, 0x002D, 0x002E, 0x0038,
    0x003B, 0x003C, 0x0044, 0x0052, 0x0056, 0x0062, 0x006D, 0x006E, 0x0076, 0x007E, 0x0082, 0x0083,
    0x0084, 0x0085, 0x0091, 0x0402, 0x0403, 0x0405, 0x0406, 0x0407, 0x0408, 0x040A, 0x040B, 0x040C,
    0x040E, 0x040F, 0x0410, 0x0413, 0x0414, 0x0415, 0x0417, 0x0419, 0x041B, 0x041D, 0x0425, 0x0427,
    0x042D, 0x042E, 0x0438, 0x043B, 0x0444, 0x0452, 0x0456, 0x0462, 0x046D, 0x046E, 0x047E, 0x0482,
    0x0483, 0x0484, 0x0485, 0x0491, 0x0803, 0x0807, 0x0809, 0x080C, 0x0810, 0x0813, 0x0814, 0x0816,
    0x081D, 0x082E, 0x083B, 0x083C, 0x0C07, 0x0C0A, 0x0C3B, 0x1007, 0x100C, 0x103B, 0x1407, 0x140C,
    0x143B, 0x1809, 0x180C, 0x183B, 0x1C3B, 0x200C, 0x203B, 0x243B, 0x703B, 0x743B, 0x7814, 0x783B,
    0x7C14, 0x7C2E, 0x7C3B,
};

const std::unordered_map<uint32_t, int>& FirstWeekBehaviours() {
  static const std::unordered_map<uint32_t, int> map = [] {
    std::unordered_map<uint32_t, int> m;
    for (uint32_t lcid : kFourDayFirstWeekLCIDs) m.emplace(lcid, 2);
    return m;
  }();
  return map;
}

// ---- ICU default patterns and their legacy (Windows) equivalents ----

const char16_t* const kICUDefaultPatterns[] = {
    // short dates
    u"M/d/yy", u"dd/MM/y", u"dd.MM.yy", u"y/MM/dd", u"y/M/d", u"yy. M. d.", u"d/M/yy", u"dd/MM/yy",
    u"dd.MM.y", u"dd-MM-y", u"y-MM-dd", u"d.M.y", u"d.MM.y", u"y. MM. dd.",
    // long dates
    u"EEEE, MMMM d, y", u"EEEE, d MMMM y", u"EEEE, d. MMMM y", u"EEEE d MMMM y", u"y年M月d日EEEE",
    u"y年M月d日 EEEE", u"y년 M월 d일 EEEE", u"EEEE, d 'de' MMMM 'de' y", u"EEEE, d MMMM y 'г'.", u"cccc d. MMMM y",
    u"y. MMMM d., EEEE",
    // times
    u"h:mm:ss a", u"h:mm a", u"HH:mm:ss", u"HH:mm", u"H:mm:ss", u"H:mm", u"a h:mm:ss", u"a h:mm",
    u"Bh:mm:ss", u"Bh:mm", u"H.mm.ss", u"H.mm",
    // the other default patterns of the language table's locales (ICU 72),
    // each paired with its translation: letters of other scripts quoted,
    // the weekday as dddd, the year as yyyy, day periods as tt
    u"EEEE 'den' d. MMMM y", u"EEEE d MMMM, y", u"EEEE d. MMMM y", u"EEEE dd 'de' MMMM 'de' y",
    u"EEEE dd MMMM y", u"EEEE \u062F G y \u062F MMMM d", u"EEEE \u0E97\u0EB5 d MMMM G y",
    u"EEEE, 'ils' d MMMM y", u"EEEE, d 'ta'\u2019 MMMM y", u"EEEE, d MMM y", u"EEEE, d MMM, y",
    u"EEEE, d MMMM 'de' y", u"EEEE, d MMMM y '\u0440'.", u"EEEE, d MMMM, y", u"EEEE, d \u05D1MMMM y",
    u"EEEE, d'mh' MMMM y", u"EEEE, d-MMMM, y", u"EEEE, d. MMMM y.", u"EEEE, dd MMMM y", u"EEEE, dd MMMM, y",
    u"EEEE, dd. MMMM y.", u"EEEE, d\u05D8\u05DF MMMM y", u"EEEE, y. 'gada' d. MMMM",
    u"EEEE, \u0F66\u0FA4\u0FB1\u0F72\u0F0B\u0F63\u0F7C\u0F0By MMMM \u0F5A\u0F7A\u0F66\u0F0Bdd",
    u"EEEE\u060C d MMMM y", u"EEEE\u060C d MMMM y G", u"EEEE\u060C d MMMM\u060C y",
    u"EEEE\u0E17\u0E35\u0E48 d MMMM G y", u"EEEE\u1363 d MMMM y", u"GGGGG y/M/d", u"GGGGG y/M/d H:mm:ss",
    u"H:m", u"H:m:s", u"H:mm 'hod\u017A'.", u"H:mm '\u0447'.", u"H:mm:ss '\u0447'.", u"HH 'h' mm",
    u"HH 'h' mm 'min' ss 's'", u"HH.mm", u"HH.mm.ss", u"M/d/yyyy", u"M/d/yyyy HH:mm:ss",
    u"M/d/yyyy h:mm:ss a", u"MM/dd/yyyy", u"MM/dd/yyyy h:mm:ss a", u"MMMM d, y, EEEE", u"a h.mm",
    u"a h.mm.ss", u"ah:mm", u"ah:mm:ss", u"cccc, MMMM d. y", u"d MMMM y EEEE", u"d MMMM y, EEEE",
    u"d MMMM, y '\u0435\u043B', EEEE", u"d, MMMM y, EEEE", u"d-M-y", u"d-M-y a h.mm.ss", u"d-M-yyyy",
    u"d-M-yyyy h:mm:ss a", u"d. M. y", u"d. M. y H:mm:ss", u"d. M. y.", u"d. M. y. HH:mm:ss", u"d. M. yyyy.",
    u"d. M. yyyy. HH:mm:ss", u"d. MM. yyyy", u"d. MM. yyyy HH:mm:ss", u"d.M.y H.mm.ss", u"d.M.y H:mm:ss",
    u"d.M.y HH:mm:ss", u"d.M.yyyy", u"d.M.yyyy H:mm:ss", u"d.M.yyyy HH:mm:ss", u"d.M.yyyy h:mm:ss a",
    u"d.M.yyyy.", u"d.M.yyyy. HH:mm:ss", u"d.MM.y HH:mm:ss", u"d.MM.yyyy", u"d.MM.yyyy '\u0433'.",
    u"d.MM.yyyy '\u0433'. H:mm:ss '\u0447'.", u"d.MM.yyyy HH:mm:ss", u"d/M/y", u"d/M/y H:m:s",
    u"d/M/y H:mm:ss", u"d/M/y HH:mm:ss", u"d/M/y ah:mm:ss", u"d/M/y h:mm:ss a", u"d/M/yyyy",
    u"d/M/yyyy H:mm:ss", u"d/M/yyyy HH:mm:ss", u"d/M/yyyy a h:mm:ss", u"d/M/yyyy h:mm:ss a",
    u"d/M/yyyy hh:mm:ss a", u"d/MM/y", u"d/MM/y HH:mm:ss", u"d/MM/yyyy", u"d/MM/yyyy HH:mm:ss",
    u"d/MM/yyyy h:mm:ss a", u"dd MMMM y", u"dd-MM-y HH:mm:ss", u"dd-MM-y h:mm:ss a", u"dd-MM-yyyy",
    u"dd-MM-yyyy HH:mm:ss", u"dd-MM-yyyy h:mm:ss a", u"dd. MM. y.", u"dd. MM. y. HH:mm:ss",
    u"dd.MM.y H:mm:ss", u"dd.MM.y HH.mm.ss", u"dd.MM.y HH:mm:ss", u"dd.MM.yyyy", u"dd.MM.yyyy H:mm:ss",
    u"dd.MM.yyyy HH:mm:ss", u"dd/MM/y HH:mm:ss", u"dd/MM/y h:mm:ss a", u"dd/MM/yyyy", u"dd/MM/yyyy HH.mm.ss",
    u"dd/MM/yyyy HH:mm:ss", u"dd/MM/yyyy ah:mm:ss", u"dd/MM/yyyy h:mm:ss a", u"d\u200F/M\u200F/y",
    u"d\u200F/M\u200F/y GGGGG", u"d\u200F/M\u200F/y GGGGG h:mm:ss a", u"d\u200F/M\u200F/y HH:mm:ss",
    u"d\u200F/M\u200F/y h:mm:ss a", u"hh:mm a", u"hh:mm:ss a", u"y 'm'. MMMM d 'd'., EEEE",
    u"y '\u0436'. d MMMM, EEEE",
    u"y '\u043E\u043D\u044B' MMMM'\u044B\u043D' d, EEEE '\u0433\u0430\u0440\u0430\u0433'",
    u"y '\u0441\u044B\u043B' MMMM d '\u043A\u04AF\u043D\u044D', EEEE", u"y MMMM d, EEEE",
    u"y MMMM\u0F60\u0F72\u0F0B\u0F5A\u0F7A\u0F66\u0F0Bd, EEEE", u"y d-MMMM\u060C EEEE",
    u"y \u0569. MMMM d, EEEE", u"y('e')'ko' MMMM'ren' d('a'), EEEE", u"y, MMMM d, EEEE",
    u"y-'\u0436'., d-MMMM, EEEE", u"y-MM-dd HH 'h' mm 'min' ss 's'", u"y-MM-dd HH.mm.ss", u"y-MM-dd HH:mm:ss",
    u"y-MM-dd h:mm:ss a", u"y-MM-dd \u0F46\u0F74\u0F0B\u0F5A\u0F7C\u0F51\u0F0Bh:mm:ss a",
    u"y. MM. dd. H:mm:ss", u"y.MM.dd", u"y.MM.dd HH:mm:ss", u"y/M/d Bh:mm:ss", u"y/M/d H:mm:ss",
    u"y/M/d HH:mm:ss", u"y/MM/dd H:mm:ss", u"y/MM/dd HH:mm:ss", u"yyyy. M. d.", u"yyyy. M. d. a h:mm:ss",
    u"yyyy/M/d", u"yyyy/M/d HH:mm:ss", u"yyyy/M/d h:mm:ss a", u"y\u104A MMMM d\u104A EEEE",
    u"\u0F46\u0F74\u0F0B\u0F5A\u0F7C\u0F51\u0F0B h \u0F66\u0F90\u0F62\u0F0B\u0F58\u0F0B mm a",
    u"\u0F46\u0F74\u0F0B\u0F5A\u0F7C\u0F51\u0F0Bh:mm:ss a",
};

const char16_t* const kLegacyPatterns[] = {
    // short dates
    u"M/d/yyyy", u"dd/MM/yyyy", u"dd.MM.yyyy", u"yyyy/MM/dd", u"yyyy/M/d", u"yyyy-MM-dd", u"dd/MM/yyyy",
    u"dd/MM/yyyy", u"dd.MM.yyyy", u"d-M-yyyy", u"yyyy-MM-dd", u"d.M.yyyy", u"dd.MM.yyyy", u"yyyy. MM. dd.",
    // long dates
    u"dddd, MMMM d, yyyy", u"dd MMMM yyyy", u"dddd, d. MMMM yyyy", u"dddd d MMMM yyyy",
    u"yyyy'年'M'月'd'日'", u"yyyy'年'M'月'd'日' dddd", u"yyyy'년' M'월' d'일' dddd", u"dddd, d' de 'MMMM' de 'yyyy",
    u"d MMMM yyyy 'г.'", u"d. MMMM'ta 'yyyy", u"yyyy. MMMM d.",
    // times
    u"h:mm:ss tt", u"h:mm tt", u"HH:mm:ss", u"HH:mm", u"H:mm:ss", u"H:mm", u"tt h:mm:ss", u"tt h:mm",
    u"tt hh:mm:ss", u"tt hh:mm", u"H:mm:ss", u"H:mm",
    // the other default patterns of the language table's locales
    u"dddd 'den' d. MMMM yyyy", u"dddd d MMMM, yyyy", u"dddd d. MMMM yyyy", u"dddd dd 'de' MMMM 'de' yyyy",
    u"dddd dd MMMM yyyy", u"dddd '\u062F' g yyyy '\u062F' MMMM d", u"dddd '\u0E97\u0EB5' d MMMM g yyyy",
    u"dddd, 'ils' d MMMM yyyy", u"dddd, d 'ta'\u2019 MMMM yyyy", u"dddd, d MMM yyyy", u"dddd, d MMM, yyyy",
    u"dddd, d MMMM 'de' yyyy", u"dddd, d MMMM yyyy '\u0440'.", u"dddd, d MMMM, yyyy",
    u"dddd, d '\u05D1'MMMM yyyy", u"dddd, d'mh' MMMM yyyy", u"dddd, d-MMMM, yyyy", u"dddd, d. MMMM yyyy.",
    u"dddd, dd MMMM yyyy", u"dddd, dd MMMM, yyyy", u"dddd, dd. MMMM yyyy.",
    u"dddd, d'\u05D8\u05DF' MMMM yyyy", u"dddd, yyyy. 'gada' d. MMMM",
    u"dddd, '\u0F66\u0FA4\u0FB1\u0F72'\u0F0B'\u0F63\u0F7C'\u0F0Byyyy MMMM '\u0F5A\u0F7A\u0F66'\u0F0Bdd",
    u"dddd\u060C d MMMM yyyy", u"dddd\u060C d MMMM yyyy g", u"dddd\u060C d MMMM\u060C yyyy",
    u"dddd'\u0E17\u0E35\u0E48' d MMMM g yyyy", u"dddd\u1363 d MMMM yyyy", u"g yyyy/M/d",
    u"g yyyy/M/d H:mm:ss", u"H:m", u"H:m:s", u"H:mm 'hod\u017A'.", u"H:mm '\u0447'.", u"H:mm:ss '\u0447'.",
    u"HH 'h' mm", u"HH 'h' mm 'min' ss 's'", u"HH.mm", u"HH.mm.ss", u"M/d/yyyy", u"M/d/yyyy HH:mm:ss",
    u"M/d/yyyy h:mm:ss tt", u"MM/dd/yyyy", u"MM/dd/yyyy h:mm:ss tt", u"MMMM d, yyyy, dddd", u"tt h.mm",
    u"tt h.mm.ss", u"tt h:mm", u"tt h:mm:ss", u"dddd, MMMM d. yyyy", u"d MMMM yyyy dddd",
    u"d MMMM yyyy, dddd", u"d MMMM, yyyy '\u0435\u043B', dddd", u"d, MMMM yyyy, dddd", u"d-M-yyyy",
    u"d-M-yyyy tt h.mm.ss", u"d-M-yyyy", u"d-M-yyyy h:mm:ss tt", u"d. M. yyyy", u"d. M. yyyy H:mm:ss",
    u"d. M. yyyy.", u"d. M. yyyy. HH:mm:ss", u"d. M. yyyy.", u"d. M. yyyy. HH:mm:ss", u"d. MM. yyyy",
    u"d. MM. yyyy HH:mm:ss", u"d.M.yyyy H.mm.ss", u"d.M.yyyy H:mm:ss", u"d.M.yyyy HH:mm:ss", u"d.M.yyyy",
    u"d.M.yyyy H:mm:ss", u"d.M.yyyy HH:mm:ss", u"d.M.yyyy h:mm:ss tt", u"d.M.yyyy.", u"d.M.yyyy. HH:mm:ss",
    u"d.MM.yyyy HH:mm:ss", u"d.MM.yyyy", u"d.MM.yyyy '\u0433'.", u"d.MM.yyyy '\u0433'. H:mm:ss '\u0447'.",
    u"d.MM.yyyy HH:mm:ss", u"d/M/yyyy", u"d/M/yyyy H:m:s", u"d/M/yyyy H:mm:ss", u"d/M/yyyy HH:mm:ss",
    u"d/M/yyyy tt h:mm:ss", u"d/M/yyyy h:mm:ss tt", u"d/M/yyyy", u"d/M/yyyy H:mm:ss", u"d/M/yyyy HH:mm:ss",
    u"d/M/yyyy tt h:mm:ss", u"d/M/yyyy h:mm:ss tt", u"d/M/yyyy hh:mm:ss tt", u"d/MM/yyyy",
    u"d/MM/yyyy HH:mm:ss", u"d/MM/yyyy", u"d/MM/yyyy HH:mm:ss", u"d/MM/yyyy h:mm:ss tt", u"dd MMMM yyyy",
    u"dd-MM-yyyy HH:mm:ss", u"dd-MM-yyyy h:mm:ss tt", u"dd-MM-yyyy", u"dd-MM-yyyy HH:mm:ss",
    u"dd-MM-yyyy h:mm:ss tt", u"dd. MM. yyyy.", u"dd. MM. yyyy. HH:mm:ss", u"dd.MM.yyyy H:mm:ss",
    u"dd.MM.yyyy HH.mm.ss", u"dd.MM.yyyy HH:mm:ss", u"dd.MM.yyyy", u"dd.MM.yyyy H:mm:ss",
    u"dd.MM.yyyy HH:mm:ss", u"dd/MM/yyyy HH:mm:ss", u"dd/MM/yyyy h:mm:ss tt", u"dd/MM/yyyy",
    u"dd/MM/yyyy HH.mm.ss", u"dd/MM/yyyy HH:mm:ss", u"dd/MM/yyyy tt h:mm:ss", u"dd/MM/yyyy h:mm:ss tt",
    u"d\u200F/M\u200F/yyyy", u"d\u200F/M\u200F/yyyy g", u"d\u200F/M\u200F/yyyy g h:mm:ss tt",
    u"d\u200F/M\u200F/yyyy HH:mm:ss", u"d\u200F/M\u200F/yyyy h:mm:ss tt", u"hh:mm tt", u"hh:mm:ss tt",
    u"yyyy 'm'. MMMM d 'd'., dddd", u"yyyy '\u0436'. d MMMM, dddd",
    u"yyyy '\u043E\u043D\u044B' MMMM'\u044B\u043D' d, dddd '\u0433\u0430\u0440\u0430\u0433'",
    u"yyyy '\u0441\u044B\u043B' MMMM d '\u043A\u04AF\u043D\u044D', dddd", u"yyyy MMMM d, dddd",
    u"yyyy MMMM'\u0F60\u0F72'\u0F0B'\u0F5A\u0F7A\u0F66'\u0F0Bd, dddd", u"yyyy d-MMMM\u060C dddd",
    u"yyyy '\u0569'. MMMM d, dddd", u"yyyy('e')'ko' MMMM'ren' d('a'), dddd", u"yyyy, MMMM d, dddd",
    u"yyyy-'\u0436'., d-MMMM, dddd", u"yyyy-MM-dd HH 'h' mm 'min' ss 's'", u"yyyy-MM-dd HH.mm.ss",
    u"yyyy-MM-dd HH:mm:ss", u"yyyy-MM-dd h:mm:ss tt",
    u"yyyy-MM-dd '\u0F46\u0F74'\u0F0B'\u0F5A\u0F7C\u0F51'\u0F0Bh:mm:ss tt", u"yyyy. MM. dd. H:mm:ss",
    u"yyyy.MM.dd", u"yyyy.MM.dd HH:mm:ss", u"yyyy/M/d tt h:mm:ss", u"yyyy/M/d H:mm:ss", u"yyyy/M/d HH:mm:ss",
    u"yyyy/MM/dd H:mm:ss", u"yyyy/MM/dd HH:mm:ss", u"yyyy. M. d.", u"yyyy. M. d. tt h:mm:ss", u"yyyy/M/d",
    u"yyyy/M/d HH:mm:ss", u"yyyy/M/d h:mm:ss tt", u"yyyy\u104A MMMM d\u104A dddd",
    u"'\u0F46\u0F74'\u0F0B'\u0F5A\u0F7C\u0F51'\u0F0B h '\u0F66\u0F90\u0F62'\u0F0B'\u0F58'\u0F0B mm tt",
    u"'\u0F46\u0F74'\u0F0B'\u0F5A\u0F7C\u0F51'\u0F0Bh:mm:ss tt",
};

using LegacyFormatMap = std::unordered_map<TString, TString>;

const LegacyFormatMap& LegacyFormats() {
  static InitOnceValue<LegacyFormatMap> map;
  return map.Get([] {
    const size_t numEntriesInput = std::size(kICUDefaultPatterns);
    const size_t numEntriesOutput = std::size(kLegacyPatterns);
    VEL_ASSERT(numEntriesInput == numEntriesOutput);
    auto* formats = new LegacyFormatMap();
    for (size_t i = 0; i < numEntriesInput; ++i) formats->emplace(kICUDefaultPatterns[i], kLegacyPatterns[i]);
    return formats;
  });
}

void LogFormatStringFailure(const TString& text) { LogMessage(LogArea::Locale, LogSeverity::Warning, text); }

}  // namespace

// ---- Construction ----

TLocale::TLocale(LanguageCode languageCode, std::unique_ptr<VelICU::ICULocale> icuLocale)
    : m_icuLocale(std::move(icuLocale)), m_languageCode(std::move(languageCode)) {
  m_dateFormats.max_load_factor(1.0f);
}

TLocale::TLocale(uint32_t lcid) : TLocale(LanguageCode(lcid), MakeICULocale(LanguageUtils::GetLocaleStr(lcid))) {}

TLocale::TLocale(uint32_t lcid, const TString& calendar) : TLocale(lcid) {
  UErrorCode status = U_ZERO_ERROR;
  m_icuLocale->setKeywordValue("calendar", calendar.toUtf8().c_str(), status);
  VEL_ASSERT(VelICU::ICU_SUCCESS(status) && !m_icuLocale->isBogus());
}

TLocale::TLocale(const TString& isoName) : TLocale(LanguageCode(isoName), MakeICULocale(isoName.trimmed())) {}

TLocale::TLocale(const TLocale& other)
    : m_icuLocale(std::make_unique<VelICU::ICULocale>(*other.m_icuLocale)),
      m_languageCode(other.m_languageCode),
      m_dateFormats(other.CloneICUDateFormatCache()) {
  m_dateFormats.max_load_factor(1.0f);
}

TLocale& TLocale::operator=(const TLocale& other) {
  if (this == &other) return *this;
  auto icuLocale = std::make_unique<VelICU::ICULocale>(*other.m_icuLocale);
  LanguageCode languageCode = other.m_languageCode;
  DateFormatCache formats = other.CloneICUDateFormatCache();
  {
    AutoWriteLock write(m_lock);
    m_icuLocale.swap(icuLocale);
    std::swap(m_languageCode, languageCode);
    m_dateFormats.swap(formats);
    for (TString& pattern : m_defaultPatterns) pattern.clear();
  }
  // The parse state belongs to the old identity.
  AutoSynchronize parsing(m_parseMutex);
  m_parseFormatter.reset();
  m_parseCalendar.reset();
  m_parseFormats.reset();
  m_parseFormatterFailed = 0;
  return *this;
}

TLocale::~TLocale() = default;

TLocale::DateFormatCache TLocale::CloneICUDateFormatCache() const {
  DateFormatCache copy;
  copy.max_load_factor(1.0f);
  AutoReadLock read(m_lock);
  copy.reserve(m_dateFormats.size());
  for (const auto& [pattern, entry] : m_dateFormats) {
    auto clone = std::make_shared<CachedDateFormat>();
    std::lock_guard<std::mutex> use(entry->use);
    clone->format.reset(entry->format->clone());
    VEL_ASSERT(clone->format != nullptr);
    copy.emplace(pattern, std::move(clone));
  }
  return copy;
}

// ---- Date-format cache ----

std::shared_ptr<TLocale::CachedDateFormat> TLocale::GetCachedDateFormat(const TString& pattern) const {
  {
    AutoReadLock read(m_lock);
    if (auto found = m_dateFormats.find(pattern); found != m_dateFormats.end()) return found->second;
  }
  AutoWriteLock write(m_lock);
  // Another thread may have made it between the two locks.
  if (auto found = m_dateFormats.find(pattern); found != m_dateFormats.end()) return found->second;
  auto entry = std::make_shared<CachedDateFormat>();
  entry->format = LocaleInternal::MakeDateFormat(pattern, *m_icuLocale);
  m_dateFormats.emplace(pattern, entry);
  return entry;
}

TString TLocale::GetDefaultPattern(DateTimeParseOptions options) const {
  const auto parts = static_cast<uint32_t>(NormalizeDateTimeParseOptions(options));  // 1, 2 or 3
  TString& slot = m_defaultPatterns[parts - 1];
  {
    AutoReadLock read(m_lock);
    if (!slot.isEmpty()) return slot;
  }
  const Spec spec = parts == 1 ? Spec::ShortDate : parts == 2 ? Spec::LongTime : Spec::ShortDateLongTime;
  const ICUUtils::DateTimeStyles styles = ICUUtils::GetStylesOfSpec(spec);
  TString pattern;
  if (styles.date != VelICU::ICUDateFormat::kNone) {
    std::unique_ptr<VelICU::ICUDateFormat> date(VelICU::ICUDateFormat::createDateInstance(styles.date, *m_icuLocale));
    VEL_ASSERT(date != nullptr);
    pattern = WidenYear(ICUUtils::GetPattern(*date));
  }
  if (styles.time != VelICU::ICUDateFormat::kNone) {
    std::unique_ptr<VelICU::ICUDateFormat> time(VelICU::ICUDateFormat::createTimeInstance(styles.time, *m_icuLocale));
    VEL_ASSERT(time != nullptr);
    if (!pattern.isEmpty()) pattern += u" ";
    pattern += ICUUtils::GetPattern(*time);
  }
  AutoWriteLock write(m_lock);
  slot = pattern;
  return slot;
}

const VelICU::ICUDateFormat& TLocale::GetICUDateFormat(const TString& pattern) const {
  return *GetCachedDateFormat(pattern)->format;
}

size_t TLocale::GetICUDateFormatCacheSize() const {
  AutoReadLock read(m_lock);
  return m_dateFormats.size();
}

// ---- Process-wide caches ----

std::shared_ptr<const VelICU::ICULocale> TLocale::GetCachedICULocale(uint32_t lcid) {
  return FindOrMake(Locales(), lcid, lcid,
                    [lcid] { return std::make_shared<const VelICU::ICULocale>(CoreICUUtils::GetLocale(lcid)); });
}

std::shared_ptr<const VelICU::ICUDateFormat> TLocale::GetCachedICUDateFormat(uint32_t lcid,
                                                                            VelICU::ICUEStyle dateStyle) {
  return FindOrMake(DateFormats(), StyleKey(lcid, dateStyle), lcid,
                    [lcid, dateStyle]() -> std::shared_ptr<const VelICU::ICUDateFormat> {
                      const auto locale = GetCachedICULocale(lcid);
                      return std::shared_ptr<const VelICU::ICUDateFormat>(
                          VelICU::ICUDateFormat::createDateInstance(dateStyle, *locale));
                    });
}

std::shared_ptr<const VelICU::ICUSimpleDateFormat> TLocale::GetCachedICUSimpleDateFormat(
    uint32_t lcid, VelICU::ICUEStyle timeStyle) {
  return FindOrMake(TimeFormats(), StyleKey(lcid, timeStyle), lcid,
                    [lcid, timeStyle]() -> std::shared_ptr<const VelICU::ICUSimpleDateFormat> {
                      const auto locale = GetCachedICULocale(lcid);
                      std::unique_ptr<VelICU::ICUDateFormat> format(
                          VelICU::ICUDateFormat::createTimeInstance(timeStyle, *locale));
                      auto* simple = dynamic_cast<VelICU::ICUSimpleDateFormat*>(format.get());
                      if (simple == nullptr) return nullptr;
                      format.release();
                      return std::shared_ptr<const VelICU::ICUSimpleDateFormat>(simple);
                    });
}

// ---- Default patterns ----

TString TLocale::GetLocaleFormatAsICU(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid) {
  // The kinds with a short date are 2 and 4 (and the unknown ones, read as 4).
  const bool hasShortDate = ICUUtils::GetStylesOfSpec(spec).date == VelICU::ICUDateFormat::kShort;
  return hasShortDate ? WidenYear(BasePattern(spec, lcid)) : BasePattern(spec, lcid);
}

TString TLocale::GetLocaleFormatAsWindows(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid) {
  return MorphICUtoWindowsCustom(ConvertCJKTimeFormatIfNeeded(BasePattern(spec, lcid), lcid), true);
}

TString TLocale::GetLocaleFormatAsCustom(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid) {
  return MorphICUtoWindowsCustom(BasePattern(spec, lcid), false);
}

TString TLocale::GetLocaleFormatQLocaleInternal(ICUUtils::DefaultDateTimeFormatSpec spec, uint32_t lcid) {
  const QLocale locale = GetQLocale(lcid);
  switch (spec) {
    case Spec::LongDate:
      return TString(locale.dateFormat(QLocale::LongFormat));
    case Spec::ShortDate:
      return TString(locale.dateFormat(QLocale::ShortFormat));
    case Spec::LongTime:
      return TString(locale.timeFormat(QLocale::LongFormat));
    case Spec::ShortTime:
      return TString(locale.timeFormat(QLocale::ShortFormat));
    case Spec::ShortDateLongTime:
    default:
      return TString(locale.dateFormat(QLocale::ShortFormat)) + u" " +
             TString(locale.timeFormat(QLocale::LongFormat));
  }
}

TString TLocale::ConvertCJKTimeFormatIfNeeded(const TString& icuPattern, uint32_t lcid) {
  if (!IsCJKLanguage(lcid)) return icuPattern;
  TString out;
  bool inLiteral = false;
  bool ideographRun = false;  // inside a quote we opened around ideographs
  for (int i = 0; i < icuPattern.size(); ++i) {
    const char16_t c = icuPattern[i];
    const bool ideograph = !inLiteral && c >= 0x0080 && TCType::isAlpha(c);
    if (ideographRun && !ideograph) {
      out.append(u'\'');
      ideographRun = false;
    }
    if (c == u'\'') {
      inLiteral = !inLiteral;
      out.append(c);
      continue;
    }
    if (inLiteral) {
      out.append(c);
      continue;
    }
    if (ideograph) {
      if (!ideographRun) out.append(u'\'');
      ideographRun = true;
      out.append(c);
      continue;
    }
    if (c == u'B' || c == u'b' || c == u'a') {
      // Windows knows only AM/PM: one marker for any run of day periods.
      int end = i;
      while (end < icuPattern.size() && icuPattern[end] == c) ++end;
      out.append(u'a');
      if (end < icuPattern.size() && (icuPattern[end] == u'h' || icuPattern[end] == u'H' ||
                                      icuPattern[end] == u'K' || icuPattern[end] == u'k')) {
        out.append(u' ');
      }
      i = end - 1;
      continue;
    }
    out.append(c);
  }
  if (ideographRun) out.append(u'\'');
  return out;
}

TString TLocale::GetFormatString(DateTimeFormatCodes code, const LanguageCode& language) {
  const uint32_t lcid = language.GetLCID();
  if (lcid == LanguageUtils::kUserDefaultLCID && VelICU::ICULocale::getDefault().isBogus()) {
    LogFormatStringFailure(u"Unable to copy default locale in GetFormatString");
    return TString();
  }
  if (!HasLocaleForLCID(lcid)) {
    LogFormatStringFailure(TFormatString(u"Unable to find language reference for %1 in GetFormatString").arg(lcid));
    return TString();
  }
  const int k = static_cast<int>(code);
  if (k < 0 || k > 23) {
    LogFormatStringFailure(TFormatString(u"Invalid format identifier %1 passed to GetFormatString").arg(k));
    return TString();
  }
  // Styles 4 full .. 1 short, 0 none; ICU numbers them kFull = 0 .. kShort = 3.
  const auto toICU = [](int style) {
    return style == 0 ? VelICU::ICUDateFormat::kNone : static_cast<VelICU::ICUEStyle>(4 - style);
  };
  const VelICU::ICUEStyle dateStyle = toICU(4 - k / 5);
  const VelICU::ICUEStyle timeStyle = toICU(4 - k % 5);
  std::shared_ptr<const VelICU::ICUDateFormat> format;
  if (timeStyle == VelICU::ICUDateFormat::kNone) {
    format = GetCachedICUDateFormat(lcid, dateStyle);
  } else if (dateStyle == VelICU::ICUDateFormat::kNone) {
    format = GetCachedICUSimpleDateFormat(lcid, timeStyle);
  } else {
    format.reset(VelICU::ICUDateFormat::createDateTimeInstance(dateStyle, timeStyle, *GetCachedICULocale(lcid)));
  }
  if (format == nullptr) {
    LogFormatStringFailure(TFormatString(u"Unable to create locale for LCID %1").arg(lcid));
    return TString();
  }
  return ICUUtils::GetPattern(*format);
}

int TLocale::GetDateOrder(uint32_t lcid) {
  const TString pattern = GetFormatString(DateTimeFormatCodes::ShortDate, LanguageCode(lcid));
  const int d = pattern.indexOf(u'd');
  const int m = pattern.indexOf(u'M');
  const int y = pattern.indexOf(u'y');
  if (d < 0 || m < 0 || y < 0) return kDateOrderUnknown;
  if (d < m && m < y) return kDayMonthYear;
  if (m < d && d < y) return kMonthDayYear;
  if (y < m && m < d) return kYearMonthDay;
  if (y < d && d < m) return kYearDayMonth;
  return kDateOrderUnknown;
}

const TString& TLocale::GetLegacyFormatFromICU(const TString& icuPattern) {
  const LegacyFormatMap& formatsMap = LegacyFormats();
  const auto formatEntry = formatsMap.find(icuPattern);
  VEL_ASSERT(formatEntry != formatsMap.end());
  return formatEntry->second;
}

// ---- First week of the year ----

int TLocale::GetFirstWeekBehaviourMap(uint32_t lcid) {
  const uint32_t reported = CoreICUUtils::GetLocale(lcid).getLCID();
  const auto& map = FirstWeekBehaviours();
  const auto found = map.find(reported);
  return found == map.end() ? 1 : found->second;
}

int TLocale::GetFirstWeekBehaviour(uint32_t lcid) { return GetFirstWeekBehaviourMap(lcid); }

int TLocale::GetMinimalDaysInFirstWeek(uint32_t lcid) {
  switch (GetFirstWeekBehaviour(lcid)) {
    case 2:
      return 4;
    case 3:
      return 7;
    default:
      return 1;
  }
}

bool TLocale::FirstWeekIsBroken(uint32_t lcid) { return GetFirstWeekBehaviour(lcid) == 1; }

// ---- Default locales and the system locale ----

const TLocale& TLocale::GetSystemInvariantLocale() {
  static const TLocale locale(LanguageUtils::kSystemDefaultLCID);
  return locale;
}

const TLocale& TLocale::GetUserDefaultLocale() {
  static const TLocale locale(LanguageUtils::kUserDefaultLCID);
  return locale;
}

const TLocale& TLocale::GetISODefaultLocale() {
  static const TLocale locale(LanguageUtils::GetDefaultISOString());
  return locale;
}

const TString& TLocale::GetUserDefaultICULocale() {
  static const TString* const name = new TString(TString::fromLatin1(VelICU::ICULocale::getDefault().getName()));
  return *name;
}

uint32_t TLocale::GetUserDefaultLCID() { return LanguageUtils::ConvertDefaultLocale(LanguageUtils::kUserDefaultLCID); }

void TLocale::GetSupportedLocales(uint32_t flags, std::vector<uint32_t>& lcids, std::vector<TString>& names,
                                  std::vector<TString>& displayNames) {
  GetSupportedLocalesICU(flags, lcids, names, displayNames);
}

void TLocale::GetSupportedLocalesICU(uint32_t flags, std::vector<uint32_t>& lcids, std::vector<TString>& names,
                                     std::vector<TString>& displayNames) {
  lcids.clear();
  names.clear();
  displayNames.clear();
  int32_t count = 0;
  const VelICU::ICULocale* locales = VelICU::ICULocale::getAvailableLocales(count);
  for (int32_t i = 0; i < count; ++i) {
    const VelICU::ICULocale& locale = locales[i];
    if (locale.getCountry()[0] == 0 && (flags & kIncludeNeutralLocales) == 0) continue;
    const uint32_t lcid = locale.getLCID();
    // Locales without an LCID of their own report their language's or none.
    if (lcid == 0 || LanguageUtils::GetLocaleForLCID(lcid) != locale.getName()) continue;
    icu::UnicodeString display;
    locale.getDisplayName(VelICU::ICULocale::getEnglish(), display);
    lcids.push_back(lcid);
    names.push_back(TString::fromLatin1(locale.getName()));
    displayNames.push_back(VelICU::FromUnicodeString(display));
  }
}
