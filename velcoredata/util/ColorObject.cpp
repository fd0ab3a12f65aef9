#include "velcoredata/util/ColorObject.h"

#include <algorithm>
#include <cmath>

namespace {

// A fraction clamped to [0, 1]; NaN reads as 0.
double Clamp01(double x) noexcept {
  if (!(x > 0.0)) return 0.0;
  return x > 1.0 ? 1.0 : x;
}

// A channel from a value already in [0, 255].
uint8_t Byte(double x) noexcept { return static_cast<uint8_t>(std::min(std::max(x, 0.0), 255.0)); }

// A fraction in [0, 1] as the nearest channel value.
uint8_t RoundedByte(double fraction) noexcept { return Byte(fraction * 255.0 + 0.5); }

TString Hex2(uint8_t channel) {
  // The platform's base-16 conversion writes lower-case digits.
  TString digits = TString::number(static_cast<unsigned int>(channel), 16);
  if (digits.size() < 2) digits.prepend(TString(u"0"));
  return digits;
}

// An opaque-or-not pair of rgb() texts sharing their channel arguments.
TString RgbText(const ColorObject& c, const TString& alphaText) {
  if (c.IsOpaque()) {
    return TString(u"rgb(%1,%2,%3)").arg(c.Red()).arg(c.Green()).arg(c.Blue());
  }
  return TString(u"rgba(%1,%2,%3,%4)").arg(c.Red()).arg(c.Green()).arg(c.Blue()).arg(alphaText);
}

}  // namespace

ColorObject::ColorObject(float r, float g, float b, Type type) {
  if (type == Type::RGB) {
    SetRGBA(Byte(Clamp01(r) * 255.0), Byte(Clamp01(g) * 255.0), Byte(Clamp01(b) * 255.0), 255);
  } else {
    SetHSVA(r, g, b, 255.0f);  // clamped to 1: opaque
  }
}

ColorObject::ColorObject(float r, float g, float b, float a, Type type) {
  if (type == Type::RGB) {
    SetRGBA(Byte(Clamp01(r) * 255.0), Byte(Clamp01(g) * 255.0), Byte(Clamp01(b) * 255.0),
            Byte(Clamp01(a) * 255.0));
  } else {
    SetHSVA(r, g, b, a);
  }
}

ColorObject::ColorObject(int r, int g, int b, Type type) : ColorObject(r, g, b, 255, type) {}

ColorObject::ColorObject(int r, int g, int b, int a, Type type) {
  if (type == Type::RGB) {
    SetRGBA(static_cast<uint8_t>(r & 0xFF), static_cast<uint8_t>(g & 0xFF), static_cast<uint8_t>(b & 0xFF),
            static_cast<uint8_t>(a & 0xFF));
  } else {
    SetHSVA(static_cast<float>(r / 255.0), static_cast<float>(g / 255.0), static_cast<float>(b / 255.0),
            static_cast<float>(a / 255.0));
  }
}

ColorObject::ColorObject(const ColorObject& x, const ColorObject& y) noexcept
    : m_r(static_cast<uint8_t>((x.m_r + y.m_r) >> 1)),
      m_g(static_cast<uint8_t>((x.m_g + y.m_g) >> 1)),
      m_b(static_cast<uint8_t>((x.m_b + y.m_b) >> 1)),
      m_a(static_cast<uint8_t>((x.m_a + y.m_a) >> 1)) {}

ColorObject ColorObject::FromRGB(uint32_t v) noexcept {
  ColorObject c;
  c.SetRGBA(static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8), static_cast<uint8_t>(v >> 16), 255);
  return c;
}

ColorObject ColorObject::FromQRGB(uint32_t v) noexcept {
  ColorObject c;
  c.SetRGBA(static_cast<uint8_t>(v >> 16), static_cast<uint8_t>(v >> 8), static_cast<uint8_t>(v),
            static_cast<uint8_t>(v >> 24));
  return c;
}

ColorObject::operator unsigned int() const noexcept {
  return static_cast<unsigned int>(m_r) | static_cast<unsigned int>(m_g) << 8 |
         static_cast<unsigned int>(m_b) << 16;
}

void ColorObject::SetRGBA(uint8_t r, uint8_t g, uint8_t b, uint8_t a) noexcept {
  m_r = r;
  m_g = g;
  m_b = b;
  m_a = a;
}

void ColorObject::SetAlphaF(float f) noexcept { m_a = Byte(Clamp01(f) * 255.0); }

// --- hue, saturation, value ---------------------------------------------------

void ColorObject::SetHSVA(float hf, float sf, float vf, float af) noexcept {
  double h = std::isfinite(hf) ? static_cast<double>(hf) : 0.0;
  h -= std::floor(h);  // [0, 1)
  const double s = Clamp01(sf);
  const double v = Clamp01(vf);
  // The hexcone: the wheel is six sectors; in each one channel is at v, one
  // at v (1 - s), and the third moves between them with the position f in
  // the sector.
  const double h6 = h * 6.0;
  int sector = static_cast<int>(std::floor(h6));  // [0, 5]
  if (sector > 5) sector = 0;  // h just below 1 rounded up to a full turn
  const double f = h6 - sector;
  const double p = v * (1.0 - s);
  const double q = v * (1.0 - s * f);
  const double t = v * (1.0 - s * (1.0 - f));
  double r = v, g = t, b = p;
  switch (sector) {
    case 0: r = v; g = t; b = p; break;  // red to yellow
    case 1: r = q; g = v; b = p; break;  // yellow to green
    case 2: r = p; g = v; b = t; break;  // green to cyan
    case 3: r = p; g = q; b = v; break;  // cyan to blue
    case 4: r = t; g = p; b = v; break;  // blue to magenta
    default: r = v; g = p; b = q; break;  // magenta to red
  }
  SetRGBA(RoundedByte(r), RoundedByte(g), RoundedByte(b), RoundedByte(Clamp01(af)));
}

void ColorObject::GetHSV(float& h, float& s, float& v) const noexcept {
  const int maxC = std::max({m_r, m_g, m_b});
  const int minC = std::min({m_r, m_g, m_b});
  const int spread = maxC - minC;
  v = static_cast<float>(maxC / 255.0);
  s = maxC == 0 ? 0.0f : static_cast<float>(static_cast<double>(spread) / maxC);
  if (spread == 0) {
    h = 0.0f;
    return;
  }
  // Position on the wheel in sixths: the sector of the largest channel plus
  // the signed offset of the other two.
  double h6;
  if (maxC == m_r) {
    h6 = static_cast<double>(m_g - m_b) / spread;  // (-1, 1): magenta side is negative
    if (h6 < 0) h6 += 6.0;
  } else if (maxC == m_g) {
    h6 = 2.0 + static_cast<double>(m_b - m_r) / spread;
  } else {
    h6 = 4.0 + static_cast<double>(m_r - m_g) / spread;
  }
  h = static_cast<float>(h6 / 6.0);
}

float ColorObject::Hue() const noexcept {
  float h, s, v;
  GetHSV(h, s, v);
  return h;
}

float ColorObject::Saturation() const noexcept {
  float h, s, v;
  GetHSV(h, s, v);
  return s;
}

float ColorObject::Value() const noexcept {
  float h, s, v;
  GetHSV(h, s, v);
  return v;
}

// --- text forms -------------------------------------------------------------------

TString ColorObject::String() const {
  if (IsOpaque()) return TString(u"#%1%2%3").arg(Hex2(m_r)).arg(Hex2(m_g)).arg(Hex2(m_b));
  return TString(u"#%1%2%3%4").arg(Hex2(m_r)).arg(Hex2(m_g)).arg(Hex2(m_b)).arg(Hex2(m_a));
}

TString ColorObject::RGBAString() const { return RgbText(*this, TString::number(m_a)); }

TString ColorObject::CSSString() const {
  if (IsOpaque()) return String();
  return RgbText(*this, TString::number(m_a / 255.0, 'g', 6));
}

TString ColorObject::LineColorRGBAString() const { return RgbText(*this, TString::number(m_a / 255.0, 'f', 3)); }

TString ColorObject::GetTooltip() const {
  if (IsOpaque()) return TString(u"%1 (%2, %3, %4)").arg(String()).arg(m_r).arg(m_g).arg(m_b);
  const int percent = (m_a * 100 + 127) / 255;  // rounded
  return TString(u"%1 (%2, %3, %4, %5%)").arg(String()).arg(m_r).arg(m_g).arg(m_b).arg(percent);
}

// --- derived colours -----------------------------------------------------------------

ColorObject ColorObject::Average(const ColorObject& other) const noexcept {
  ColorObject c(*this, other);
  c.m_a = m_a;
  return c;
}

ColorObject ColorObject::AlphaBlend(const ColorObject& background) const noexcept {
  if (IsOpaque()) return *this;
  const auto mix = [&](int x, int y) { return static_cast<uint8_t>((x * m_a + y * (255 - m_a)) / 255); };
  ColorObject c;
  c.SetRGBA(mix(m_r, background.m_r), mix(m_g, background.m_g), mix(m_b, background.m_b), 255);
  return c;
}

ColorObject ColorObject::FullAlphaBlend(const ColorObject& background) const noexcept {
  if (IsOpaque()) return *this;
  const double a = m_a / 255.0;
  const double b = (1.0 - a) * background.m_a / 255.0;
  const double total = a + b;
  ColorObject c;
  if (total <= 0.0) {
    c.SetRGBA(0, 0, 0, 0);
    return c;
  }
  // The exact result is a fraction whose denominator is at most 2 x 255 x 255,
  // so it is an integer or at least 1/130050 away from one; the small bias
  // only absorbs rounding noise, so that a colour blended over itself comes
  // back unchanged.
  const auto mix = [&](int x, int y) { return Byte(std::trunc((x / 255.0 * a + y / 255.0 * b) / total * 255.0 + 1e-9)); };
  c.SetRGBA(mix(m_r, background.m_r), mix(m_g, background.m_g), mix(m_b, background.m_b), RoundedByte(total));
  return c;
}

namespace {
// Perceived luminance with the classic television weights, truncated. Kept
// in single precision: that is the arithmetic the contrast threshold is set
// for (mid grey 128, 128, 128 comes out at exactly 128 and takes black).
int Luminance(uint8_t r, uint8_t g, uint8_t b) noexcept {
  const float l = 0.3f * static_cast<float>(r) + 0.59f * static_cast<float>(g) + 0.11f * static_cast<float>(b);
  return static_cast<int>(l);
}
}  // namespace

ColorObject ColorObject::Monochrome() const noexcept {
  const auto l = static_cast<uint8_t>(Luminance(m_r, m_g, m_b));
  ColorObject c;
  c.SetRGBA(l, l, l, m_a);
  return c;
}

ColorObject ColorObject::ContrastingColor() const noexcept {
  ColorObject c;
  if (Luminance(m_r, m_g, m_b) >= 128) {
    c.SetRGBA(0, 0, 0, 255);
  } else {
    c.SetRGBA(255, 255, 255, 255);
  }
  return c;
}

ColorObject ColorObject::Lighten(float amount) const noexcept {
  const double f = Clamp01(amount);
  const auto up = [f](int x) { return Byte(x + (255 - x) * f + 0.5); };
  ColorObject c;
  c.SetRGBA(up(m_r), up(m_g), up(m_b), m_a);
  return c;
}

ColorObject ColorObject::Darken(float amount) const noexcept {
  const double keep = 1.0 - Clamp01(amount);
  const auto down = [keep](int x) { return Byte(x * keep + 0.5); };
  ColorObject c;
  c.SetRGBA(down(m_r), down(m_g), down(m_b), m_a);
  return c;
}

ColorObject ColorObject::Saturate(float amount) const noexcept {
  float h, s, v;
  GetHSV(h, s, v);
  if (s == 0.0f) return *this;
  ColorObject c;
  c.SetHSVA(h, static_cast<float>(s + (1.0 - s) * Clamp01(amount)), v, 1.0f);
  c.m_a = m_a;
  return c;
}

ColorObject ColorObject::Desaturate(float amount) const noexcept {
  float h, s, v;
  GetHSV(h, s, v);
  ColorObject c;
  c.SetHSVA(h, static_cast<float>(s * (1.0 - Clamp01(amount))), v, 1.0f);
  c.m_a = m_a;
  return c;
}

ColorObject ColorObject::Fog(float amount) const noexcept {
  ColorObject c = *this;
  c.m_a = Byte(m_a * (1.0 - Clamp01(amount)) + 0.5);
  return c;
}
