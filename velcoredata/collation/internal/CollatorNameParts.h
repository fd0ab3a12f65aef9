// Splitting and joining collator names ("LEN_RUS_S2" <-> {"LEN","RUS","S2"}),
// and the pool lookup by name shared by Collation and its builders.
#pragma once

#include <string>
#include <vector>

#include "velcoredata/platform/TString.h"

class CollatorPool;

// The UTF-16 code unit of an ASCII character: TC('1') == u'1'.
constexpr char16_t TC(char c) noexcept { return static_cast<char16_t>(static_cast<unsigned char>(c)); }

namespace CollatorNameParts {

// The parts of `name` between underscores, empty parts included; none for
// a null or empty name.
std::vector<TString> Split(const char16_t* name);
std::vector<TString> Split(const TString& name);
TString Join(const std::vector<TString>& parts);

// "-" becomes "_" (BCP-47 to ICU locale form).
std::string Underscored(std::string locale);

}  // namespace CollatorNameParts

// The pool of a collator name: the binary pool for "binary" in any letter
// case, otherwise the ICU pool of (name, cmpFlags). A null or empty name is
// the root ordering "LROOT".
CollatorPool* GetPool(const char16_t* name, unsigned cmpFlags);
