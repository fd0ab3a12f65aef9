// ICUUtils: the vocabulary shared by the locale code and its callers for the
// default date-time patterns of a locale.
#pragma once

#include <cstdint>

#include "velcoredata/platform/CaseFolding.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelICU.h"

namespace ICUUtils {

// Which of a locale's five default date-time patterns to take. The numbers
// are stored by callers; any other value is read as ShortDateLongTime.
enum class DefaultDateTimeFormatSpec : int {
  LongDate = 1,           // the full date ("EEEE, MMMM d, y")
  ShortDate = 2,          // the short date ("M/d/yy")
  LongTime = 3,           // the time with seconds ("h:mm:ss a")
  ShortDateLongTime = 4,  // the short date, a space, then the long time
  ShortTime = 5,          // the time without seconds ("h:mm a")
};

// The ICU date and time styles of a spec: LongDate is (kFull, kNone),
// ShortDate (kShort, kNone), LongTime (kNone, kMedium), ShortTime
// (kNone, kShort); ShortDateLongTime (and any unknown value) is
// (kShort, kMedium), whose pattern is built as the two parts joined by a
// space rather than with the locale's own date-time glue.
struct DateTimeStyles {
  VelICU::ICUEStyle date;
  VelICU::ICUEStyle time;
};
VELCOREDATA_EXPORT DateTimeStyles GetStylesOfSpec(DefaultDateTimeFormatSpec spec) noexcept;

// The pattern of an ICU date format (SimpleDateFormat::toPattern), with the
// narrow and ordinary no-break spaces that recent locale data puts before
// the meridiem (U+202F, U+00A0) written as plain spaces: typed text and the
// other pattern dialects only know plain spaces. Empty when the format is not
// a SimpleDateFormat.
VELCOREDATA_EXPORT TString GetPattern(const VelICU::ICUDateFormat& format);

// Replaces U+202F and U+00A0 by U+0020 in place.
VELCOREDATA_EXPORT void NormalizeSpaces(TString& text) noexcept;

// Full Unicode case folding (see FoldCase).
inline TString StrFoldCase(const TString& text) { return FoldCase(text); }

}  // namespace ICUUtils
