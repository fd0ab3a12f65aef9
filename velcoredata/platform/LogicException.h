// The logic exception: a broken precondition or an internal inconsistency.
//
// It is a programming error, not bad input. It records the source name, the
// line and the text of the failed condition. Raise it with VEL_ASSERT (the
// condition text is the stringified expression) or VEL_ASSERT_IN when a
// source name other than the file name is part of the contract.
#pragma once

#include <stdexcept>
#include <string>

#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT VelmoraLogicException : public std::logic_error {
 public:
  VelmoraLogicException(std::string sourceName, int line, std::string condition);

  const std::string& GetSourceName() const noexcept { return m_sourceName; }
  int GetLine() const noexcept { return m_line; }
  // The text of the condition that failed, exactly as written at the check.
  const std::string& GetCondition() const noexcept { return m_condition; }

 private:
  std::string m_sourceName;
  int m_line;
  std::string m_condition;
};

// Throws VelmoraLogicException. Never returns.
[[noreturn]] VELCOREDATA_EXPORT void ThrowLogicException(const char* sourceName, int line,
                                                         const char* condition);

// The source name of the current file without its directory.
#define VEL_SOURCE_FILE_NAME (__builtin_strrchr("/" __FILE__, '/') + 1)

// VEL_ASSERT(cond): raise the logic exception naming this file and `cond`.
#define VEL_ASSERT(cond) VEL_ASSERT_IN(VEL_SOURCE_FILE_NAME, cond)

// VEL_ASSERT_IN(source, cond): as VEL_ASSERT with an explicit source name.
#define VEL_ASSERT_IN(source, cond) \
  ((cond) ? static_cast<void>(0) : ::ThrowLogicException((source), __LINE__, #cond))

// VEL_FAIL_IN(source, text): unconditional failure with a condition text.
#define VEL_FAIL_IN(source, text) ::ThrowLogicException((source), __LINE__, (text))
#define VEL_FAIL(text) VEL_FAIL_IN(VEL_SOURCE_FILE_NAME, text)
