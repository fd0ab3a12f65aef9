// LogMessage: the library's diagnostics, written through Qt's logging.
//
// Each subsystem logs under its own Qt logging category, "velcoredata.<area>"
// (velcoredata.datetime, velcoredata.collation, ...). A host routes the
// messages with qInstallMessageHandler or silences them with QT_LOGGING_RULES
// (for example "velcoredata.*.debug=false"). Diagnostic texts are fixed
// English; user-facing texts come from the message tables instead.
#pragma once

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

enum class LogArea : int {
  Platform,
  DateTime,
  Locale,
  NumberFormat,
  Collation,
  StringPool,
  Values,
  Names,
  Strings,
  FeatureFlags,
  Color,
  Version,
  Tool,
};

enum class LogSeverity : int { Debug, Info, Warning, Error };

// The Qt category name of an area, e.g. "velcoredata.datetime".
VELCOREDATA_EXPORT const char* LogCategoryName(LogArea area) noexcept;

// Writes one message. Never throws.
VELCOREDATA_EXPORT void LogMessage(LogArea area, LogSeverity severity, const TString& text) noexcept;
VELCOREDATA_EXPORT void LogMessage(LogArea area, LogSeverity severity, const char* text) noexcept;

// Whether a message of that severity would be written (to skip building it).
VELCOREDATA_EXPORT bool IsLogEnabled(LogArea area, LogSeverity severity) noexcept;
