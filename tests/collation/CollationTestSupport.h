// Helpers shared by the collation tests.
#pragma once

#include <string>
#include <vector>

#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TString.h"

namespace CollationTestSupport {

// The condition text of the logic exception `f` raises, or "<no exception>".
template <class F>
std::string LogicConditionOf(F&& f) {
  try {
    f();
  } catch (const VelmoraLogicException& e) {
    return e.GetCondition();
  }
  return "<no exception>";
}

// The text of an output vector (without its terminating 0).
inline TString TextOf(const std::vector<char16_t>& out) {
  if (out.empty() || out.back() != 0) return TString(u"<not terminated>");
  return TString(out.data(), static_cast<int>(out.size()) - 1);
}

inline int Sign(int value) { return (value > 0) - (value < 0); }

}  // namespace CollationTestSupport
