// CoreThreadContext: named objects that belong to one thread.
//
// Each thread has its own context, created on first use and destroyed when
// the thread ends (after the thread-exit hooks have run, so a hook may still
// read it). Objects are stored type-erased by name; Get<T> answers only when
// the stored object really is a T. A context is touched by its own thread
// only, so nothing in it is locked.
#pragma once

#include <any>
#include <string>
#include <string_view>
#include <unordered_map>

#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT CoreThreadContext {
 public:
  // The calling thread's context.
  static CoreThreadContext& Current();

  // Stores `object` under `name` and returns what was stored there before
  // (an empty std::any when nothing was).
  std::any Set(const std::string& name, std::any object);
  // Removes the object under `name` and returns it (empty when none).
  std::any Take(const std::string& name);
  bool Has(const std::string& name) const;

  // The unsynchronised generic object under `name`, or null.
  std::any* GetGeneric(const std::string& name);

  // The object under `name` if it holds a T, else null.
  template <class T>
  T* Get(const std::string& name) {
    std::any* object = GetGeneric(name);
    return object ? std::any_cast<T>(object) : nullptr;
  }

  CoreThreadContext() = default;
  CoreThreadContext(const CoreThreadContext&) = delete;
  CoreThreadContext& operator=(const CoreThreadContext&) = delete;

 private:
  std::unordered_map<std::string, std::any> m_objects;
};

// Registers `func` to run on every thread that used the library (asked for
// TSystem::ThreadID or its CoreThreadContext) when that thread ends, the main
// thread included at process exit. Registering the same function again has no
// effect. Functions run in registration order on the ending thread.
VELCOREDATA_EXPORT void AddGlobalThreadExitFunc(void (*func)());
