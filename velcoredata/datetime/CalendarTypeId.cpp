#include "velcoredata/datetime/CalendarTypeId.h"

const TString CalendarTypeId::CALENDAR_GREGORIAN(u"Gregorian");
const TString CalendarTypeId::CALENDAR_ISO8601(u"ISO8601");
const TString CalendarTypeId::CALENDAR_DEFAULT(CalendarTypeId::CALENDAR_GREGORIAN);

const TString& CalendarTypeId::ConvertCalendarTypeToId(CalendarType type) noexcept {
  switch (type) {
    case CalendarType::Gregorian:
      return CALENDAR_GREGORIAN;
    case CalendarType::ISO8601:
      return CALENDAR_ISO8601;
  }
  return CALENDAR_DEFAULT;
}

CalendarType CalendarTypeId::ConvertIdToCalendarType(const TString& id) noexcept {
  return id == CALENDAR_ISO8601 ? CalendarType::ISO8601 : CalendarType::Gregorian;
}
