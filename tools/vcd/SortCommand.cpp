// vcd sort: sorts the lines of standard input under a collation.
//
// Every line gets its collation sort key once (an ICU sort key, or the
// big-endian code units for the binary ordering) and the lines are sorted
// by comparing keys bytewise: one key per line instead of a collating
// comparison per pair. Equal lines keep their input order. The original
// bytes of each line are written back unchanged.

#include <unicode/ustring.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <istream>
#include <ostream>

#include "CollationArgs.h"
#include "Command.h"
#include "velcoredata/collation/ICUCollator.h"
#include "velcoredata/locale/CoreICUUtils.h"

namespace {

class LineSorter {
 public:
  explicit LineSorter(const Collation& collation)
      : m_collation(collation), m_collator(collation.GetCollator()),
        m_icu(dynamic_cast<const ICUCollator*>(m_collator.get())) {}

  // Reads the whole input in large blocks.
  void Read(std::istream& in) {
    constexpr size_t kBlock = 1 << 20;
    for (;;) {
      const size_t old = m_text.size();
      m_text.resize(old + kBlock);
      in.read(m_text.data() + old, static_cast<std::streamsize>(kBlock));
      m_text.resize(old + static_cast<size_t>(in.gcount()));
      if (in.gcount() == 0) break;
    }
    size_t start = 0;
    while (start < m_text.size()) {
      const char* newline = static_cast<const char*>(
          std::memchr(m_text.data() + start, '\n', m_text.size() - start));
      const size_t end = newline ? static_cast<size_t>(newline - m_text.data()) : m_text.size();
      AddLine(start, end - start);
      start = end + 1;
    }
  }

  void Sort() {
    const uint8_t* keys = m_keys.data();
    std::sort(m_order.begin(), m_order.end(), [&](uint32_t a, uint32_t b) {
      const int order = CompareKeys(keys, m_lines[a], m_lines[b]);
      return order != 0 ? order < 0 : a < b;
    });
  }

  void Write(std::ostream& out, bool unique, bool withHashes) {
    std::string buffer;
    buffer.reserve(1 << 16);
    const Line* previous = nullptr;
    for (uint32_t index : m_order) {
      const Line& line = m_lines[index];
      if (unique && previous && CompareKeys(m_keys.data(), *previous, line) == 0) continue;
      previous = &line;
      if (withHashes) {
        const int length = ToUtf16(line);
        char hash[16];
        std::snprintf(hash, sizeof hash, "0x%08X\t",
                      static_cast<unsigned>(m_collation.Hash(std::u16string(m_utf16.data(), length).c_str())));
        buffer += hash;
      }
      buffer.append(m_text, line.text, line.textLength);
      buffer += '\n';
      if (buffer.size() >= (1 << 16) - 1024) {
        out.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        buffer.clear();
      }
    }
    out.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
  }

 private:
  struct Line {
    size_t text;
    size_t key;
    uint32_t textLength;
    uint32_t keyLength;
  };

  static int CompareKeys(const uint8_t* keys, const Line& a, const Line& b) {
    const int order = std::memcmp(keys + a.key, keys + b.key, std::min(a.keyLength, b.keyLength));
    if (order != 0) return order;
    return a.keyLength == b.keyLength ? 0 : (a.keyLength < b.keyLength ? -1 : 1);
  }

  // The line as UTF-16 in m_utf16 (invalid UTF-8 becomes U+FFFD); returns its length.
  int ToUtf16(const Line& line) {
    m_utf16.resize(static_cast<size_t>(line.textLength) + 1);
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(m_utf16.data(), static_cast<int32_t>(m_utf16.size()), &length,
                         m_text.data() + line.text, static_cast<int32_t>(line.textLength), 0xFFFD,
                         nullptr, &status);
    if (U_FAILURE(status)) CoreICUUtils::ThrowICUException(status, TString(u"UTF-8 input"));
    return length;
  }

  void AddLine(size_t start, size_t length) {
    Line line{start, m_keys.size(), static_cast<uint32_t>(length), 0};
    const int units = ToUtf16(line);
    if (m_icu) {
      size_t room = static_cast<size_t>(units) * 4 + 16;
      m_keys.resize(line.key + room);
      int keyLength = m_icu->GetSortKey(m_utf16.data(), units, m_keys.data() + line.key, static_cast<int>(room));
      if (static_cast<size_t>(keyLength) > room) {
        room = static_cast<size_t>(keyLength);
        m_keys.resize(line.key + room);
        keyLength = m_icu->GetSortKey(m_utf16.data(), units, m_keys.data() + line.key, static_cast<int>(room));
      }
      line.keyLength = static_cast<uint32_t>(keyLength);
    } else {
      // Big-endian code units compare bytewise in code-unit order.
      line.keyLength = static_cast<uint32_t>(units) * 2;
      m_keys.resize(line.key + line.keyLength);
      for (int i = 0; i < units; ++i) {
        m_keys[line.key + 2 * static_cast<size_t>(i)] = static_cast<uint8_t>(m_utf16[static_cast<size_t>(i)] >> 8);
        m_keys[line.key + 2 * static_cast<size_t>(i) + 1] = static_cast<uint8_t>(m_utf16[static_cast<size_t>(i)]);
      }
    }
    m_keys.resize(line.key + line.keyLength);
    m_order.push_back(static_cast<uint32_t>(m_lines.size()));
    m_lines.push_back(line);
  }

  const Collation& m_collation;
  CollatorRef m_collator;
  const ICUCollator* m_icu;
  std::string m_text;
  std::vector<uint8_t> m_keys;
  std::vector<Line> m_lines;
  std::vector<uint32_t> m_order;
  std::vector<char16_t> m_utf16;
};

int RunSort(const std::vector<std::string>& args, vcd::CommandIo& io) {
  vcd::CollationArgs collationArgs;
  bool unique = false, keys = false;
  for (size_t i = 0; i < args.size(); ++i) {
    if (collationArgs.Consume(args, i)) continue;
    if (args[i] == "--unique") unique = true;
    else if (args[i] == "--keys") keys = true;
    else throw vcd::UsageError("unknown argument '" + args[i] + "'");
  }
  if (!collationArgs.name.empty() && collationArgs.HasOptions()) {
    throw vcd::UsageError("the collation options go with --locale, not --collation");
  }
  const Collation collation = collationArgs.Build();
  LineSorter sorter(collation);
  sorter.Read(io.in);
  sorter.Sort();
  sorter.Write(io.out, unique, keys);
  return 0;
}

const vcd::CommandRegistration kSort{
    "sort",
    "sort [--collation NAME | --locale L [--case-insensitive] [--accent-insensitive] "
    "[--ignore-punctuation] [--word-sort] [--ignore-digits]] [--unique] [--keys]",
    "sort the lines of standard input (UTF-8) under a collation (default: root); --unique keeps "
    "the first of lines that compare equal, --keys prints each line's collation hash before it",
    &RunSort};

}  // namespace
