// A tiny host program: uses the library through its umbrella header only.
#include <cstdio>

#include "velcoredata/velcoredata.h"

int main() {
  const TString text = TFormatString(u"%1 + %2").arg(TString(u"velcoredata")).arg(20).str();
  const VelmoraError error = VelErrorsError::AutoGen_0x79B9C33C(text);
  if (error.GetName() != "VelmoraException_AutoGen_0x79B9C33C") return 1;
  if (text != TString(u"velcoredata + 20")) return 1;
  std::printf("consumer ok: %s %08X\n", text.toUtf8().c_str(), StringHash(text));
  return 0;
}
