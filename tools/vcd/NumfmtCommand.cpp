// vcd numfmt decode TEXT | build [options] | locale LOCALE: encoded number
// format strings taken apart and put together, and the OLE pictures of a
// locale's formats.

#include <cstdio>
#include <ostream>

#include "Command.h"
#include "velcoredata/locale/LanguageCode.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/NumberFormat.h"
#include "velcoredata/locale/TLocale.h"

namespace {

std::string Utf8(const TString& text) { return text.toUtf8(); }

std::string Quoted(const TString& text) { return "\"" + Utf8(text) + "\""; }

// A locale given as an LCID (decimal or 0x hexadecimal) or as a name.
uint32_t ParseLocale(const std::string& text) {
  const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  bool ok = false;
  const unsigned value = TString::fromUtf8(hex ? text.substr(2) : text).toUInt(&ok, hex ? 16 : 10);
  if (ok) return value;
  if (text.empty()) throw vcd::UsageError("empty locale");
  return LanguageCode(TString::fromUtf8(text)).GetLCID();
}

int ParseNumber(const std::string& text, const char* what, int low, int high) {
  bool ok = false;
  const int value = TString::fromUtf8(text).toInt(&ok);
  if (!ok || value < low || value > high) {
    throw vcd::UsageError(std::string(what) + " must be a number from " + std::to_string(low) + " to " +
                          std::to_string(high));
  }
  return value;
}

std::string CodeText(FormatCode code) {
  const auto c = static_cast<char16_t>(code);
  const std::string letter = c == 0 ? std::string("(automatic)") : Utf8(TString(1, c));
  return letter + " (" + std::to_string(static_cast<int>(c)) + ")";
}

void PrintOptions(std::ostream& out, const NUMBER_FORMAT_OPTIONS& o) {
  out << "decimals:    " << o.decimalPlaces << "\n"
      << "decimal:     " << Quoted(o.decimalSeparator) << "\n"
      << "grouping:    " << (o.grouping ? "yes" : "no") << " (" << Utf8(o.groupingDescription) << ")\n"
      << "thousands:   " << Quoted(o.thousandsSeparator) << "\n"
      << "prefix:      " << Quoted(o.prefix) << "\n"
      << "suffix:      " << Quoted(o.suffix) << "\n";
  const char16_t unit = GetUnitsFormatChar(o.units);
  out << "units:       " << (unit == 0 ? std::string("none") : Utf8(TString(1, unit))) << " ("
      << static_cast<int>(o.units) << ")\n"
      << "negative:    " << static_cast<int>(o.negativeFormat) << " "
      << Utf8(GetNegativeFormatSample(o.negativeFormat, o.prefix, o.suffix)) << "\n";
}

int Decode(const std::vector<std::string>& args, std::ostream& out) {
  if (args.size() != 2) throw vcd::UsageError("decode takes one TEXT");
  const TString text = TString::fromUtf8(args[1]);
  FormatCode code;
  int option;
  TString rest;
  DecodeFormatString(text, code, option, rest);
  out << "code:        " << CodeText(code) << "\n"
      << "option:      " << option << "\n"
      << "rest:        " << Quoted(rest) << "\n";
  NUMBER_FORMAT_OPTIONS options;
  GetFormatCodeAndOptionsFromString(text, code, option, &options);
  PrintOptions(out, options);
  TString rebuilt;
  GetStringFromFormatCodeAndOptions(code, option, &options, rebuilt);
  out << "rebuilt:     " << Utf8(rebuilt) << "\n";
  return 0;
}

int Build(const std::vector<std::string>& args, std::ostream& out) {
  FormatCode code = FormatCode::Number;
  int option = 0;
  NUMBER_FORMAT_OPTIONS options;
  for (size_t i = 1; i < args.size(); ++i) {
    const std::string& name = args[i];
    if (name == "--grouping") {
      options.grouping = true;
      continue;
    }
    if (i + 1 >= args.size()) throw vcd::UsageError("missing value after " + name);
    const std::string& value = args[++i];
    if (name == "--code") {
      const TString letter = TString::fromUtf8(value);
      if (letter.size() != 1) throw vcd::UsageError("--code takes one character");
      code = static_cast<FormatCode>(letter[0]);
    } else if (name == "--locale") {
      option = static_cast<int>(ParseLocale(value));
    } else if (name == "--decimals") {
      options.decimalPlaces = static_cast<uint32_t>(ParseNumber(value, "--decimals", 0, 30));
    } else if (name == "--prefix") {
      options.prefix = TString::fromUtf8(value);
    } else if (name == "--suffix") {
      options.suffix = TString::fromUtf8(value);
    } else if (name == "--units") {
      UnitsFormatEnum units = UnitsFormatEnum::None;
      if (!UnitsFormatEnumEncodings().TryDecode(TString::fromUtf8(value), units)) {
        units = static_cast<UnitsFormatEnum>(ParseNumber(value, "--units (or K, M, B, G)", 0, 4));
      }
      options.units = units;
    } else if (name == "--negative") {
      options.negativeFormat = static_cast<NegativeFormatEnum>(ParseNumber(value, "--negative", 0, 5));
    } else {
      throw vcd::UsageError("unknown option " + name);
    }
  }
  TString encoded;
  GetStringFromFormatCodeAndOptions(code, option, &options, encoded);
  out << "encoded:     " << Utf8(encoded) << "\n"
      << "picture:     " << Utf8(BuildOleFormatString(&options, options.units != UnitsFormatEnum::None)) << "\n";
  return 0;
}

int Locale(const std::vector<std::string>& args, std::ostream& out) {
  if (args.size() != 2) throw vcd::UsageError("locale takes one LOCALE");
  const uint32_t lcid = ParseLocale(args[1]);
  NUMBER_FORMAT_OPTIONS currency;
  TLocale::GetSystemCurrencySettings(lcid, &currency);
  NUMBER_FORMAT_OPTIONS number;
  TLocale::GetSystemNumberSettings(lcid, &number);
  out << "locale:      " << Utf8(LanguageUtils::GetLocaleStr(lcid)) << " (" << lcid << ")\n"
      << "number:      " << Utf8(GetOleFormatString(FormatCode::SystemNumber, lcid)) << "\n"
      << "currency:    " << Utf8(BuildOleFormatString(&currency, true)) << "\n"
      << "short date:  " << Utf8(GetOleFormatString(FormatCode::ShortDate, lcid)) << "\n"
      << "long date:   " << Utf8(GetOleFormatString(FormatCode::LongDate, lcid)) << "\n"
      << "long time:   " << Utf8(GetOleFormatString(FormatCode::LongTime, lcid)) << "\n"
      << "decimal:     " << Quoted(number.decimalSeparator) << "\n"
      << "thousands:   " << Quoted(number.thousandsSeparator) << "\n"
      << "grouping:    " << Utf8(number.groupingDescription) << "\n"
      << "list:        " << Quoted(TLocale::GetListSeparator(lcid)) << "\n"
      << "currency digits: " << TLocale::GetCurrencyDecimalPlaces(lcid) << "\n";
  return 0;
}

int RunNumfmt(const std::vector<std::string>& args, vcd::CommandIo& io) {
  if (args.empty()) throw vcd::UsageError("expected decode, build or locale");
  if (args[0] == "decode") return Decode(args, io.out);
  if (args[0] == "build") return Build(args, io.out);
  if (args[0] == "locale") return Locale(args, io.out);
  throw vcd::UsageError("unknown action '" + args[0] + "' (decode, build or locale)");
}

const vcd::CommandRegistration kNumfmt{
    "numfmt",
    "numfmt decode TEXT | build [--code C] [--locale L] [--decimals N] [--grouping] [--prefix P] [--suffix S] "
    "[--units K|M|B|G] [--negative 0-5] | locale LOCALE",
    "take encoded number format strings apart, build them, show a locale's format pictures", &RunNumfmt};

}  // namespace
