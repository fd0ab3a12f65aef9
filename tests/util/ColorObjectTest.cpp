// ColorObject and ColorObjectParser: construction, text forms, parsing,
// hue/saturation/value and derived colours.

#include <QLoggingCategory>
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

std::string Channels(const ColorObject& c) {
  return std::to_string(c.Red()) + "," + std::to_string(c.Green()) + "," + std::to_string(c.Blue()) + "," +
         std::to_string(c.Alpha());
}

// A spread of colours: every value of each channel against fixed others,
// plus a coarse grid of all four.
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
  EXPECT_EQ(Channels(ColorObject(0.5f, 1.0f, 0.0f, Type::RGB)), "127,255,0,255");
  EXPECT_EQ(Channels(ColorObject(0.1f, 0.2f, 0.3f, 0.25f, Type::RGB)), "25,51,76,63");
  // Out-of-range fractions clamp; NaN reads as 0.
  EXPECT_EQ(Channels(ColorObject(2.0f, -1.0f, std::numeric_limits<float>::quiet_NaN(), Type::RGB)),
            "255,0,0,255");
  // Integers keep their low byte.
  EXPECT_EQ(Channels(ColorObject(256 + 5, -1, 511, Type::RGB)), "5,255,255,255");
  EXPECT_EQ(Channels(ColorObject(1, 2, 3, 4, Type::RGB)), "1,2,3,4");
  // The two-colour constructor averages alpha too; Average keeps this alpha.
  EXPECT_EQ(Channels(ColorObject(Rgba(10, 20, 31, 100), Rgba(21, 40, 60, 201))), "15,30,45,150");
  EXPECT_EQ(Channels(Rgba(10, 20, 31, 100).Average(Rgba(21, 40, 60, 201))), "15,30,45,100");

  EXPECT_EQ(Channels(ColorObject::FromRGB(0x00332211)), "17,34,51,255");
  EXPECT_EQ(Channels(ColorObject::FromRGB(0xFF332211)), "17,34,51,255");
  const ColorObject red = ColorObject::FromQRGB(0x80FF0000);
  EXPECT_EQ(Channels(red), "255,0,0,128");
  EXPECT_EQ(static_cast<unsigned int>(red), 0x0000FFu);
  EXPECT_EQ(static_cast<unsigned int>(Rgba(0x11, 0x22, 0x33, 0x44)), 0x332211u);
  for (const uint32_t v : {0x00000000u, 0x00ABCDEFu, 0x00FFFFFFu}) {
    EXPECT_EQ(static_cast<unsigned int>(ColorObject::FromRGB(v)), v);
  }
}

TEST(ColorObjectTest, AlphaSettersAndTransparencyReaders) {
  ColorObject c;
  EXPECT_TRUE(c.IsOpaque());
  EXPECT_FALSE(c.IsPartiallyTransparent());
  c.SetAlpha(0);
  EXPECT_TRUE(c.IsCompletelyTransparent());
  EXPECT_TRUE(c.IsPartiallyTransparent());
  c.SetAlphaF(0.5f);
  EXPECT_EQ(c.Alpha(), 127);
  c.SetAlphaF(7.0f);
  EXPECT_EQ(c.Alpha(), 255);
  c.SetAlphaF(-1.0f);
  EXPECT_EQ(c.Alpha(), 0);
  c.SetRGBA(1, 2, 3, 254);
  EXPECT_EQ(Channels(c), "1,2,3,254");
  EXPECT_FALSE(c.IsOpaque());
  EXPECT_FALSE(c.IsCompletelyTransparent());
  EXPECT_NE(c, Rgba(1, 2, 3, 255));
  EXPECT_EQ(c, Rgba(1, 2, 3, 254));
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
      {Rgba(0xAB, 0x0C, 0xF0, 128), u"#ab0cf080", u"rgba(171,12,240,128)", u"rgba(171,12,240,0.501961)",
       u"rgba(171,12,240,0.502)", u"#ab0cf080 (171, 12, 240, 50%)"},
      {Rgba(0, 0, 0, 0), u"#00000000", u"rgba(0,0,0,0)", u"rgba(0,0,0,0)", u"rgba(0,0,0,0.000)",
       u"#00000000 (0, 0, 0, 0%)"},
      {Rgba(255, 255, 255, 254), u"#fffffffe", u"rgba(255,255,255,254)", u"rgba(255,255,255,0.996078)",
       u"rgba(255,255,255,0.996)", u"#fffffffe (255, 255, 255, 100%)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Channels(c.color));
    EXPECT_EQ(c.color.String(), TString(c.string));
    EXPECT_EQ(TString(c.color), TString(c.string));
    EXPECT_EQ(c.color.RGBAString(), TString(c.rgba));
    EXPECT_EQ(c.color.CSSString(), TString(c.css));
    EXPECT_EQ(c.color.LineColorRGBAString(), TString(c.line));
    EXPECT_EQ(c.color.GetTooltip(), TString(c.tooltip));
  }
}

TEST(ColorObjectParserTest, ReadsHexAndRgbFormsAndRejectsEverythingElse) {
  struct Case {
    const char16_t* text;
    bool ok;
    const char* channels;  // after parsing, failed or not
  };
  const Case cases[] = {
      {u"# 1a 2B 3c", true, "26,43,60,255"},
      {u"#1a2B3c", true, "26,43,60,255"},
      {u"#11223344", true, "17,34,51,68"},
      {u"#FFFFFF00", true, "255,255,255,0"},
      {u"rgba(1,2,3,4)", true, "1,2,3,4"},
      {u"rgb(1,2,3)", true, "1,2,3,255"},
      {u" rgb( 10 , 020 , 255 ) ", true, "10,20,255,255"},
      {u"rgba(255,255,255,0)", true, "255,255,255,0"},
      // A bad hex digit counts as 0 and the rest is still read.
      {u"#12345g", false, "18,52,80,255"},
      {u"#x2345678", false, "2,52,86,120"},
      {u"#-12345", false, "1,35,69,255"},
      {u"rgb(1,2,3)x", false, "1,2,3,255"},
      {u"rgb(256,0,0)", false, "0,0,0,255"},
      {u"rgb(1,2,,3)", false, "1,2,0,255"},
      {u"rgb(1,2,3,4)", false, "1,2,3,255"},
      {u"rgba(1,2,3)", false, "1,2,3,255"},
      {u"rgb(1,2)", false, "0,0,0,255"},
      {u"rgb(-1,2,3)", false, "0,0,0,255"},
      {u"rgb(1.5,2,3)", false, "1,0,0,255"},
      {u"rgb[1,2,3]", false, "0,0,0,255"},
      {u"rgbx(1,2,3)", false, "0,0,0,255"},
      {u"RGB(1,2,3)", false, "0,0,0,255"},
      {u"#1234", false, "0,0,0,255"},
      {u"#12345678a", false, "0,0,0,255"},
      {u"112233", false, "0,0,0,255"},
      {u"", false, "0,0,0,255"},
      {u"#1a2b3c\u00A0", false, "0,0,0,255"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(TString(c.text).toUtf8());
    const ColorObjectParser parser(c.text);
    EXPECT_EQ(!parser.Failed(), c.ok);
    EXPECT_EQ(std::to_string(parser.GetR()) + "," + std::to_string(parser.GetG()) + "," +
                  std::to_string(parser.GetB()) + "," + std::to_string(parser.GetA()),
              c.channels);
    EXPECT_EQ(ColorObjectParser(TString(c.text)).Failed(), parser.Failed());
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
  const ColorObject bad = ColorObjectParser::Parse(TString(u"rgb(1,2,3)x"));
  const ColorObject half = ColorObjectParser::Parse(TString(u"#12345g"));
  qInstallMessageHandler(previous);
  EXPECT_EQ(Channels(good), "17,34,51,68");
  EXPECT_EQ(bad, ColorObject());
  EXPECT_EQ(half, ColorObject());
  ASSERT_EQ(g_logged.size(), 2u);
  EXPECT_EQ(g_logged[0], "Warning: could not parse color rgb(1,2,3)x\n");
  EXPECT_EQ(g_logged[1], "Warning: could not parse color #12345g\n");
}

TEST(ColorObjectParserTest, HexAndRgbTextsParseBackToTheSameColour) {
  for (const ColorObject& c : SampleColors()) {
    ASSERT_EQ(ColorObjectParser::Parse(c.String()), c) << Channels(c);
    ASSERT_EQ(ColorObjectParser::Parse(c.RGBAString()), c) << Channels(c);
    ASSERT_EQ(ColorObjectParser::Parse(c.String().toUpper()), c) << Channels(c);
    if (c.IsOpaque()) {
      ASSERT_EQ(ColorObjectParser::Parse(c.CSSString()), c);
      ASSERT_EQ(ColorObjectParser::Parse(c.LineColorRGBAString()), c);
    }
  }
}

TEST(ColorObjectHsvTest, ReadsTheHexconeOfThePrimaryAndSecondaryColours) {
  struct Case {
    ColorObject color;
    float h, s, v;
  };
  const Case cases[] = {
      {Rgba(255, 0, 0), 0.0f, 1.0f, 1.0f},          {Rgba(255, 255, 0), 1.0f / 6, 1.0f, 1.0f},
      {Rgba(0, 255, 0), 2.0f / 6, 1.0f, 1.0f},      {Rgba(0, 255, 255), 3.0f / 6, 1.0f, 1.0f},
      {Rgba(0, 0, 255), 4.0f / 6, 1.0f, 1.0f},      {Rgba(255, 0, 255), 5.0f / 6, 1.0f, 1.0f},
      {Rgba(255, 128, 0), 128.0f / 255 / 6, 1.0f, 1.0f},
      {Rgba(255, 0, 128), 1.0f - 128.0f / 255 / 6, 1.0f, 1.0f},
      {Rgba(100, 50, 50), 0.0f, 0.5f, 100.0f / 255}, {Rgba(255, 255, 255), 0.0f, 0.0f, 1.0f},
      {Rgba(128, 128, 128), 0.0f, 0.0f, 128.0f / 255}, {Rgba(0, 0, 0), 0.0f, 0.0f, 0.0f},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Channels(c.color));
    float h = -1, s = -1, v = -1;
    c.color.GetHSV(h, s, v);
    EXPECT_NEAR(h, c.h, 1e-6);
    EXPECT_NEAR(s, c.s, 1e-6);
    EXPECT_NEAR(v, c.v, 1e-6);
    EXPECT_EQ(c.color.Hue(), h);
    EXPECT_EQ(c.color.Saturation(), s);
    EXPECT_EQ(c.color.Value(), v);
    ColorObject back;
    back.SetHSVA(c.h, c.s, c.v, 1.0f);
    EXPECT_EQ(back, c.color);
  }
}

TEST(ColorObjectHsvTest, SetHsvaWrapsHueClampsTheRestAndTakesTypedConstructors) {
  ColorObject c;
  c.SetHSVA(1.25f, 1.0f, 1.0f, 0.5f);  // a quarter turn past red: between yellow and green
  EXPECT_EQ(Channels(c), "128,255,0,128");
  c.SetHSVA(-0.25f, 1.0f, 1.0f, 1.0f);  // the same as 0.75
  EXPECT_EQ(Channels(c), "128,0,255,255");
  c.SetHSVA(1.0f, 2.0f, 7.0f, -3.0f);
  EXPECT_EQ(Channels(c), "255,0,0,0");
  c.SetHSVA(std::numeric_limits<float>::quiet_NaN(), 0.0f, 0.5f, 1.0f);
  EXPECT_EQ(Channels(c), "128,128,128,255");
  // Typed constructors: the three-number float form is opaque, the
  // four-number one takes the given alpha; integers are divided by 255.
  EXPECT_EQ(Channels(ColorObject(0.5f, 1.0f, 1.0f, Type::HSV)), "0,255,255,255");
  EXPECT_EQ(Channels(ColorObject(0.5f, 1.0f, 1.0f, 0.5f, Type::HSV)), "0,255,255,128");
  EXPECT_EQ(Channels(ColorObject(0, 255, 255, Type::HSV)), "255,0,0,255");
  EXPECT_EQ(Channels(ColorObject(85, 255, 255, 128, Type::HSV)), "0,255,0,128");
  EXPECT_EQ(Channels(ColorObject(0, 0, 255, static_cast<Type>(7))), "255,255,255,255");
}

TEST(ColorObjectHsvTest, ChannelsSurviveTheRoundTripThroughHsv) {
  for (const ColorObject& c : SampleColors()) {
    float h, s, v;
    c.GetHSV(h, s, v);
    ASSERT_GE(h, 0.0f);
    ASSERT_LT(h, 1.0f);
    ColorObject back;
    back.SetHSVA(h, s, v, c.Alpha() / 255.0f);
    ASSERT_EQ(back, c) << Channels(c);
  }
}

TEST(ColorObjectBlendTest, AlphaBlendMixesExactlyOverAnOpaqueBackground) {
  // 200 x 128 + 255 x 127 = 57985, / 255 = 227.39.
  EXPECT_EQ(Channels(Rgba(200, 100, 0, 128).AlphaBlend(Rgba(255, 255, 255))), "227,177,127,255");
  EXPECT_EQ(Rgba(9, 8, 7).AlphaBlend(Rgba(255, 255, 255)), Rgba(9, 8, 7));
  EXPECT_EQ(Rgba(9, 8, 7, 0).AlphaBlend(Rgba(1, 2, 3)), Rgba(1, 2, 3));
  for (int alpha = 0; alpha < 255; ++alpha) {
    for (const int x : {0, 1, 127, 128, 254, 255}) {
      // A colour blended over its own opaque self comes back unchanged.
      ASSERT_EQ(Rgba(x, x, x, alpha).AlphaBlend(Rgba(x, x, x)), Rgba(x, x, x)) << alpha << " " << x;
    }
  }
}

TEST(ColorObjectBlendTest, FullAlphaBlendIsTheOverOperator) {
  EXPECT_EQ(Rgba(1, 2, 3).FullAlphaBlend(Rgba(9, 9, 9, 0)), Rgba(1, 2, 3));
  EXPECT_EQ(Channels(Rgba(1, 2, 3, 0).FullAlphaBlend(Rgba(9, 9, 9, 0))), "0,0,0,0");
  // Half over half: alpha 128/255 + (127/255)(128/255) -> 191.75 -> 192.
  EXPECT_EQ(Channels(Rgba(255, 0, 0, 128).FullAlphaBlend(Rgba(0, 0, 255, 128))), "170,0,84,192");
  for (int alpha = 0; alpha < 255; ++alpha) {
    for (const int x : {0, 3, 128, 255}) {
      for (const int y : {0, 77, 255}) {
        const ColorObject top = Rgba(x, y, 255 - x, alpha);
        // Over an opaque background it agrees with the exact AlphaBlend.
        ASSERT_EQ(top.FullAlphaBlend(Rgba(y, x, 10)), top.AlphaBlend(Rgba(y, x, 10))) << alpha;
        // Over a transparent background the colour stays itself.
        if (alpha > 0) {
          ASSERT_EQ(top.FullAlphaBlend(Rgba(y, x, 10, 0)), top) << alpha;
        }
        // Over its own colour only the alpha changes.
        for (const int bgAlpha : {1, 128, 254}) {
          const ColorObject out = top.FullAlphaBlend(Rgba(x, y, 255 - x, bgAlpha));
          ASSERT_EQ(Channels(out).substr(0, Channels(out).rfind(',')),
                    Channels(top).substr(0, Channels(top).rfind(',')));
          ASSERT_GE(out.Alpha(), std::max(alpha, bgAlpha));
        }
      }
    }
  }
}

TEST(ColorObjectTest, MonochromeAndContrastingUseSinglePrecisionLuminance) {
  EXPECT_EQ(Channels(Rgba(255, 0, 0, 9).Monochrome()), "76,76,76,9");
  EXPECT_EQ(Channels(Rgba(0, 255, 0).Monochrome()), "150,150,150,255");
  EXPECT_EQ(Channels(Rgba(0, 0, 255).Monochrome()), "28,28,28,255");
  EXPECT_EQ(Channels(Rgba(255, 255, 255).Monochrome()), "255,255,255,255");
  EXPECT_EQ(Rgba(128, 128, 128).ContrastingColor(), Rgba(0, 0, 0));
  EXPECT_EQ(Rgba(127, 127, 127).ContrastingColor(), Rgba(255, 255, 255));
  EXPECT_EQ(Rgba(255, 255, 0, 0).ContrastingColor(), Rgba(0, 0, 0));  // always opaque
  for (int v = 0; v < 256; ++v) {
    ASSERT_EQ(Rgba(v, v, v).ContrastingColor(), v >= 128 ? Rgba(0, 0, 0) : Rgba(255, 255, 255)) << v;
    ASSERT_NEAR(Rgba(v, v, v).Monochrome().Red(), v, 1) << v;
  }
}

TEST(ColorObjectTest, LightenDarkenSaturateDesaturateAndFog) {
  const ColorObject c = Rgba(200, 100, 50, 77);
  EXPECT_EQ(Channels(c.Lighten(0.5f)), "228,178,153,77");
  EXPECT_EQ(Channels(c.Darken(0.5f)), "100,50,25,77");
  EXPECT_EQ(Channels(c.Saturate(1.0f)), "200,67,0,77");  // hue 1/18 kept: g = 200 / 3
  EXPECT_EQ(Channels(c.Desaturate(1.0f)), "200,200,200,77");
  EXPECT_EQ(Channels(c.Fog(0.5f)), "200,100,50,39");
  EXPECT_EQ(c.Lighten(1.0f), Rgba(255, 255, 255, 77));
  EXPECT_EQ(c.Darken(1.0f), Rgba(0, 0, 0, 77));
  EXPECT_TRUE(c.Fog(1.0f).IsCompletelyTransparent());
  EXPECT_EQ(Rgba(90, 90, 90).Saturate(1.0f), Rgba(90, 90, 90));  // a grey has no hue to strengthen
  // Amounts clamp to [0, 1].
  EXPECT_EQ(c.Lighten(3.0f), c.Lighten(1.0f));
  EXPECT_EQ(c.Darken(-3.0f), c);
  for (const ColorObject& s : SampleColors()) {
    ASSERT_EQ(s.Lighten(0.0f), s);
    ASSERT_EQ(s.Darken(0.0f), s);
    ASSERT_EQ(s.Saturate(0.0f), s);
    ASSERT_EQ(s.Desaturate(0.0f), s);
    ASSERT_EQ(s.Fog(0.0f), s);
    // Darkening keeps the hue of colourful colours (a few units of rounding
    // aside); desaturating keeps the value.
    if (s.Saturation() > 0.5f && s.Value() > 0.5f) {
      const float hueShift = std::fabs(s.Darken(0.3f).Hue() - s.Hue());
      ASSERT_LT(std::min(hueShift, 1.0f - hueShift), 0.01f) << Channels(s);
    }
    ASSERT_NEAR(s.Desaturate(0.4f).Value(), s.Value(), 1e-6) << Channels(s);
    ASSERT_LE(s.Desaturate(0.4f).Saturation(), s.Saturation() + 1e-6f) << Channels(s);
    ASSERT_GE(s.Lighten(0.2f).Monochrome().Red(), s.Monochrome().Red()) << Channels(s);
  }
}

}  // namespace
