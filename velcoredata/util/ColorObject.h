// ColorObject: a colour of four 8-bit channels (red, green, blue, alpha).
//
// Alpha 255 is opaque, 0 fully transparent. Colours convert to and from
// packed integers, print as hexadecimal, rgb() and CSS texts (read back by
// ColorObjectParser), blend with a background and give contrasting,
// monochrome, lighter, darker, more or less saturated and fogged variants.
//
// Hue, saturation and value follow the hexcone model: value is the largest
// channel, saturation the spread of the channels relative to the largest,
// hue the angle around the colour wheel (red 0, yellow 1/6, green 2/6,
// cyan 3/6, blue 4/6, magenta 5/6). All three, and the alpha taken by
// SetHSVA, are fractions in [0, 1].
//
// Thread-safety: a plain four-byte value.
#pragma once

#include <cstdint>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT ColorObject {
 public:
  // How the numbers given to a constructor are read: RGB (0) takes red,
  // green, blue (and alpha); any other value takes hue, saturation, value
  // (and alpha) through SetHSVA.
  enum class Type : int { RGB = 0, HSV = 1 };

  // Opaque black.
  ColorObject() noexcept = default;
  // Fractions. With Type::RGB each channel is trunc(fraction x 255); a
  // fraction outside [0, 1] is clamped first and NaN reads as 0. Otherwise
  // SetHSVA(r, g, b, 255.0) (which clamps that alpha to opaque) and
  // SetHSVA(r, g, b, a).
  ColorObject(float r, float g, float b, Type type);
  ColorObject(float r, float g, float b, float a, Type type);
  // Integers. With Type::RGB the low byte of each (alpha 255 when not
  // given); otherwise SetHSVA of each divided by 255.0, so (0, 255, 255) is
  // pure red: hue 0, full saturation and value.
  ColorObject(int r, int g, int b, Type type);
  ColorObject(int r, int g, int b, int a, Type type);
  // The channel-wise mean of x and y, alpha included: (x + y) >> 1.
  ColorObject(const ColorObject& x, const ColorObject& y) noexcept;
  ColorObject(const ColorObject&) noexcept = default;
  ColorObject& operator=(const ColorObject&) noexcept = default;

  // 0x00BBGGRR (red in the low byte); alpha 255.
  static ColorObject FromRGB(uint32_t v) noexcept;
  // 0xAARRGGBB, the layout of QRgb.
  static ColorObject FromQRGB(uint32_t v) noexcept;
  // red | green << 8 | blue << 16; alpha is dropped.
  operator unsigned int() const noexcept;  // NOLINT: packed form by design

  void SetRGBA(uint8_t r, uint8_t g, uint8_t b, uint8_t a) noexcept;
  void SetAlpha(uint8_t a) noexcept { m_a = a; }
  // alpha := trunc(clamp(f, 0, 1) x 255).
  void SetAlphaF(float f) noexcept;
  // Hue, saturation, value and alpha as fractions. The hue wraps around (1.25
  // is 0.25; -0.25 is 0.75); the other three are clamped to [0, 1]; NaN reads
  // as 0. Channels are rounded to the nearest integer, so that a colour read
  // with GetHSV and set back comes out unchanged.
  void SetHSVA(float h, float s, float v, float a) noexcept;
  // The hexcone hue, saturation and value of the colour. Greys (all three
  // channels equal) have hue 0 and saturation 0; black has value 0.
  void GetHSV(float& h, float& s, float& v) const noexcept;
  float Hue() const noexcept;
  float Saturation() const noexcept;
  float Value() const noexcept;

  uint8_t Red() const noexcept { return m_r; }
  uint8_t Green() const noexcept { return m_g; }
  uint8_t Blue() const noexcept { return m_b; }
  uint8_t Alpha() const noexcept { return m_a; }
  bool IsOpaque() const noexcept { return m_a == 255; }
  bool IsCompletelyTransparent() const noexcept { return m_a == 0; }
  bool IsPartiallyTransparent() const noexcept { return m_a < 255; }

  // Text forms. Hexadecimal digits are lower case ("#1a2b3c"); the parser
  // takes either case.
  // "#rrggbb" for opaque colours, "#rrggbbaa" otherwise.
  TString String() const;
  operator TString() const { return String(); }  // NOLINT
  // "rgb(r,g,b)" for opaque colours, "rgba(r,g,b,a)" otherwise, all in
  // decimal 0-255.
  TString RGBAString() const;
  // String() for opaque colours, "rgba(r,g,b,a)" otherwise with alpha as
  // alpha / 255 in general form with 6 significant digits ("0.501961"), as
  // style sheets take it. ColorObjectParser does not read the fractional form.
  TString CSSString() const;
  // For line renderers that take a fractional opacity: "rgb(r,g,b)" for
  // opaque colours, otherwise "rgba(r,g,b,a)" with alpha / 255 in fixed
  // form with three decimals ("rgba(1,2,3,0.502)"), a bounded length for
  // stroke attributes.
  TString LineColorRGBAString() const;
  // A short language-neutral description for tooltips: "#1a2b3c (26, 43, 60)"
  // for opaque colours, "#1a2b3c80 (26, 43, 60, 50%)" otherwise, the last
  // number being the opacity in percent, rounded.
  TString GetTooltip() const;

  // Derived colours. The colour itself is not changed.
  //
  // Red, green and blue are the means (x + y) >> 1; alpha is this colour's.
  ColorObject Average(const ColorObject& other) const noexcept;
  // This colour drawn over an opaque `background`: opaque colours are
  // returned unchanged; otherwise each channel is
  // trunc((this x alpha + background x (255 - alpha)) / 255), computed exactly
  // in integers, and the result is opaque.
  ColorObject AlphaBlend(const ColorObject& background) const noexcept;
  // This colour drawn over a possibly translucent `background` (the "over"
  // operator): opaque colours are returned unchanged; otherwise with
  // a = alpha / 255 and b = (1 - a) x background alpha / 255 the result's
  // alpha is round((a + b) x 255) and each channel
  // trunc((this / 255 x a + background / 255 x b) / (a + b) x 255); a + b = 0
  // gives (0, 0, 0, 0).
  ColorObject FullAlphaBlend(const ColorObject& background) const noexcept;
  // Grey of the perceived luminance L = trunc(0.3 r + 0.59 g + 0.11 b),
  // computed in single precision; alpha is kept.
  ColorObject Monochrome() const noexcept;
  // Opaque black on light colours (L >= 128), opaque white on dark ones.
  ColorObject ContrastingColor() const noexcept;
  // Mixed with white by `amount` (a fraction, clamped to [0, 1]): each
  // channel moves that share of the way to 255, rounded. 1 gives white.
  ColorObject Lighten(float amount) const noexcept;
  // Mixed with black by `amount`: each channel is scaled by (1 - amount),
  // rounded. Hue and saturation stay; 1 gives black.
  ColorObject Darken(float amount) const noexcept;
  // Saturation moved `amount` of the way towards 1, hue and value kept.
  // Greys have no hue to strengthen and are returned unchanged.
  ColorObject Saturate(float amount) const noexcept;
  // Saturation scaled by (1 - amount), hue and value kept; 1 gives the grey
  // of the colour's value.
  ColorObject Desaturate(float amount) const noexcept;
  // Faded into whatever lies behind it, as de-emphasised marks are: alpha is
  // scaled by (1 - amount), rounded; red, green and blue are kept.
  ColorObject Fog(float amount) const noexcept;

  friend bool operator==(const ColorObject& a, const ColorObject& b) noexcept {
    return a.m_r == b.m_r && a.m_g == b.m_g && a.m_b == b.m_b && a.m_a == b.m_a;
  }
  friend bool operator!=(const ColorObject& a, const ColorObject& b) noexcept { return !(a == b); }

 private:
  uint8_t m_r = 0;
  uint8_t m_g = 0;
  uint8_t m_b = 0;
  uint8_t m_a = 255;
};
