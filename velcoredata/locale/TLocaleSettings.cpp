// TLocale: the locale's number, currency and list settings.

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

#include <unordered_map>

#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/NumberFormat.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/locale/internal/LcidCache.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TFormatString.h"
#include "velcoredata/platform/TSettings.h"

// Qt after oneTBB: Qt's "emit" keyword macro breaks oneTBB's headers.
#include <QLocale>

namespace {

using LocaleInternal::ConcurrentMap;
using LocaleInternal::FindOrMake;

enum class Style { Number, Currency };

// The options of a locale's ICU decimal format: separators and grouping from
// its symbols and pattern, the decimal places it always writes (minimum
// fraction digits: 0 for numbers in most locales, the currency's minor unit
// for currencies), the positive prefix and suffix, and the negative format
// read from the negative prefix and suffix.
NUMBER_FORMAT_OPTIONS ReadSettings(uint32_t lcid, Style style) {
  const VelICU::ICULocale locale = CoreICUUtils::GetLocale(lcid);
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> created(style == Style::Number
                                                 ? VelICU::ICUDecimalFormat::createInstance(locale, status)
                                                 : VelICU::ICUDecimalFormat::createCurrencyInstance(locale, status));
  auto* format = dynamic_cast<VelICU::ICUDecimalFormat*>(created.get());
  VEL_ASSERT(VelICU::ICU_SUCCESS(status) && format != nullptr);
  const icu::DecimalFormatSymbols* symbols = format->getDecimalFormatSymbols();
  VEL_ASSERT(symbols != nullptr);

  NUMBER_FORMAT_OPTIONS options;
  options.decimalPlaces = static_cast<uint32_t>(std::max(format->getMinimumFractionDigits(), 0));
  options.decimalSeparator = VelICU::FromUnicodeString(symbols->getSymbol(
      style == Style::Number ? icu::DecimalFormatSymbols::kDecimalSeparatorSymbol
                             : icu::DecimalFormatSymbols::kMonetarySeparatorSymbol));
  options.thousandsSeparator = VelICU::FromUnicodeString(symbols->getSymbol(
      style == Style::Number ? icu::DecimalFormatSymbols::kGroupingSeparatorSymbol
                             : icu::DecimalFormatSymbols::kMonetaryGroupingSeparatorSymbol));
  const int32_t primary = format->getGroupingSize();
  options.grouping = format->isGroupingUsed() && primary > 0;
  // The secondary size is 0 or negative when groups repeat the primary one.
  const int32_t secondary = format->getSecondaryGroupingSize() > 0 ? format->getSecondaryGroupingSize() : primary;
  options.groupingDescription =
      options.grouping ? TFormatString(u"%1;%2").arg(primary).arg(secondary).str() : TString(u"-1");
  icu::UnicodeString positivePrefix, positiveSuffix, negativePrefix, negativeSuffix;
  format->getPositivePrefix(positivePrefix);
  format->getPositiveSuffix(positiveSuffix);
  format->getNegativePrefix(negativePrefix);
  format->getNegativeSuffix(negativeSuffix);
  options.prefix = VelICU::FromUnicodeString(positivePrefix);
  options.suffix = VelICU::FromUnicodeString(positiveSuffix);
  options.units = UnitsFormatEnum::None;
  options.negativeFormat = GetNegativeFormatting(
      VelICU::FromUnicodeString(negativePrefix), VelICU::FromUnicodeString(negativeSuffix), options.prefix, options.suffix);
  return options;
}

using SettingsCache = ConcurrentMap<uint32_t, NUMBER_FORMAT_OPTIONS>;

NUMBER_FORMAT_OPTIONS CachedSettings(uint32_t lcid, Style style) {
  static SettingsCache* const numbers = new SettingsCache();
  static SettingsCache* const currencies = new SettingsCache();
  return FindOrMake(style == Style::Number ? *numbers : *currencies, lcid, lcid,
                    [lcid, style] { return ReadSettings(lcid, style); });
}

// Currencies whose ISO 4217 minor unit is not 2, by the LCID of a locale that
// uses them.
const std::unordered_map<uint32_t, int>& CurrencyDigits() {
  static const std::unordered_map<uint32_t, int>* const digits = new std::unordered_map<uint32_t, int>{
      {0x040F, 0},  // is_IS, ISK
      {0x0411, 0},  // ja_JP, JPY
      {0x0412, 0},  // ko_KR, KRW
      {0x042A, 0},  // vi_VN, VND
      {0x0487, 0},  // rw_RW, RWF
      {0x0488, 0},  // wo_SN, XOF
      {0x0867, 0},  // ff_Latn_SN, XOF
      {0x280C, 0},  // fr_SN, XOF
      {0x300C, 0},  // fr_CI, XOF
      {0x340C, 0},  // fr_ML, XOF
      {0x2C0C, 0},  // fr_CM, XAF
      {0x340A, 0},  // es_CL, CLP
      {0x3C0A, 0},  // es_PY, PYG
      {0x0801, 3},  // ar_IQ, IQD
      {0x1001, 3},  // ar_LY, LYD
      {0x1C01, 3},  // ar_TN, TND
      {0x2001, 3},  // ar_OM, OMR
      {0x2C01, 3},  // ar_JO, JOD
      {0x3401, 3},  // ar_KW, KWD
      {0x3C01, 3},  // ar_BH, BHD
  };
  return *digits;
}

}  // namespace

void TLocale::GetSystemNumberSettings(uint32_t lcid, NUMBER_FORMAT_OPTIONS* options) {
  *options = CachedSettings(lcid, Style::Number);
}

void TLocale::GetSystemCurrencySettings(uint32_t lcid, NUMBER_FORMAT_OPTIONS* options) {
  *options = CachedSettings(lcid, Style::Currency);
}

int TLocale::GetCurrencyDecimalPlaces(uint32_t lcid) {
  const auto& digits = CurrencyDigits();
  const auto found = digits.find(LanguageUtils::ConvertDefaultLocale(lcid));
  return found == digits.end() ? 2 : found->second;
}

TString TLocale::GetDecimalPoint(uint32_t lcid) { return CachedSettings(lcid, Style::Number).decimalSeparator; }

TString TLocale::GetCurrencyString(uint32_t lcid) { return TString(GetQLocale(lcid).currencySymbol()); }

QLocale TLocale::GetQLocale(uint32_t lcid) {
  // Qt reads "de_DE" but not ICU's keywords ("@collation=...").
  std::string name = LanguageUtils::GetLocaleForLCID(lcid);
  name = name.substr(0, name.find('@'));
  return QLocale(QString::fromLatin1(name.c_str()));
}

TString TLocale::GetListSeparator(uint32_t lcid) {
  TString key;
  if (lcid == LanguageUtils::kUserDefaultLCID) {
    key = u"UserDefaults/";
  } else if (lcid == LanguageUtils::kSystemDefaultLCID) {
    key = u"SystemDefaults/";
  } else {
    key = LanguageUtils::GetLocaleStr(lcid) + u"/";
  }
  key += u"ListSeparator";
  TString value;
  return TSettings::TryGetValue(key, value) ? value : TString(u",");
}
