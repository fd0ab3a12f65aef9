// Fuzzes the colour parser: any text is read without crashing, a parsed
// colour's String() and RGBAString() parse back to the same colour, and any
// four bytes survive the trip through hue, saturation and value.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "velcoredata/util/ColorObject.h"
#include "velcoredata/util/ColorObjectParser.h"

namespace {

ColorObject FromParser(const ColorObjectParser& parser) {
  return ColorObject(parser.GetR(), parser.GetG(), parser.GetB(), parser.GetA(), ColorObject::Type::RGB);
}

void CheckReadsBack(const ColorObject& color, const TString& text) {
  const ColorObjectParser back(text);
  if (back.Failed() || FromParser(back) != color) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const TString text = TString::fromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
  const ColorObjectParser parser(text);
  if (!parser.Failed()) {
    const ColorObject color = FromParser(parser);
    CheckReadsBack(color, color.String());
    CheckReadsBack(color, color.RGBAString());
    if (ColorObjectParser::Parse(text) != color) std::abort();
  }

  if (size >= 4) {
    ColorObject color;
    color.SetRGBA(data[0], data[1], data[2], data[3]);
    float h, s, v;
    color.GetHSV(h, s, v);
    if (!(h >= 0.0f && h < 1.0f && s >= 0.0f && s <= 1.0f && v >= 0.0f && v <= 1.0f)) std::abort();
    ColorObject back;
    back.SetHSVA(h, s, v, color.Alpha() / 255.0f);
    if (back != color) std::abort();
    const float amount = size >= 5 ? data[4] / 255.0f : 0.5f;
    (void)color.Lighten(amount).Darken(amount).Saturate(amount).Desaturate(amount).Fog(amount);
    (void)color.FullAlphaBlend(ColorObject::FromQRGB(static_cast<uint32_t>(data[3]) * 0x01010101u));
    (void)color.CSSString();
    (void)color.LineColorRGBAString();
    (void)color.GetTooltip();
  }
  return 0;
}
