#include "velcoredata/platform/LogMessage.h"

#include <QLoggingCategory>
#include <QString>

namespace {

// Categories are created once and never destroyed: logging may happen from
// thread-exit hooks and static destructors.
const QLoggingCategory& Category(LogArea area) {
  static const QLoggingCategory* const categories[] = {
      new QLoggingCategory("velcoredata.platform"), new QLoggingCategory("velcoredata.datetime"),
      new QLoggingCategory("velcoredata.locale"),   new QLoggingCategory("velcoredata.numfmt"),
      new QLoggingCategory("velcoredata.collation"), new QLoggingCategory("velcoredata.stringpool"),
      new QLoggingCategory("velcoredata.values"),   new QLoggingCategory("velcoredata.names"),
      new QLoggingCategory("velcoredata.strings"),  new QLoggingCategory("velcoredata.flags"),
      new QLoggingCategory("velcoredata.color"),    new QLoggingCategory("velcoredata.version"),
      new QLoggingCategory("velcoredata.tool"),
  };
  static_assert(sizeof categories / sizeof categories[0] == static_cast<int>(LogArea::Tool) + 1);
  const int i = static_cast<int>(area);
  return *categories[(i >= 0 && i <= static_cast<int>(LogArea::Tool)) ? i : 0];
}

QtMsgType ToQt(LogSeverity severity) {
  switch (severity) {
    case LogSeverity::Debug: return QtDebugMsg;
    case LogSeverity::Info: return QtInfoMsg;
    case LogSeverity::Warning: return QtWarningMsg;
    case LogSeverity::Error: return QtCriticalMsg;
  }
  return QtWarningMsg;
}

}  // namespace

const char* LogCategoryName(LogArea area) noexcept { return Category(area).categoryName(); }

bool IsLogEnabled(LogArea area, LogSeverity severity) noexcept {
  return Category(area).isEnabled(ToQt(severity));
}

void LogMessage(LogArea area, LogSeverity severity, const TString& text) noexcept {
  try {
    const QLoggingCategory& category = Category(area);
    const QtMsgType type = ToQt(severity);
    if (!category.isEnabled(type)) return;
    const QString message = text.toQString();
    QMessageLogger logger(nullptr, 0, nullptr, category.categoryName());
    switch (type) {
      case QtDebugMsg: logger.debug("%s", qUtf8Printable(message)); break;
      case QtInfoMsg: logger.info("%s", qUtf8Printable(message)); break;
      case QtWarningMsg: logger.warning("%s", qUtf8Printable(message)); break;
      default: logger.critical("%s", qUtf8Printable(message)); break;
    }
  } catch (...) {
    // Logging must never turn a diagnostic into a failure.
  }
}

void LogMessage(LogArea area, LogSeverity severity, const char* text) noexcept {
  try {
    LogMessage(area, severity, TString(text));
  } catch (...) {
  }
}
