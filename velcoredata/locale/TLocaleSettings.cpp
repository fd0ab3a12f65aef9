// TLocale: the locale's number, currency and list settings.

#include <QLocale>

#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/TLocale.h"

QLocale TLocale::GetQLocale(uint32_t lcid) {
  // Qt reads "de_DE" but not ICU's keywords ("@collation=...").
  std::string name = LanguageUtils::GetLocaleForLCID(lcid);
  name = name.substr(0, name.find('@'));
  return QLocale(QString::fromLatin1(name.c_str()));
}
