#include "velcoredata/platform/TString.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <charconv>
#include <type_traits>

#include "velcoredata/platform/THash.h"

// The Qt-named operations delegate to Qt so that their contract is exactly
// that of QString: number formatting, number parsing, case mapping and
// case-insensitive comparison all go through QStringView without copying the
// text; only results are copied back.

namespace {

QStringView ViewOf(const std::u16string& s) { return QStringView(s.data(), static_cast<qsizetype>(s.size())); }

// A QString over the text without copying it, for operations whose QString
// form differs from the QStringView one (searches clamp `from` differently).
QString RawOf(const std::u16string& s) {
  return QString::fromRawData(reinterpret_cast<const QChar*>(s.data()), static_cast<int>(s.size()));
}

TString FromQ(const QString& q) {
  return TString(reinterpret_cast<const char16_t*>(q.utf16()), q.size());
}

Qt::CaseSensitivity ToQt(TString::CaseSensitivity cs) {
  return cs == TString::CaseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

int Length(const char16_t* text) {
  return static_cast<int>(std::char_traits<char16_t>::length(text));
}

template <typename Int>
TString IntegerText(Int n, int base) {
  if (base < 2 || base > 36) base = 10;
  if constexpr (std::is_signed_v<Int>) {
    // QString::number writes negative numbers in other bases as their 64-bit
    // two's complement.
    if (base != 10 && n < 0) return IntegerText(static_cast<unsigned long long>(static_cast<long long>(n)), base);
  }
  char buffer[72];
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, n, base);
  (void)ec;  // the buffer holds any 64-bit number in base 2
  std::u16string out(buffer, end);
  return TString(std::move(out));
}

}  // namespace

TString::TString(const char16_t* text) {
  if (text) m_text.assign(text);
}

TString::TString(const char16_t* text, int length) {
  if (text && length > 0) m_text.assign(text, static_cast<size_t>(length));
}

TString::TString(int count, char16_t ch) {
  if (count > 0) m_text.assign(static_cast<size_t>(count), ch);
}

TString::TString(const char* utf8) {
  if (utf8) *this = fromUtf8(utf8);
}

TString::TString(const std::string& utf8) : TString(fromUtf8(std::string_view(utf8))) {}

TString::TString(const QString& text) : TString(FromQ(text)) {}

TString TString::fromUtf16(const char16_t* text, int length) {
  if (!text) return {};
  return TString(text, length < 0 ? Length(text) : length);
}

TString TString::fromUtf8(const char* text, int length) {
  if (!text) return {};
  return FromQ(QString::fromUtf8(text, length));
}

TString TString::fromUtf8(std::string_view text) {
  return FromQ(QString::fromUtf8(text.data(), static_cast<int>(text.size())));
}

TString TString::fromLatin1(const char* text, int length) {
  if (!text) return {};
  if (length < 0) length = static_cast<int>(std::char_traits<char>::length(text));
  std::u16string out(static_cast<size_t>(length), u'\0');
  for (int i = 0; i < length; ++i) out[static_cast<size_t>(i)] = static_cast<unsigned char>(text[i]);
  return TString(std::move(out));
}

TString TString::fromLocal8Bit(const char* text, int length) {
  if (!text) return {};
  return FromQ(QString::fromLocal8Bit(text, length));
}

TString TString::fromQString(const QString& text) { return FromQ(text); }

std::string TString::toUtf8() const {
  const QByteArray bytes = ViewOf(m_text).toUtf8();
  return std::string(bytes.constData(), static_cast<size_t>(bytes.size()));
}

std::string TString::toLatin1() const {
  std::string out(m_text.size(), '\0');
  for (size_t i = 0; i < m_text.size(); ++i) out[i] = m_text[i] > 0xFF ? '?' : static_cast<char>(m_text[i]);
  return out;
}

std::string TString::toLocal8Bit() const {
  const QByteArray bytes = ViewOf(m_text).toLocal8Bit();
  return std::string(bytes.constData(), static_cast<size_t>(bytes.size()));
}

QString TString::toQString() const {
  return QString(reinterpret_cast<const QChar*>(m_text.data()), size());
}

TString& TString::append(const TString& s) {
  m_text.append(s.m_text);
  return *this;
}

TString& TString::append(char16_t c) {
  m_text.push_back(c);
  return *this;
}

TString& TString::append(const char16_t* s, int length) {
  if (s && length > 0) m_text.append(s, static_cast<size_t>(length));
  return *this;
}

TString& TString::prepend(const TString& s) {
  m_text.insert(0, s.m_text);
  return *this;
}

TString& TString::insert(int position, const TString& s) {
  // QString pads with spaces when inserting beyond the end.
  if (position < 0) return *this;
  if (static_cast<size_t>(position) > m_text.size()) m_text.resize(static_cast<size_t>(position), u' ');
  m_text.insert(static_cast<size_t>(position), s.m_text);
  return *this;
}

TString& TString::remove(int position, int n) {
  if (position < 0) position += size();
  if (position < 0 || position >= size() || n <= 0) return *this;
  m_text.erase(static_cast<size_t>(position), static_cast<size_t>(n));
  return *this;
}

TString& TString::remove(char16_t c, CaseSensitivity cs) {
  return replace(TString(1, c), TString(), cs);
}

TString& TString::remove(const TString& s, CaseSensitivity cs) { return replace(s, TString(), cs); }

TString& TString::replace(int position, int n, const TString& after) {
  if (position < 0 || position > size()) return *this;
  if (n < 0) n = 0;
  m_text.replace(static_cast<size_t>(position), static_cast<size_t>(n), after.m_text);
  return *this;
}

TString& TString::replace(char16_t before, char16_t after, CaseSensitivity cs) {
  if (cs == CaseSensitive) {
    std::replace(m_text.begin(), m_text.end(), before, after);
    return *this;
  }
  return replace(TString(1, before), TString(1, after), cs);
}

TString& TString::replace(const TString& before, const TString& after, CaseSensitivity cs) {
  QString q = toQString();
  q.replace(ViewOf(before.m_text).toString(), ViewOf(after.m_text).toString(), ToQt(cs));
  return *this = FromQ(q);
}

void TString::truncate(int position) {
  if (position < 0) position = 0;
  if (static_cast<size_t>(position) < m_text.size()) m_text.resize(static_cast<size_t>(position));
}

void TString::chop(int n) {
  if (n <= 0) return;
  if (static_cast<size_t>(n) >= m_text.size()) {
    m_text.clear();
  } else {
    m_text.resize(m_text.size() - static_cast<size_t>(n));
  }
}

TString TString::mid(int position, int n) const {
  // QString::mid's clamping rules.
  const int len = size();
  if (position > len) return {};
  if (position < 0) {
    if (n < 0 || n + position >= len) return *this;
    if (n + position <= 0) return {};
    n += position;
    position = 0;
  } else if (n < 0 || n > len - position) {
    n = len - position;
  }
  return TString(m_text.substr(static_cast<size_t>(position), static_cast<size_t>(n)));
}

TString TString::left(int n) const {
  if (n < 0 || n >= size()) return *this;
  return TString(m_text.substr(0, static_cast<size_t>(n)));
}

TString TString::right(int n) const {
  if (n < 0 || n >= size()) return *this;
  return TString(m_text.substr(m_text.size() - static_cast<size_t>(n)));
}

int TString::indexOf(const TString& s, int from, CaseSensitivity cs) const {
  return static_cast<int>(RawOf(m_text).indexOf(RawOf(s.m_text), from, ToQt(cs)));
}

int TString::indexOf(char16_t c, int from, CaseSensitivity cs) const {
  return static_cast<int>(RawOf(m_text).indexOf(QChar(c), from, ToQt(cs)));
}

int TString::lastIndexOf(const TString& s, int from, CaseSensitivity cs) const {
  return static_cast<int>(RawOf(m_text).lastIndexOf(RawOf(s.m_text), from, ToQt(cs)));
}

int TString::lastIndexOf(char16_t c, int from, CaseSensitivity cs) const {
  return static_cast<int>(RawOf(m_text).lastIndexOf(QChar(c), from, ToQt(cs)));
}

bool TString::contains(const TString& s, CaseSensitivity cs) const { return indexOf(s, 0, cs) != -1; }
bool TString::contains(char16_t c, CaseSensitivity cs) const { return indexOf(c, 0, cs) != -1; }

bool TString::startsWith(const TString& s, CaseSensitivity cs) const {
  return ViewOf(m_text).startsWith(ViewOf(s.m_text), ToQt(cs));
}
bool TString::startsWith(char16_t c, CaseSensitivity cs) const {
  return ViewOf(m_text).startsWith(QChar(c), ToQt(cs));
}
bool TString::endsWith(const TString& s, CaseSensitivity cs) const {
  return ViewOf(m_text).endsWith(ViewOf(s.m_text), ToQt(cs));
}
bool TString::endsWith(char16_t c, CaseSensitivity cs) const {
  return ViewOf(m_text).endsWith(QChar(c), ToQt(cs));
}

int TString::findOneOf(const TString& characters, int from) const {
  if (from < 0) from = 0;
  const size_t pos = m_text.find_first_of(characters.m_text, static_cast<size_t>(from));
  return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int TString::findOneNotOf(const TString& characters, int from) const {
  if (from < 0) from = 0;
  const size_t pos = m_text.find_first_not_of(characters.m_text, static_cast<size_t>(from));
  return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

TString TString::toLower() const { return FromQ(toQString().toLower()); }
TString TString::toUpper() const { return FromQ(toQString().toUpper()); }
TString TString::toCaseFolded() const { return FromQ(toQString().toCaseFolded()); }

TString TString::trimmed() const {
  const QStringView t = ViewOf(m_text).trimmed();
  return TString(reinterpret_cast<const char16_t*>(t.utf16()), static_cast<int>(t.size()));
}

TString TString::simplified() const { return FromQ(toQString().simplified()); }

int TString::compare(const TString& other, CaseSensitivity cs) const noexcept {
  if (cs == CaseSensitive) {
    const int c = m_text.compare(other.m_text);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
  }
  return ViewOf(m_text).compare(ViewOf(other.m_text), Qt::CaseInsensitive);
}

TString TString::number(int n, int base) { return IntegerText(n, base); }
TString TString::number(unsigned int n, int base) { return IntegerText(n, base); }
TString TString::number(long n, int base) { return IntegerText(n, base); }
TString TString::number(unsigned long n, int base) { return IntegerText(n, base); }
TString TString::number(long long n, int base) { return IntegerText(n, base); }
TString TString::number(unsigned long long n, int base) { return IntegerText(n, base); }

TString TString::number(double n, char format, int precision) {
  return FromQ(QString::number(n, format, precision));
}

int TString::toInt(bool* ok, int base) const { return ViewOf(m_text).toInt(ok, base); }
unsigned int TString::toUInt(bool* ok, int base) const { return ViewOf(m_text).toUInt(ok, base); }
long long TString::toLongLong(bool* ok, int base) const { return ViewOf(m_text).toLongLong(ok, base); }
unsigned long long TString::toULongLong(bool* ok, int base) const {
  return ViewOf(m_text).toULongLong(ok, base);
}
double TString::toDouble(bool* ok) const { return ViewOf(m_text).toDouble(ok); }

TString TString::arg(const TString& a, int fieldWidth, char16_t fill) const {
  return FromQ(toQString().arg(ViewOf(a.m_text), fieldWidth, QChar(fill)));
}

TString TString::arg(long long a, int fieldWidth, int base, char16_t fill) const {
  return FromQ(toQString().arg(static_cast<qlonglong>(a), fieldWidth, base, QChar(fill)));
}

TString TString::arg(unsigned long long a, int fieldWidth, int base, char16_t fill) const {
  return FromQ(toQString().arg(static_cast<qulonglong>(a), fieldWidth, base, QChar(fill)));
}

TString TString::arg(double a, int fieldWidth, char format, int precision, char16_t fill) const {
  return FromQ(toQString().arg(a, fieldWidth, format, precision, QChar(fill)));
}

uint32_t TString::hash() const noexcept { return StringHash(*this); }

uint32_t StringHash(const char16_t* text, int length) noexcept {
  if (!text || length <= 0) return THash32(nullptr, 0, 0);
  return THash32(text, static_cast<size_t>(length) * sizeof(char16_t), 0);
}

uint32_t StringHash(const TString& text) noexcept { return StringHash(text.data(), text.size()); }
