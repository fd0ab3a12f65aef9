#include "velcoredata/platform/LogicException.h"

#include <utility>

namespace {
std::string Describe(const std::string& source, int line, const std::string& condition) {
  return "Assertion failed: " + condition + " (" + source + ":" + std::to_string(line) + ")";
}
}  // namespace

VelmoraLogicException::VelmoraLogicException(std::string sourceName, int line,
                                             std::string condition)
    : std::logic_error(Describe(sourceName, line, condition)),
      m_sourceName(std::move(sourceName)),
      m_line(line),
      m_condition(std::move(condition)) {}

void ThrowLogicException(const char* sourceName, int line, const char* condition) {
  throw VelmoraLogicException(sourceName ? sourceName : "", line, condition ? condition : "");
}
