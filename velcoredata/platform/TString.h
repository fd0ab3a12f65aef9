// TString: the library's UTF-16 text value.
//
// A value class over std::u16string (short strings stay inline). Every text
// that crosses the library's interface is a TString. Operations named after
// QString operations (number, setNum, arg, toDouble, toLongLong, toUInt,
// compare, toLower, toUpper, trimmed, ...) have the contract of the QString
// operation of the same name; sizes and positions are `int` as in Qt, and
// "not found" is -1.
//
// 8-bit text given to the constructors and to fromUtf8 is UTF-8; invalid
// bytes decode to U+FFFD, as QString::fromUtf8 does. Lone surrogates are kept
// as they are in the UTF-16 value and written as U+FFFD by toUtf8.
//
// Thread-safety: a TString is a plain value; distinct objects may be used on
// distinct threads, one object is not synchronised.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "velcoredata/platform/Export.h"

class QString;

class VELCOREDATA_EXPORT TString {
 public:
  // Same numbering as Qt::CaseSensitivity.
  enum CaseSensitivity { CaseInsensitive = 0, CaseSensitive = 1 };

  using value_type = char16_t;
  using iterator = std::u16string::iterator;
  using const_iterator = std::u16string::const_iterator;

  TString() = default;
  TString(const char16_t* text);  // NOLINT: implicit like QString; null gives ""
  TString(const char16_t* text, int length);
  TString(std::u16string text) noexcept : m_text(std::move(text)) {}  // NOLINT
  TString(std::u16string_view text) : m_text(text) {}                // NOLINT
  TString(int count, char16_t ch);
  TString(const char* utf8);  // NOLINT: implicit like QString; null gives ""
  TString(const std::string& utf8);  // NOLINT
  explicit TString(const QString& text);

  // Conversions in.
  static TString fromUtf16(const char16_t* text, int length = -1);
  static TString fromUtf8(const char* text, int length = -1);
  static TString fromUtf8(std::string_view text);
  static TString fromLatin1(const char* text, int length = -1);
  static TString fromLocal8Bit(const char* text, int length = -1);
  static TString fromQString(const QString& text);

  // Conversions out.
  std::string toUtf8() const;
  std::string toStdString() const { return toUtf8(); }
  std::string toLatin1() const;  // characters above U+00FF become '?'
  std::string toLocal8Bit() const;
  QString toQString() const;
  const std::u16string& str() const noexcept { return m_text; }
  std::u16string_view view() const noexcept { return m_text; }
  operator std::u16string_view() const noexcept { return m_text; }  // NOLINT

  // Size and access.
  int size() const noexcept { return static_cast<int>(m_text.size()); }
  int length() const noexcept { return size(); }
  bool isEmpty() const noexcept { return m_text.empty(); }
  bool empty() const noexcept { return m_text.empty(); }
  // There is no separate null state: a null TString is an empty one.
  bool isNull() const noexcept { return m_text.empty(); }
  const char16_t* data() const noexcept { return m_text.c_str(); }
  char16_t* data() noexcept { return m_text.data(); }
  const char16_t* utf16() const noexcept { return m_text.c_str(); }
  const char16_t* c_str() const noexcept { return m_text.c_str(); }
  char16_t at(int i) const { return m_text.at(static_cast<size_t>(i)); }
  char16_t operator[](int i) const noexcept { return m_text[static_cast<size_t>(i)]; }
  char16_t& operator[](int i) noexcept { return m_text[static_cast<size_t>(i)]; }
  char16_t front() const { return m_text.front(); }
  char16_t back() const { return m_text.back(); }
  iterator begin() noexcept { return m_text.begin(); }
  iterator end() noexcept { return m_text.end(); }
  const_iterator begin() const noexcept { return m_text.begin(); }
  const_iterator end() const noexcept { return m_text.end(); }

  // Editing.
  void clear() noexcept { m_text.clear(); }
  void reserve(int n) { m_text.reserve(n < 0 ? 0 : static_cast<size_t>(n)); }
  void resize(int n) { m_text.resize(n < 0 ? 0 : static_cast<size_t>(n)); }
  void resize(int n, char16_t fill) { m_text.resize(n < 0 ? 0 : static_cast<size_t>(n), fill); }
  TString& append(const TString& s);
  TString& append(char16_t c);
  TString& append(const char16_t* s, int length);
  TString& prepend(const TString& s);
  TString& insert(int position, const TString& s);
  TString& remove(int position, int n);
  TString& remove(char16_t c, CaseSensitivity cs = CaseSensitive);
  TString& remove(const TString& s, CaseSensitivity cs = CaseSensitive);
  TString& replace(int position, int n, const TString& after);
  TString& replace(char16_t before, char16_t after, CaseSensitivity cs = CaseSensitive);
  TString& replace(const TString& before, const TString& after,
                   CaseSensitivity cs = CaseSensitive);
  TString& operator+=(const TString& s) { return append(s); }
  TString& operator+=(char16_t c) { return append(c); }
  TString& operator+=(const char16_t* s) { return append(TString(s)); }
  // Cuts the text at `position` (no change when position >= size()).
  void truncate(int position);
  // Removes n code units from the end.
  void chop(int n);

  // Substrings (positions out of range are clamped as QString clamps them).
  TString mid(int position, int n = -1) const;
  TString left(int n) const;
  TString right(int n) const;

  // Searching.
  int indexOf(const TString& s, int from = 0, CaseSensitivity cs = CaseSensitive) const;
  int indexOf(char16_t c, int from = 0, CaseSensitivity cs = CaseSensitive) const;
  int lastIndexOf(const TString& s, int from = -1, CaseSensitivity cs = CaseSensitive) const;
  int lastIndexOf(char16_t c, int from = -1, CaseSensitivity cs = CaseSensitive) const;
  bool contains(const TString& s, CaseSensitivity cs = CaseSensitive) const;
  bool contains(char16_t c, CaseSensitivity cs = CaseSensitive) const;
  bool startsWith(const TString& s, CaseSensitivity cs = CaseSensitive) const;
  bool startsWith(char16_t c, CaseSensitivity cs = CaseSensitive) const;
  bool endsWith(const TString& s, CaseSensitivity cs = CaseSensitive) const;
  bool endsWith(char16_t c, CaseSensitivity cs = CaseSensitive) const;
  // The position of the first code unit at or after `from` that is (not) one
  // of `characters`, or -1.
  int findOneOf(const TString& characters, int from = 0) const;
  int findOneNotOf(const TString& characters, int from = 0) const;

  // Case and white space (Unicode rules, as QString applies them).
  TString toLower() const;
  TString toUpper() const;
  TString toCaseFolded() const;
  TString trimmed() const;
  TString simplified() const;

  // Comparison: negative, 0 or positive. Case-sensitive comparison orders by
  // UTF-16 code unit.
  int compare(const TString& other, CaseSensitivity cs = CaseSensitive) const noexcept;
  static int compare(const TString& a, const TString& b, CaseSensitivity cs = CaseSensitive) noexcept {
    return a.compare(b, cs);
  }
  static int Compare(const TString& a, const TString& b) noexcept { return a.compare(b); }

  // Numbers to text.
  static TString number(int n, int base = 10);
  static TString number(unsigned int n, int base = 10);
  static TString number(long n, int base = 10);
  static TString number(unsigned long n, int base = 10);
  static TString number(long long n, int base = 10);
  static TString number(unsigned long long n, int base = 10);
  // format is 'e', 'E', 'f', 'g' or 'G'; precision as in QString::number.
  static TString number(double n, char format = 'g', int precision = 6);
  TString& setNum(int n, int base = 10) { return *this = number(n, base); }
  TString& setNum(unsigned int n, int base = 10) { return *this = number(n, base); }
  TString& setNum(long n, int base = 10) { return *this = number(n, base); }
  TString& setNum(unsigned long n, int base = 10) { return *this = number(n, base); }
  TString& setNum(long long n, int base = 10) { return *this = number(n, base); }
  TString& setNum(unsigned long long n, int base = 10) { return *this = number(n, base); }
  TString& setNum(double n, char format = 'g', int precision = 6) {
    return *this = number(n, format, precision);
  }

  // Text to numbers. On failure the result is 0 and *ok is false. Leading and
  // trailing white space is accepted, as QString accepts it.
  int toInt(bool* ok = nullptr, int base = 10) const;
  unsigned int toUInt(bool* ok = nullptr, int base = 10) const;
  long long toLongLong(bool* ok = nullptr, int base = 10) const;
  unsigned long long toULongLong(bool* ok = nullptr, int base = 10) const;
  double toDouble(bool* ok = nullptr) const;

  // QString::arg: replaces the lowest-numbered place marker %1 ... %99.
  TString arg(const TString& a, int fieldWidth = 0, char16_t fill = u' ') const;
  TString arg(const char16_t* a, int fieldWidth = 0, char16_t fill = u' ') const {
    return arg(TString(a), fieldWidth, fill);
  }
  TString arg(char16_t a, int fieldWidth = 0, char16_t fill = u' ') const {
    return arg(TString(1, a), fieldWidth, fill);
  }
  TString arg(int a, int fieldWidth = 0, int base = 10, char16_t fill = u' ') const {
    return arg(static_cast<long long>(a), fieldWidth, base, fill);
  }
  TString arg(unsigned int a, int fieldWidth = 0, int base = 10, char16_t fill = u' ') const {
    return arg(static_cast<unsigned long long>(a), fieldWidth, base, fill);
  }
  TString arg(long a, int fieldWidth = 0, int base = 10, char16_t fill = u' ') const {
    return arg(static_cast<long long>(a), fieldWidth, base, fill);
  }
  TString arg(unsigned long a, int fieldWidth = 0, int base = 10, char16_t fill = u' ') const {
    return arg(static_cast<unsigned long long>(a), fieldWidth, base, fill);
  }
  TString arg(long long a, int fieldWidth = 0, int base = 10, char16_t fill = u' ') const;
  TString arg(unsigned long long a, int fieldWidth = 0, int base = 10,
              char16_t fill = u' ') const;
  TString arg(double a, int fieldWidth = 0, char format = 'g', int precision = -1,
              char16_t fill = u' ') const;

  // 32-bit hash of the UTF-16 code units (StringHash).
  uint32_t hash() const noexcept;

  friend bool operator==(const TString& a, const TString& b) noexcept { return a.m_text == b.m_text; }
  friend std::strong_ordering operator<=>(const TString& a, const TString& b) noexcept {
    return a.m_text <=> b.m_text;
  }
  friend bool operator==(const TString& a, const char16_t* b) noexcept {
    return b ? a.m_text == b : a.m_text.empty();
  }
  friend TString operator+(TString a, const TString& b) { return a.append(b); }
  friend TString operator+(TString a, const char16_t* b) { return a.append(TString(b)); }
  friend TString operator+(const char16_t* a, const TString& b) { return TString(a).append(b); }
  friend TString operator+(TString a, char16_t b) { return a.append(b); }

 private:
  std::u16string m_text;
};

// The platform string hash (THash32 of the UTF-16 bytes, seed 0).
VELCOREDATA_EXPORT uint32_t StringHash(const TString& text) noexcept;
VELCOREDATA_EXPORT uint32_t StringHash(const char16_t* text, int length) noexcept;

template <>
struct std::hash<TString> {
  size_t operator()(const TString& s) const noexcept { return s.hash(); }
};
