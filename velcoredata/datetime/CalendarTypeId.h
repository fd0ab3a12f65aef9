// CalendarTypeId: the text ids of the calendar types.
//
// The ids are constant TStrings made when the library is loaded. Unknown
// types and ids fall back to Gregorian without an error.
#pragma once

#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT CalendarTypeId {
 public:
  static const TString CALENDAR_GREGORIAN;  // "Gregorian"
  static const TString CALENDAR_ISO8601;    // "ISO8601"
  static const TString CALENDAR_DEFAULT;    // a copy of CALENDAR_GREGORIAN

  // Gregorian and ISO-8601 give their ids, any other value CALENDAR_DEFAULT.
  static const TString& ConvertCalendarTypeToId(CalendarType type) noexcept;
  // Exactly "ISO8601" (case-sensitive) is ISO-8601; everything else, unknown
  // texts included, is Gregorian.
  static CalendarType ConvertIdToCalendarType(const TString& id) noexcept;
};
