#include "velcoredata/platform/Messages.h"

#include <QTranslator>

#include <algorithm>
#include <cstdio>
#include <shared_mutex>
#include <vector>

#include "velcoredata/platform/InitOnce.h"

namespace CoreData {
namespace {

struct Entry {
  StringId id;
  const char* key;
  const char16_t* english;
};

constexpr Entry kEntries[] = {
#define VEL_MESSAGE(key, id, text) {StringId::key, #key, text},
#include "velcoredata/platform/MessageTexts.def"
#undef VEL_MESSAGE
};

const Entry* FindEntry(StringId id) noexcept {
  for (const Entry& e : kEntries) {
    if (e.id == id) return &e;
  }
  return nullptr;
}

const Entry* FindEntry(std::string_view key) noexcept {
  for (const Entry& e : kEntries) {
    if (key == e.key) return &e;
  }
  return nullptr;
}

TString MissingText(StringId id) {
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, "[missing message 0x%08X]", static_cast<unsigned>(id));
  return TString(buffer);
}

struct Translators {
  std::shared_mutex mutex;
  std::vector<std::shared_ptr<const QTranslator>> newestFirst;
};

Translators& TheTranslators() {
  static InitOnceValue<Translators> translators;
  return translators.Get();
}

TString Translate(const Entry& e) {
  Translators& t = TheTranslators();
  std::vector<std::shared_ptr<const QTranslator>> current;
  {
    std::shared_lock<std::shared_mutex> lock(t.mutex);
    if (t.newestFirst.empty()) return TString(e.english);
    current = t.newestFirst;
  }
  const std::string source = TString(e.english).toUtf8();
  for (const auto& translator : current) {
    const QString text = translator->translate("CoreData", source.c_str(), e.key);
    if (!text.isEmpty()) return TString(text);
  }
  return TString(e.english);
}

}  // namespace

TString GetString(StringId id) {
  const Entry* e = FindEntry(id);
  return e ? Translate(*e) : MissingText(id);
}

TString GetString(std::string_view keyName) {
  const Entry* e = FindEntry(keyName);
  if (e) return Translate(*e);
  return TString("[missing message " + std::string(keyName) + "]");
}

TString GetEnglishString(StringId id) {
  const Entry* e = FindEntry(id);
  return e ? TString(e->english) : MissingText(id);
}

bool HasString(StringId id) noexcept { return FindEntry(id) != nullptr; }

bool FindStringId(std::string_view keyName, StringId& out) noexcept {
  const Entry* e = FindEntry(keyName);
  if (!e) return false;
  out = e->id;
  return true;
}

const char* GetKeyName(StringId id) noexcept {
  const Entry* e = FindEntry(id);
  return e ? e->key : "";
}

void InstallTranslator(std::shared_ptr<const QTranslator> translator) {
  if (!translator) return;
  Translators& t = TheTranslators();
  std::unique_lock<std::shared_mutex> lock(t.mutex);
  t.newestFirst.insert(t.newestFirst.begin(), std::move(translator));
}

void RemoveTranslator(const QTranslator* translator) {
  Translators& t = TheTranslators();
  std::unique_lock<std::shared_mutex> lock(t.mutex);
  std::erase_if(t.newestFirst, [&](const auto& p) { return p.get() == translator; });
}

}  // namespace CoreData
