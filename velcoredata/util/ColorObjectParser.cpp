#include "velcoredata/util/ColorObjectParser.h"

#include "velcoredata/platform/LogMessage.h"
#include "velcoredata/platform/TFormatString.h"

namespace {

// The value of a hexadecimal digit, or -1.
int HexDigit(char16_t c) noexcept {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

}  // namespace

ColorObjectParser::ColorObjectParser(const char16_t* text) { Run(TString(text)); }

ColorObjectParser::ColorObjectParser(const TString& text) { Run(text); }

void ColorObjectParser::Run(const TString& input) {
  TString text = input;
  text.remove(u' ');
  const int n = text.size();
  if ((n == 7 || n == 9) && text[0] == u'#') {
    ParseHex(text);
  } else if (n >= 10 && text.startsWith(TString(u"rgb"))) {
    ParseDecimal(text);
  } else {
    m_failed = true;
  }
}

void ColorObjectParser::ParseHex(const TString& text) {
  // A bad digit counts as 0 and the rest is still read, so the channels show
  // how far off the text was.
  const auto byteAt = [&](int i) {
    int value = 0;
    for (int k = i; k < i + 2; ++k) {
      int digit = HexDigit(text[k]);
      if (digit < 0) {
        m_failed = true;
        digit = 0;
      }
      value = value * 16 + digit;
    }
    return static_cast<uint8_t>(value);
  };
  m_r = byteAt(1);
  m_g = byteAt(3);
  m_b = byteAt(5);
  m_a = text.size() == 9 ? byteAt(7) : 255;
}

void ColorObjectParser::ParseDecimal(const TString& text) {
  const int n = text.size();
  const bool hasAlpha = text[3] == u'a';
  int pos = hasAlpha ? 4 : 3;
  if (text[pos] != u'(') {
    m_failed = true;
    return;
  }
  ++pos;
  uint8_t* const channels[] = {&m_r, &m_g, &m_b, &m_a};
  const int count = hasAlpha ? 4 : 3;
  for (int i = 0; i < count; ++i) {
    const int start = pos;
    int value = 0;
    while (pos < n && text[pos] >= u'0' && text[pos] <= u'9') {
      value = value * 10 + (text[pos] - u'0');
      if (value > 255) {
        m_failed = true;
        return;
      }
      ++pos;
    }
    *channels[i] = static_cast<uint8_t>(value);
    const char16_t expected = i + 1 < count ? u',' : u')';
    if (pos == start || pos >= n || text[pos] != expected) {
      m_failed = true;
      return;
    }
    ++pos;
  }
  if (pos != n) m_failed = true;  // ")" must be the last character
}

ColorObject ColorObjectParser::Parse(const TString& text) {
  const ColorObjectParser parser(text);
  if (parser.Failed()) {
    LogMessage(LogArea::Color, LogSeverity::Warning,
               TFormatString(u"Warning: could not parse color %1\n").arg(text).str());
    return ColorObject();
  }
  return ColorObject(parser.GetR(), parser.GetG(), parser.GetB(), parser.GetA(), ColorObject::Type::RGB);
}
