// ColorObject and ColorObjectParser: construction, text forms, parsing,
// hue/saturation/value and derived colours.

#include <QString>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/util/ColorObject.h"
#include "velcoredata/util/ColorObjectParser.h"

namespace {

using Type = ColorObject::Type;

ColorObject Rgba(int r, int g, int b, int a = 255) { return ColorObject(r, g, b, a, Type::RGB); }

std::string Channels(int r, int g, int b, int a) {
  return std::to_string(r) + "," + std::to_string(g) + "," + std::to_string(b) + "," + std::to_string(a);
}
std::string Channels(const ColorObject& c) { return Channels(c.Red(), c.Green(), c.Blue(), c.Alpha()); }

// Every value of each channel against varying others, plus a coarse grid.
std::vector<ColorObject> SampleColors() {
  std::vector<ColorObject> colors;
  for (int v = 0; v < 256; ++v) {
    colors.push_back(Rgba(v, 255 - v, (v * 7) % 256));
    colors.push_back(Rgba((v * 13) % 256, v, 0, v));
    colors.push_back(Rgba(v, v, v));
  }
  for (int r = 0; r < 256; r += 51) {
    for (int g = 0; g < 256; g += 17) {
      for (int b = 0; b < 256; b += 15) colors.push_back(Rgba(r, g, b, (r + g + b) % 256));
    }
  }
  return colors;
}

TEST(ColorObjectTest, ConstructsFromFractionsIntegersAndPackedForms) {
  EXPECT_EQ(Channels(ColorObject()), "0,0,0,255");
  EXPECT_EQ(Channels(ColorObject(0.1f, 0.2f, 0.3f, 0.25f, Type::RGB)), "25,51,76,63");
  EXPECT_EQ(Channels(ColorObject(2.0f, -1.0f, std::numeric_limits<float>::quiet_NaN(), Type::RGB)), "255,0,0,255");
  EXPECT_EQ(Channels(ColorObject(256 + 5, -1, 511, Type::RGB)), "5,255,255,255");  // low bytes
  EXPECT_EQ(Channels(ColorObject(Rgba(10, 20, 31, 100), Rgba(21, 40, 60, 201))), "15,30,45,150");
  EXPECT_EQ(Channels(Rgba(10, 20, 31, 100).Average(Rgba(21, 40, 60, 201))), "15,30,45,100");  // own alpha
  EXPECT_EQ(Channels(ColorObject::FromRGB(0xFF332211)), "17,34,51,255");
  const ColorObject red = ColorObject::FromQRGB(0x80FF0000);
  EXPECT_EQ(Channels(red), "255,0,0,128");
  EXPECT_EQ(static_cast<unsigned int>(red), 0x0000FFu);
  EXPECT_EQ(static_cast<unsigned int>(Rgba(0x11, 0x22, 0x33, 0x44)), 0x332211u);
  ColorObject c;
  c.SetAlphaF(0.5f);
  EXPECT_EQ(c.Alpha(), 127);
}

TEST(ColorObjectTest, WritesHexRgbCssLineAndTooltipTexts) {
  struct Case {
    ColorObject color;
    const char16_t *string, *rgba, *css, *line, *tooltip;
  };
  const Case cases[] = {
      {Rgba(0x11, 0x22, 0x33), u"#112233", u"rgb(17,34,51)", u"#112233", u"rgb(17,34,51)", u"#112233 (17, 34, 51)"},
      {Rgba(0x11, 0x22, 0x33, 0x44), u"#11223344", u"rgba(17,34,51,68)", u"rgba(17,34,51,0.266667)",
       u"rgba(17,34,51,0.267)", u"#11223344 (17, 34, 51, 27%)"},
      {Rgba(0xAB, 0x0C, 0xF0, 0), u"#ab0cf000", u"rgba(171,12,240,0)", u"rgba(171,12,240,0)",
       u"rgba(171,12,240,0.000)", u"#ab0cf000 (171, 12, 240, 0%)"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TString(c.color), TString(c.string));
    EXPECT_EQ(c.color.RGBAString(), TString(c.rgba));
    EXPECT_EQ(c.color.CSSString(), TString(c.css));
    EXPECT_EQ(c.color.LineColorRGBAString(), TString(c.line));
    EXPECT_EQ(c.color.GetTooltip(), TString(c.tooltip));
  }
}

TEST(ColorObjectParserTest, ReadsHexAndRgbFormsAndRejectsEverythingElse) {
  const std::pair<const char16_t*, const char*> good[] = {
      {u"# 1a 2B 3c", "26,43,60,255"},  {u"#11223344", "17,34,51,68"},
      {u"rgba(1,2,3,4)", "1,2,3,4"},    {u" rgb( 10 , 020 , 255 ) ", "10,20,255,255"},
  };
  // After a failure the channels show what was read (bad hex digits as 0).
  const std::pair<const char16_t*, const char*> bad[] = {
      {u"#12345g", "18,52,80,255"}, {u"#x2345678", "2,52,86,120"}, {u"rgb(1,2,3)x", "1,2,3,255"},
      {u"rgb(256,0,0)", "0,0,0,255"}, {u"rgb(1,2,,3)", "1,2,0,255"}, {u"rgb(1,2,3,4)", "1,2,3,255"},
      {u"rgba(1,2,3)", "1,2,3,255"}, {u"rgb(1.5,2,3)", "1,0,0,255"}, {u"rgbx(1,2,3)", "0,0,0,255"},
      {u"RGB(1,2,3)", "0,0,0,255"}, {u"rgb(1,2)", "0,0,0,255"},     {u"#1234", "0,0,0,255"},
      {u"#12345678a", "0,0,0,255"}, {u"#1a2b3c\u00A0", "0,0,0,255"},
  };
  for (const auto& [text, channels] : good) {
    const ColorObjectParser parser(text);
    EXPECT_FALSE(parser.Failed()) << TString(text).toUtf8();
    EXPECT_EQ(Channels(parser.GetR(), parser.GetG(), parser.GetB(), parser.GetA()), channels);
  }
  for (const auto& [text, channels] : bad) {
    const ColorObjectParser parser(text);
    EXPECT_TRUE(parser.Failed()) << TString(text).toUtf8();
    EXPECT_EQ(Channels(parser.GetR(), parser.GetG(), parser.GetB(), parser.GetA()), channels);
  }
  EXPECT_TRUE(ColorObjectParser(static_cast<const char16_t*>(nullptr)).Failed());
}

std::vector<std::string> g_logged;
void Capture(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type == QtWarningMsg && context.category && std::string(context.category) == "velcoredata.color") {
    g_logged.push_back(message.toStdString());
  }
}

TEST(ColorObjectParserTest, ParseLogsFailuresAndFallsBackToOpaqueBlack) {
  g_logged.clear();
  const QtMessageHandler previous = qInstallMessageHandler(&Capture);
  const ColorObject good = ColorObjectParser::Parse(TString(u"#11223344"));
  const ColorObject bad = ColorObjectParser::Parse(TString(u"#12345g"));
  qInstallMessageHandler(previous);
  EXPECT_EQ(Channels(good), "17,34,51,68");
  EXPECT_EQ(bad, ColorObject());
  EXPECT_EQ(g_logged, std::vector<std::string>{"Warning: could not parse color #12345g\n"});
}

TEST(ColorObjectParserTest, HexAndRgbTextsParseBackToTheSameColour) {
  for (const ColorObject& c : SampleColors()) {
    ASSERT_EQ(ColorObjectParser::Parse(c.String()), c) << Channels(c);
    ASSERT_EQ(ColorObjectParser::Parse(c.String().toUpper()), c) << Channels(c);
    ASSERT_EQ(ColorObjectParser::Parse(c.RGBAString()), c) << Channels(c);
  }
}

TEST(ColorObjectHsvTest, FollowsTheHexconeAndRoundTrips) {
  const std::pair<ColorObject, std::vector<float>> known[] = {
      {Rgba(255, 0, 0), {0.0f, 1, 1}},           {Rgba(255, 255, 0), {1.0f / 6, 1, 1}},
      {Rgba(0, 255, 255), {3.0f / 6, 1, 1}},     {Rgba(255, 0, 255), {5.0f / 6, 1, 1}},
      {Rgba(255, 0, 128), {1.0f - 128.0f / 255 / 6, 1, 1}},
      {Rgba(100, 50, 50), {0.0f, 0.5f, 100.0f / 255}}, {Rgba(128, 128, 128), {0.0f, 0, 128.0f / 255}},
  };
  for (const auto& [color, hsv] : known) {
    EXPECT_NEAR(color.Hue(), hsv[0], 1e-6) << Channels(color);
    EXPECT_NEAR(color.Saturation(), hsv[1], 1e-6) << Channels(color);
    EXPECT_NEAR(color.Value(), hsv[2], 1e-6) << Channels(color);
  }
  for (const ColorObject& c : SampleColors()) {
    float h, s, v;
    c.GetHSV(h, s, v);
    ColorObject back;
    back.SetHSVA(h, s, v, c.Alpha() / 255.0f);
    ASSERT_EQ(back, c) << Channels(c);
  }
  ColorObject c;
  c.SetHSVA(1.25f, 1.0f, 1.0f, 0.5f);  // the hue wraps: a quarter turn, between yellow and green
  EXPECT_EQ(Channels(c), "128,255,0,128");
  c.SetHSVA(-0.25f, 2.0f, 7.0f, -3.0f);  // 0.75; the rest clamps
  EXPECT_EQ(Channels(c), "128,0,255,0");
  // Typed constructors: three floats are opaque, four take the alpha; integers are / 255.
  EXPECT_EQ(Channels(ColorObject(0.5f, 1.0f, 1.0f, Type::HSV)), "0,255,255,255");
  EXPECT_EQ(Channels(ColorObject(0.5f, 1.0f, 1.0f, 0.5f, Type::HSV)), "0,255,255,128");
  EXPECT_EQ(Channels(ColorObject(85, 255, 255, 128, static_cast<Type>(7))), "0,255,0,128");
}

TEST(ColorObjectBlendTest, AlphaBlendIsExactAndFullAlphaBlendIsTheOverOperator) {
  // 200 x 128 + 255 x 127 = 57985, / 255 = 227.39.
  EXPECT_EQ(Channels(Rgba(200, 100, 0, 128).AlphaBlend(Rgba(255, 255, 255))), "227,177,127,255");
  EXPECT_EQ(Rgba(9, 8, 7).AlphaBlend(Rgba(1, 2, 3)), Rgba(9, 8, 7));
  EXPECT_EQ(Channels(Rgba(1, 2, 3, 0).FullAlphaBlend(Rgba(9, 9, 9, 0))), "0,0,0,0");
  // Half over half: alpha 128/255 + (127/255)(128/255) -> 191.75 -> 192.
  EXPECT_EQ(Channels(Rgba(255, 0, 0, 128).FullAlphaBlend(Rgba(0, 0, 255, 128))), "170,0,84,192");
  for (int alpha = 0; alpha < 255; ++alpha) {
    for (const int x : {0, 3, 128, 255}) {
      const ColorObject top = Rgba(x, 77, 255 - x, alpha);
      ASSERT_EQ(top.AlphaBlend(Rgba(x, 77, 255 - x)), Rgba(x, 77, 255 - x)) << alpha;
      ASSERT_EQ(top.FullAlphaBlend(Rgba(77, x, 10)), top.AlphaBlend(Rgba(77, x, 10))) << alpha;
      if (alpha > 0) {
        ASSERT_EQ(top.FullAlphaBlend(Rgba(77, x, 10, 0)), top) << alpha;
      }
      const ColorObject over = top.FullAlphaBlend(Rgba(x, 77, 255 - x, 100));
      ASSERT_EQ(Rgba(over.Red(), over.Green(), over.Blue(), alpha), top) << alpha;
      ASSERT_GE(over.Alpha(), std::max(alpha, 100));
    }
  }
}

TEST(ColorObjectTest, MonochromeContrastingAndAdjustedColours) {
  EXPECT_EQ(Channels(Rgba(255, 0, 0, 9).Monochrome()), "76,76,76,9");
  EXPECT_EQ(Channels(Rgba(0, 255, 0).Monochrome()), "150,150,150,255");
  EXPECT_EQ(Rgba(255, 255, 0, 0).ContrastingColor(), Rgba(0, 0, 0));  // always opaque
  for (int v = 0; v < 256; ++v) {
    ASSERT_EQ(Rgba(v, v, v).ContrastingColor(), v >= 128 ? Rgba(0, 0, 0) : Rgba(255, 255, 255)) << v;
  }
  const ColorObject c = Rgba(200, 100, 50, 77);
  EXPECT_EQ(Channels(c.Lighten(0.5f)), "228,178,153,77");
  EXPECT_EQ(Channels(c.Darken(0.5f)), "100,50,25,77");
  EXPECT_EQ(Channels(c.Saturate(1.0f)), "200,67,0,77");  // hue 1/18 kept: g = 200 / 3
  EXPECT_EQ(Channels(c.Desaturate(1.0f)), "200,200,200,77");
  EXPECT_EQ(Channels(c.Fog(0.5f)), "200,100,50,39");
  EXPECT_EQ(c.Lighten(3.0f), Rgba(255, 255, 255, 77));  // amounts clamp to [0, 1]
  EXPECT_EQ(Rgba(90, 90, 90).Saturate(1.0f), Rgba(90, 90, 90));  // a grey has no hue to strengthen
  for (const ColorObject& s : SampleColors()) {
    ASSERT_EQ(s.Saturate(0.0f), s);
    ASSERT_EQ(s.Desaturate(0.0f), s);
    ASSERT_EQ(s.Darken(-1.0f), s);
    if (s.Saturation() > 0.5f && s.Value() > 0.5f) {
      const float hueShift = std::fabs(s.Darken(0.3f).Hue() - s.Hue());
      ASSERT_LT(std::min(hueShift, 1.0f - hueShift), 0.01f) << Channels(s);
    }
    ASSERT_NEAR(s.Desaturate(0.4f).Value(), s.Value(), 1e-6) << Channels(s);
  }
}

}  // namespace
