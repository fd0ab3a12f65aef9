#include "velcoredata/platform/TSettings.h"

#include <QSettings>
#include <QString>
#include <QVariant>

#include <cstdlib>
#include <memory>
#include <mutex>

namespace {

struct Store {
  std::mutex mutex;
  std::unique_ptr<QSettings> settings;
};

Store& TheStore() {
  static Store* const store = new Store();  // never destroyed
  return *store;
}

std::unique_ptr<QSettings> MakeDefault() {
  if (const char* path = std::getenv("VELCOREDATA_SETTINGS"); path && *path) {
    return std::make_unique<QSettings>(QString::fromLocal8Bit(path), QSettings::IniFormat);
  }
  return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                     QStringLiteral("velcoredata"), QStringLiteral("velcoredata"));
}

// Runs `f` on the current QSettings under the store's lock.
template <class F>
auto WithSettings(F&& f) {
  Store& store = TheStore();
  std::lock_guard<std::mutex> lock(store.mutex);
  if (!store.settings) store.settings = MakeDefault();
  return f(*store.settings);
}

}  // namespace

void TSettings::UseIniFile(const TString& path) {
  Store& store = TheStore();
  std::lock_guard<std::mutex> lock(store.mutex);
  store.settings = std::make_unique<QSettings>(path.toQString(), QSettings::IniFormat);
}

void TSettings::UseDefaultStore() {
  Store& store = TheStore();
  std::lock_guard<std::mutex> lock(store.mutex);
  store.settings = MakeDefault();
}

bool TSettings::Contains(const TString& key) {
  return WithSettings([&](QSettings& s) { return s.contains(key.toQString()); });
}

TString TSettings::Value(const TString& key, const TString& defaultValue) {
  TString out = defaultValue;
  TryGetValue(key, out);
  return out;
}

bool TSettings::TryGetValue(const TString& key, TString& out) {
  return WithSettings([&](QSettings& s) {
    const QString k = key.toQString();
    if (!s.contains(k)) return false;
    out = TString(s.value(k).toString());
    return true;
  });
}

void TSettings::SetValue(const TString& key, const TString& value) {
  WithSettings([&](QSettings& s) {
    s.setValue(key.toQString(), value.toQString());
    return 0;
  });
}

void TSettings::Remove(const TString& key) {
  WithSettings([&](QSettings& s) {
    s.remove(key.toQString());
    return 0;
  });
}

void TSettings::Sync() {
  WithSettings([](QSettings& s) {
    s.sync();
    return 0;
  });
}
