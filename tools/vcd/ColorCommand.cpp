// vcd color TEXT: the channels, every text form and the derived colours of a
// colour written as #rrggbb, #rrggbbaa, rgb(r,g,b) or rgba(r,g,b,a).

#include <cstdio>
#include <ostream>
#include <stdexcept>

#include "Command.h"
#include "velcoredata/util/ColorObject.h"
#include "velcoredata/util/ColorObjectParser.h"

namespace {

int RunColor(const std::vector<std::string>& args, vcd::CommandIo& io) {
  if (args.size() != 1) throw vcd::UsageError("expected exactly one TEXT");
  // The parser itself rather than ColorObjectParser::Parse: the tool reports
  // the failure on stderr instead of logging it.
  const ColorObjectParser parser(TString::fromUtf8(args[0]));
  if (parser.Failed()) throw std::runtime_error("could not parse color '" + args[0] + "'");
  const ColorObject color(parser.GetR(), parser.GetG(), parser.GetB(), parser.GetA(), ColorObject::Type::RGB);

  float h = 0, s = 0, v = 0;
  color.GetHSV(h, s, v);
  char hsv[64];
  std::snprintf(hsv, sizeof hsv, "%.6g %.6g %.6g", h, s, v);
  char packed[16];
  std::snprintf(packed, sizeof packed, "0x%08X", static_cast<unsigned int>(color));
  io.out << "input:        " << args[0] << "\n"
         << "red:          " << int{color.Red()} << "\n"
         << "green:        " << int{color.Green()} << "\n"
         << "blue:         " << int{color.Blue()} << "\n"
         << "alpha:        " << int{color.Alpha()} << "\n"
         << "hsv:          " << hsv << "\n"
         << "packed:       " << packed << "\n"
         << "String:       " << color.String().toUtf8() << "\n"
         << "RGBAString:   " << color.RGBAString().toUtf8() << "\n"
         << "CSSString:    " << color.CSSString().toUtf8() << "\n"
         << "LineColor:    " << color.LineColorRGBAString().toUtf8() << "\n"
         << "tooltip:      " << color.GetTooltip().toUtf8() << "\n"
         << "contrasting:  " << color.ContrastingColor().String().toUtf8() << "\n"
         << "monochrome:   " << color.Monochrome().String().toUtf8() << "\n";
  return 0;
}

const vcd::CommandRegistration kColor{
    "color", "color TEXT",
    "parse a colour (#rrggbb, #rrggbbaa, rgb(r,g,b), rgba(r,g,b,a)): channels, text forms, "
    "contrasting and monochrome colours",
    &RunColor};

}  // namespace
