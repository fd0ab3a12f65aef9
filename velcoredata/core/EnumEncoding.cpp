#include "velcoredata/core/EnumEncoding.h"

#include "velcoredata/platform/TFormatString.h"

XMLEnumEncodingException::XMLEnumEncodingException(const char* enumName, long long value)
    : VelmoraException(VelErrorsError::AutoGen_0x3E0C1A75(
          TFormatString(u"Value %1 of enumeration %2 has no encoding").arg(value).arg(TString(enumName)))) {}

std::unique_ptr<VelmoraException> XMLEnumEncodingException::Clone() const {
  return std::make_unique<XMLEnumEncodingException>(*this);
}

void XMLEnumEncodingException::Throw() const { throw *this; }

namespace Implementation {
void ThrowXMLEnumEncodingException(const char* enumName, long long value) {
  throw XMLEnumEncodingException(enumName ? enumName : "?", value);
}
}  // namespace Implementation
