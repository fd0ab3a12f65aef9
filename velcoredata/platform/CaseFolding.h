// FoldCase: full Unicode case folding of a text.
//
// Case folding maps texts that differ only in case to one form, for
// case-insensitive keys: "Straße", "STRASSE" and "strasse" all fold to
// "strasse". The folding is ICU's full default folding (u_strFoldCase with
// U_FOLD_CASE_DEFAULT), so one character may fold to several ("ß" to "ss")
// and the result may be longer than the input. Lone surrogates are kept.
//
// It lives in the platform layer so that every folder can key maps on folded
// names; the locale utilities' StrFoldCase forwards here.
//
// Thread-safety: safe to call from any thread.
#pragma once

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

VELCOREDATA_EXPORT TString FoldCase(const TString& text);
