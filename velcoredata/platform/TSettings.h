// TSettings: the process-wide settings store, over QSettings.
//
// Keys are "/"-separated paths ("UserDefaults/ListSeparator"). The store is
// chosen on first use:
//   - the INI file named by the environment variable VELCOREDATA_SETTINGS, if set;
//   - otherwise the native store of organisation and application
//     "velcoredata" (on Linux ~/.config/velcoredata/velcoredata.conf).
// A host may switch stores at any time with UseIniFile / UseDefaultStore.
//
// Thread-safety: every operation may be called from any thread; calls are
// serialised on one lock.
#pragma once

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT TSettings {
 public:
  static void UseIniFile(const TString& path);
  static void UseDefaultStore();

  static bool Contains(const TString& key);
  // The value under `key` as text, or `defaultValue` when the key is absent.
  static TString Value(const TString& key, const TString& defaultValue = TString());
  // Sets `out` and returns true when the key exists; leaves `out` alone otherwise.
  static bool TryGetValue(const TString& key, TString& out);
  static void SetValue(const TString& key, const TString& value);
  static void Remove(const TString& key);
  // Writes pending changes to permanent storage and reloads changes made by others.
  static void Sync();
};
