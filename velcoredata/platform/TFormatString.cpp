#include "velcoredata/platform/TFormatString.h"

#include <utility>

TFormatString::TFormatString(TString pattern) : m_pattern(std::move(pattern)) {}

TFormatString::TFormatString(CoreData::StringId message) : m_pattern(CoreData::GetString(message)) {}

TFormatString& TFormatString::arg(const TString& text) {
  m_args.push_back(text);
  return *this;
}

TString TFormatString::str() const {
  const std::u16string& p = m_pattern.str();
  std::u16string out;
  out.reserve(p.size() + 16);
  const size_t n = p.size();
  for (size_t i = 0; i < n;) {
    if (p[i] == u'%' && i + 1 < n && p[i + 1] >= u'1' && p[i + 1] <= u'9') {
      // A marker is one or two digits; the second digit is read when present.
      size_t digits = 1;
      int number = p[i + 1] - u'0';
      if (i + 2 < n && p[i + 2] >= u'0' && p[i + 2] <= u'9') {
        number = number * 10 + (p[i + 2] - u'0');
        digits = 2;
      }
      if (number <= static_cast<int>(m_args.size())) {
        out += m_args[static_cast<size_t>(number - 1)].str();
        i += 1 + digits;
        continue;
      }
    }
    out += p[i];
    ++i;
  }
  return TString(std::move(out));
}
