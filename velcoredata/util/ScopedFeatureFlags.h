// ScopedFeatureFlags: puts a FeatureFlags object in force on the calling
// thread for a scope.
//
//   {
//     ScopedFeatureFlags scope;   // a copy of the flags in force now
//     scope->Enable(FeatureFlagId::MarkFormattedValues);
//     ...                         // FeatureFlags::IsOn sees the change here,
//   }                             // on this thread only
//
// The object is stored in the thread's CoreThreadContext under
// FeatureFlags::kThreadContextName; on exit from the scope whatever was
// stored there before (another object, something else, or nothing) is put
// back exactly. Scopes nest. Other threads are not affected.
//
// A scope must end on the thread that opened it, in reverse order of opening
// (as automatic objects do).
#pragma once

#include <any>
#include <memory>

#include "velcoredata/platform/Export.h"
#include "velcoredata/util/FeatureFlags.h"

class CoreThreadContext;

class VELCOREDATA_EXPORT ScopedFeatureFlags {
 public:
  // Installs a copy of the flags in force on the calling thread.
  ScopedFeatureFlags();
  // Installs `flags` itself; a null pointer installs a copy of the flags in
  // force, as the default constructor does.
  explicit ScopedFeatureFlags(std::shared_ptr<FeatureFlags> flags);
  ~ScopedFeatureFlags();

  ScopedFeatureFlags(const ScopedFeatureFlags&) = delete;
  ScopedFeatureFlags& operator=(const ScopedFeatureFlags&) = delete;

  // The installed object.
  FeatureFlags& Get() const noexcept { return *m_flags; }
  FeatureFlags* operator->() const noexcept { return m_flags.get(); }
  const std::shared_ptr<FeatureFlags>& GetShared() const noexcept { return m_flags; }

 private:
  CoreThreadContext& m_context;
  std::shared_ptr<FeatureFlags> m_flags;
  bool m_hadPrevious;
  std::any m_previous;
};
