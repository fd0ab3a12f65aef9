// ColorObjectParser: reads the text forms of ColorObject back.
//
// Accepted texts, after every space (U+0020) has been removed:
//   #RRGGBB            two hexadecimal digits per channel (either case); alpha 255
//   #RRGGBBAA          the same with alpha
//   rgb(R,G,B)         decimal channels 0-255; alpha 255
//   rgba(R,G,B,A)      decimal channels 0-255, alpha included
// The keywords are lower case; ")" must end the text. Anything else fails.
// A character that is not a hexadecimal digit in a digit position counts as 0
// and sets the failure flag, and the remaining digits are still read.
// Decimal numbers are plain digit runs (no sign, no fraction, no exponent);
// one above 255 fails, since it cannot be a channel.
//
// Thread-safety: a plain value; Parse may run on any thread.
#pragma once

#include <cstdint>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/util/ColorObject.h"

class VELCOREDATA_EXPORT ColorObjectParser {
 public:
  // Parses `text` at once; a null pointer fails like an empty text.
  explicit ColorObjectParser(const char16_t* text);
  explicit ColorObjectParser(const TString& text);

  bool Failed() const noexcept { return m_failed; }
  // The channels read. After a failure they hold what was read before the
  // failing character (invalid hexadecimal digits as 0) and are meaningful
  // only for diagnostics.
  uint8_t GetR() const noexcept { return m_r; }
  uint8_t GetG() const noexcept { return m_g; }
  uint8_t GetB() const noexcept { return m_b; }
  uint8_t GetA() const noexcept { return m_a; }

  // The colour of `text`. On failure writes the warning
  // "Warning: could not parse color <text>" to the velcoredata.color log and
  // returns opaque black, the default colour, so that a bad colour in a
  // document stays visible instead of vanishing.
  static ColorObject Parse(const TString& text);

 private:
  void Run(const TString& input);
  void ParseHex(const TString& text);
  void ParseDecimal(const TString& text);

  uint8_t m_r = 0;
  uint8_t m_g = 0;
  uint8_t m_b = 0;
  uint8_t m_a = 255;
  bool m_failed = false;
};
