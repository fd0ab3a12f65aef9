// Collator names: the text that identifies an ordering and its pool.
//
// A name is "binary" (any letter case) or parts joined by "_", each a
// capital key letter and its value, at most one part per letter, ordered by
// key letter:
//   L language, R region, Z script, V variant (the locale, upper case);
//   A alternate, C case first, E case level, F French, H Hiragana,
//   I numeric, N normalisation, S strength, W word sort, X ignore digits
//   (attributes; a value letter from ICUCollator's value table, written only
//   when the value differs from the attribute's default).
// Examples: "LEN_RUS_S2" (English, United States, case-insensitive),
// "LEN_RUS_S2_WO" (the same with word sort), "LROOT" (root ordering).
//
// The builders below turn a locale or a Windows LCID plus options into such
// a name. All are pure functions of their arguments (and of ICU's locale
// data) and may be called from any thread. ICU failures while reading a
// locale raise ICUException with the locale as context.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/ICUCollator.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

// The name for an ICU locale ("en_US", "de-DE") and options. ignoreDigits
// adds "XO" and leaves punctuation, strength and case level to the locale's
// defaults; sortOpt 2 and 3 are not supported (logged, then a logic error);
// sortOpt 4 (identical) has no effect here.
VELCOREDATA_EXPORT TString MakeICUCollatorName(const std::string& locale, bool ignoreDigits,
                                               Collation::CaseOpt caseOpt,
                                               Collation::AccentOpt accentOpt,
                                               Collation::SortOpt sortOpt,
                                               Collation::PunctOpt punctOpt);

// The name for a Windows LCID and Windows comparison flags (1 ignore case,
// 2 ignore non-spacing marks, 4 ignore symbols, bit 31 the Windows-specific
// variant, written "_VWIN" right after the strength part), upper case.
VELCOREDATA_EXPORT TString MakeCollatorName(unsigned lcid, unsigned cmpFlags, bool wordSort);

// `name` with the options applied (a null name starts from no parts). The
// options replace what the name said about strength, alternate handling,
// case first, case level and word sort: options 0 remove those parts.
VELCOREDATA_EXPORT TString MakeCollatorName(const char16_t* name, Collation::CaseOpt caseOpt,
                                            Collation::AccentOpt accentOpt,
                                            Collation::SortOpt sortOpt,
                                            Collation::PunctOpt punctOpt);

// The name for a locale through its LCID (unknown locales: the user's
// locale, LCID 1024), with the options applied as above. ignoreDigits also
// makes the ordering accent-insensitive and punctuation-ignoring.
VELCOREDATA_EXPORT TString CollatorNameFromLocaleName(const char* locale, bool ignoreDigits,
                                                      Collation::CaseOpt caseOpt,
                                                      Collation::AccentOpt accentOpt,
                                                      Collation::SortOpt sortOpt,
                                                      Collation::PunctOpt punctOpt);

// Merges attribute settings into name parts, in place. Parts are keyed by
// their first letter (a later part replaces an earlier one with the same
// letter); each (attribute, value) then sets its part, or removes it when
// the value is -1 or the attribute's default. The result is ordered by key
// letter; join it with "_". An empty part, an attribute without a letter or
// a value without a letter is a logic error.
VELCOREDATA_EXPORT void CollatorNamePartsFromAttributes(const ICUCollator::AttrList& attributes,
                                                        std::vector<TString>& parts);
