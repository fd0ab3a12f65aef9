// The six translations of date-time patterns between the ICU, Qt, Windows and
// custom dialects. They share one scanner: the pattern is read in runs of a
// repeated character, quoted literals are cut out whole, and each morph
// supplies a table that translates a run.

#include <algorithm>

#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/TCType.h"

namespace {

// How quoted literals are written by a morph.
enum class LiteralStyle {
  Copy,               // copied as they stand (ICU, Qt and Windows targets)
  CustomFromICU,      // ICU literal -> custom: "''" -> "'", others in double quotes
  CustomFromWindows,  // as CustomFromICU, and an empty literal also -> "'"
};

// What a morph does with a character its table does not know.
enum class UnknownRule {
  DropLetters,  // letters vanish (with the white space before them); others are copied
  CopyAll,
};

class MorphOutput {
 public:
  void Append(char16_t c) { m_text.append(c); }
  void Append(const char16_t* s) { m_text.append(TString(s)); }
  void Append(const TString& s) { m_text.append(s); }
  void Repeat(char16_t c, int count) {
    for (int i = 0; i < count; ++i) m_text.append(c);
  }
  // Trims the white space at the end of what has been written so far: a
  // field that vanishes should not leave its separator dangling.
  void TrimTrailingSpace() {
    int end = m_text.size();
    while (end > 0 && TCType::isSpace(m_text[end - 1])) --end;
    m_text.truncate(end);
  }
  TString Take() { return std::move(m_text); }

 private:
  TString m_text;
};

// What a table did with a run.
enum class RunResult {
  Translated,  // the run (n characters) is done
  Unknown,     // not in the table: the default rule applies
  Restart,     // start the whole conversion again (Qt AM/PM seen in 24-hour mode)
};

// A run of `count` equal characters `c` starting at `position`; the table may
// extend the run it consumes through `consumed`.
struct Run {
  const TString& pattern;
  int position;
  char16_t c;
  int count;
  int consumed;
};

int RunLength(const TString& pattern, int position) {
  const char16_t c = pattern[position];
  int end = position + 1;
  while (end < pattern.size() && pattern[end] == c) ++end;
  return end - position;
}

// The literal whose opening quote stands at `begin`: it ends one past the
// closing quote, or at the pattern's end when it is unterminated.
struct Literal {
  int begin;
  int end;
  bool terminated;
};

Literal FindLiteral(const TString& pattern, int begin) {
  int i = begin + 1;
  while (i < pattern.size()) {
    if (pattern[i] == u'\'') {
      if (i + 1 < pattern.size() && pattern[i + 1] == u'\'') {
        i += 2;  // a doubled quote inside the literal
        continue;
      }
      return {begin, i + 1, true};
    }
    ++i;
  }
  return {begin, pattern.size(), false};
}

// A custom-dialect literal: the enclosing quotes go, inner "''" -> "'",
// '"' -> '\"', and the text is written in double quotes.
void WriteCustomLiteral(const TString& pattern, const Literal& literal, MorphOutput& out) {
  const int contentBegin = literal.begin + 1;
  const int contentEnd = literal.terminated ? literal.end - 1 : literal.end;
  out.Append(u'"');
  for (int i = contentBegin; i < contentEnd; ++i) {
    const char16_t c = pattern[i];
    if (c == u'\'' && i + 1 < contentEnd && pattern[i + 1] == u'\'') {
      out.Append(u'\'');
      ++i;
    } else if (c == u'"') {
      out.Append(u"\\\"");
    } else {
      out.Append(c);
    }
  }
  out.Append(u'"');
}

template <class Table>
bool Scan(const TString& pattern, LiteralStyle literals, UnknownRule unknown, Table&& table, TString& result) {
  MorphOutput out;
  int i = 0;
  while (i < pattern.size()) {
    const char16_t c = pattern[i];
    const int n = RunLength(pattern, i);
    if (c == u'\'') {
      if (n >= 2) {
        // The escaped quote pair; a longer run leaves its remaining quotes
        // to start the next step.
        if (literals == LiteralStyle::Copy) {
          out.Append(u"''");
        } else {
          out.Append(u'\'');
        }
        i += 2;
        continue;
      }
      const Literal literal = FindLiteral(pattern, i);
      if (literals == LiteralStyle::Copy) {
        out.Append(pattern.mid(i, literal.end - i));
      } else if (literals == LiteralStyle::CustomFromWindows && literal.end - i <= 1) {
        out.Append(u'\'');  // an empty literal: the opening quote alone at the end
      } else {
        WriteCustomLiteral(pattern, literal, out);
      }
      i = literal.end;
      continue;
    }
    Run run{pattern, i, c, n, n};
    switch (table(run, out)) {
      case RunResult::Restart:
        return false;
      case RunResult::Translated:
        i += run.consumed;
        continue;
      case RunResult::Unknown:
        break;
    }
    if (unknown == UnknownRule::DropLetters && TCType::isAlpha(c)) {
      out.TrimTrailingSpace();
    } else {
      out.Repeat(c, n);
    }
    i += n;
  }
  result = out.Take();
  return true;
}

// Year runs into a Qt, Windows or custom pattern: n = 1 or n >= 4 -> "yyyy",
// n = 2 or 3 -> "yy" (ICU "y" is the full year, "yy" the two-digit one).
void WriteYearFromICU(int n, MorphOutput& out) { out.Append(n == 1 || n >= 4 ? u"yyyy" : u"yy"); }

// Year runs from a Windows or Qt pattern: fewer than 3 -> "yy", else "yyyy".
void WriteYearFromWindows(int n, MorphOutput& out) { out.Append(n < 3 ? u"yy" : u"yyyy"); }

// ICU months towards Qt and Windows: up to four kept, the narrow form (five)
// becomes the abbreviated month (three).
void WriteMonthFromICU(char16_t letter, int n, MorphOutput& out) { out.Repeat(letter, n <= 4 ? n : 3); }

// ICU weekday-number runs ("c", "e"): the long forms become the abbreviated
// weekday name, the numeric ones a day number.
void WriteLocalWeekdayFromICU(int n, MorphOutput& out) {
  if (n > 4) {
    out.Append(u"ddd");
  } else {
    out.Repeat(u'd', std::min(n, 2));
  }
}

// The rows shared by MorphICUToQlocale and MorphICUtoWindowsCustom.
bool WriteCommonICURun(const Run& run, MorphOutput& out) {
  const int n = run.count;
  switch (run.c) {
    case u'E':
      out.Append(n < 4 ? u"ddd" : u"dddd");
      return true;
    case u'H':
    case u'K':
      out.Repeat(u'H', std::min(n, 2));
      return true;
    case u'L':
    case u'M':
      WriteMonthFromICU(run.c, n, out);
      return true;
    case u'c':
    case u'e':
      WriteLocalWeekdayFromICU(n, out);
      return true;
    case u'd':
      out.Repeat(u'd', std::min(n, 2));
      return true;
    case u'h':
    case u'j':
    case u'k':
      out.Repeat(u'h', std::min(n, 2));
      return true;
    case u's':
      out.Repeat(u's', std::min(n, 2));
      return true;
    case u'u':
    case u'y':
      WriteYearFromICU(n, out);
      return true;
    default:
      return false;
  }
}

}  // namespace

TString TLocale::MorphQLocaleToICU(const TString& pattern, bool twelveHour) {
  TString result;
  const bool done = Scan(pattern, LiteralStyle::Copy, UnknownRule::DropLetters,
                         [twelveHour](Run& run, MorphOutput& out) {
                           const int n = run.count;
                           switch (run.c) {
                             case u'A':
                             case u'a': {
                               // "AP"/"ap": the P belongs to the marker.
                               const char16_t p = run.c == u'A' ? u'P' : u'p';
                               const int next = run.position + n;
                               if (next < run.pattern.size() && run.pattern[next] == p) run.consumed = n + 1;
                               if (!twelveHour) return RunResult::Restart;
                               out.Append(u'a');
                               return RunResult::Translated;
                             }
                             case u'H':
                               out.Repeat(u'H', std::min(n, 2));
                               return RunResult::Translated;
                             case u'h':
                               out.Repeat(twelveHour ? u'h' : u'H', std::min(n, 2));
                               return RunResult::Translated;
                             case u'M':
                               out.Repeat(u'M', std::min(n, 4));
                               return RunResult::Translated;
                             case u'd':
                               if (n <= 2) {
                                 out.Repeat(u'd', n);
                               } else {
                                 out.Append(n == 3 ? u"EEE" : u"EEEE");
                               }
                               return RunResult::Translated;
                             case u'm':
                             case u's':
                               out.Repeat(run.c, std::min(n, 2));
                               return RunResult::Translated;
                             case u't':
                               // The zone has no ICU counterpart here; drop it and its separator.
                               out.TrimTrailingSpace();
                               return RunResult::Translated;
                             case u'y':
                               WriteYearFromWindows(n, out);
                               return RunResult::Translated;
                             case u'z':
                               out.Append(n == 1 ? u"S" : u"SSS");
                               return RunResult::Translated;
                             default:
                               return RunResult::Unknown;
                           }
                         },
                         result);
  // An AM/PM marker anywhere means a 12-hour clock: convert again so that
  // every "h" before the marker becomes ICU's 12-hour "h" too.
  return done ? result : MorphQLocaleToICU(pattern, true);
}

TString TLocale::MorphICUToQlocale(const TString& pattern) {
  TString result;
  Scan(pattern, LiteralStyle::Copy, UnknownRule::DropLetters,
       [](Run& run, MorphOutput& out) {
         if (WriteCommonICURun(run, out)) return RunResult::Translated;
         const int n = run.count;
         switch (run.c) {
           case u'S':
             out.Append(n < 4 ? u"z" : u"zzz");
             return RunResult::Translated;
           case u'a':
             out.Append(u"AP");
             return RunResult::Translated;
           case u'm':
             out.Repeat(u'm', std::min(n, 2));
             return RunResult::Translated;
           case u'z':
             out.Repeat(u't', std::min(n, 3));
             return RunResult::Translated;
           default:
             return RunResult::Unknown;
         }
       },
       result);
  return result;
}

TString TLocale::MorphICUtoWindowsCustom(const TString& pattern, bool toWindows) {
  TString result;
  Scan(pattern, toWindows ? LiteralStyle::Copy : LiteralStyle::CustomFromICU, UnknownRule::DropLetters,
       [toWindows](Run& run, MorphOutput& out) {
         if (WriteCommonICURun(run, out)) return RunResult::Translated;
         const int n = run.count;
         switch (run.c) {
           case u'G':
             if (!toWindows) return RunResult::Unknown;  // the custom dialect has no era
             out.Append(u'g');
             return RunResult::Translated;
           case u'a':
             out.Append(toWindows ? u"tt" : u"AM/PM");
             return RunResult::Translated;
           case u'm':
             // The custom dialect writes minutes as "n" ("m" is its month).
             out.Repeat(toWindows ? u'm' : u'n', std::min(n, 2));
             return RunResult::Translated;
           case u'\\':
           case u'"':
             if (toWindows) return RunResult::Unknown;
             for (int i = 0; i < n; ++i) {
               out.Append(u'\\');
               out.Append(run.c);
             }
             return RunResult::Translated;
           default:
             return RunResult::Unknown;
         }
       },
       result);
  return result;
}

namespace {

// The rows shared by the three morphs from the Windows dialect: hours,
// minutes and seconds keep at most two letters, years become "yy"/"yyyy".
bool WriteCommonWindowsRun(const Run& run, MorphOutput& out) {
  switch (run.c) {
    case u'H':
    case u'h':
    case u's':
      out.Repeat(run.c, std::min(run.count, 2));
      return true;
    case u'y':
      WriteYearFromWindows(run.count, out);
      return true;
    default:
      return false;
  }
}

}  // namespace

TString TLocale::MorphWindowsToICU(const TString& pattern) {
  TString result;
  Scan(pattern, LiteralStyle::Copy, UnknownRule::CopyAll,
       [](Run& run, MorphOutput& out) {
         if (WriteCommonWindowsRun(run, out)) return RunResult::Translated;
         const int n = run.count;
         switch (run.c) {
           case u'm':
             out.Repeat(u'm', std::min(n, 2));
             return RunResult::Translated;
           case u'M':
             out.Repeat(u'M', std::min(n, 5));
             return RunResult::Translated;
           case u'd':
             if (n <= 2) {
               out.Repeat(u'd', n);
             } else {
               out.Repeat(u'E', std::min(n, 6));
             }
             return RunResult::Translated;
           case u'g':
             out.Append(n == 1 ? u"G" : u"GGGG");
             return RunResult::Translated;
           case u't':
             out.Append(u'a');
             return RunResult::Translated;
           default:
             return RunResult::Unknown;
         }
       },
       result);
  return result;
}

TString TLocale::MorphWindowsToQLocale(const TString& pattern) {
  TString result;
  Scan(pattern, LiteralStyle::Copy, UnknownRule::CopyAll,
       [](Run& run, MorphOutput& out) {
         if (WriteCommonWindowsRun(run, out)) return RunResult::Translated;
         const int n = run.count;
         switch (run.c) {
           case u'm':
             out.Repeat(u'm', std::min(n, 2));
             return RunResult::Translated;
           case u'M':
             out.Repeat(u'M', n <= 4 ? n : 3);
             return RunResult::Translated;
           case u'd':
             out.Repeat(u'd', std::min(n, 4));
             return RunResult::Translated;
           case u'g':
             out.TrimTrailingSpace();  // Qt has no era
             return RunResult::Translated;
           case u't':
             out.Append(u"AP");
             return RunResult::Translated;
           default:
             return RunResult::Unknown;
         }
       },
       result);
  return result;
}

TString TLocale::MorphWindowsToCustom(const TString& pattern) {
  TString result;
  Scan(pattern, LiteralStyle::CustomFromWindows, UnknownRule::CopyAll,
       [](Run& run, MorphOutput& out) {
         if (WriteCommonWindowsRun(run, out)) return RunResult::Translated;
         const int n = run.count;
         switch (run.c) {
           case u'M':
             out.Repeat(u'M', std::min(n, 5));
             return RunResult::Translated;
           case u'd':
             out.Repeat(u'd', std::min(n, 4));
             return RunResult::Translated;
           case u'g':
             out.TrimTrailingSpace();  // the custom dialect has no era
             return RunResult::Translated;
           case u'm':
             out.Repeat(u'n', std::min(n, 2));
             return RunResult::Translated;
           case u't':
             out.Append(n == 1 ? u"A/P" : u"AM/PM");
             return RunResult::Translated;
           default:
             return RunResult::Unknown;
         }
       },
       result);
  return result;
}
