// The date-time parsing-format table: the numbered ICU patterns that texts
// are parsed with, and that the fixed text forms of values are written in.
//
// A few entries are the interface of other code and never change:
//   4  "yyyy-MM-dd HH:mm:ss.SSS"  a date-time with milliseconds
//   10 "yyyy-MM-dd HH:mm:ss"      a date-time
//   18 "yyyy-MM-dd"               a date
//   65 "HH:mm:ss"                 a time of day
// The others are the forms a text is tried against: ISO 8601 (extended and
// basic, with "T" or a space, with an offset, with fractions, ordinal and
// week dates), year-first numeric dates, and the U.S. English forms of the
// default locale (month first, month names, 12-hour times, the e-mail and
// C library date texts).
//
// Locale-neutral entries (numeric, year first, or ISO week dates) read the
// same everywhere and are tried for every locale; the others only for the
// default ISO locale ("en_US"), whose own patterns they are.
#pragma once

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

// The number of entries; indices run from 0 to the count - 1.
VELCOREDATA_EXPORT int GetDateTimeParsingFormatCount() noexcept;

// The ICU pattern of entry `index`. An index outside the table is a logic error.
VELCOREDATA_EXPORT const TString& LookupDateTimeParsingFormatString(int index);

// Whether entry `index` is locale-neutral (see above). An index outside the
// table is a logic error.
VELCOREDATA_EXPORT bool IsLocaleNeutralDateTimeParsingFormat(int index);
