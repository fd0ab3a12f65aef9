// FeatureFlags: a set of feature flags that are on, and the flags in force.
//
// A FeatureFlags object holds the ids of the flags that are on; a new object
// holds the default-enabled ones (GetDefaultEnabledFeatureIds()). The flags
// in force on a thread are those of the object stored in the thread's
// CoreThreadContext under kThreadContextName ("fflags-ctx"), or else those of
// one process-wide object:
//
//   if (FeatureFlags::IsOn(FeatureFlagId::MarkFormattedValues)) ...
//
// The context may hold the object as a std::shared_ptr<FeatureFlags> (the
// object keeps its address for as long as anyone uses it, and a scope that
// installs one can put back exactly what was there: see ScopedFeatureFlags)
// or as a FeatureFlags held by value (it lives in the context until the name
// is set again or taken). A null pointer or anything of another type stored
// under that name is ignored and the process-wide object is used.
//
// Each object also keeps a tracing record: while tracing is on, every id
// asked of the object through IsFeatureFlagOn (or the member asserts) is
// added to its visited set, so a host can find out which flags a piece of
// work consulted.
//
// Thread-safety: the enabled set is not locked. A thread changes flags only
// on its own object (the one in its context) or on the process-wide object
// while no other thread reads it. Tracing is safe from any number of
// threads: the tracing switch is atomic and the visited set is a concurrent
// set behind an atomically replaced pointer.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <unordered_set>

#include <tbb/concurrent_unordered_set.h>

#include "velcoredata/platform/Export.h"
#include "velcoredata/util/FeatureFlagId.h"

using FeatureFlagIdSet = std::unordered_set<FeatureFlagId>;

class VELCOREDATA_EXPORT FeatureFlags {
 public:
  // The name of the per-thread object in CoreThreadContext.
  static constexpr const char* kThreadContextName = "fflags-ctx";

  // The default-enabled flags on; tracing off with an empty visited set.
  FeatureFlags();
  // Copying copies the enabled set only: the copy starts with tracing off
  // and an empty visited set, and assignment keeps the target's own record.
  FeatureFlags(const FeatureFlags& other);
  FeatureFlags& operator=(const FeatureFlags& other);
  virtual ~FeatureFlags();

  // A new FeatureFlags() owned by the caller.
  static std::unique_ptr<FeatureFlags> FeatureFlagsFactoryMethod();

  // Equal when both enabled sets hold the same ids.
  bool operator==(const FeatureFlags& other) const;
  bool operator!=(const FeatureFlags& other) const { return !(*this == other); }

  void Enable(FeatureFlagId id);
  void Disable(FeatureFlagId id);  // no effect when the id is not on
  // Nothing on at all, the default-enabled flags included.
  void Clear();
  // Whether `id` is in this object's own enabled set (not traced).
  bool Contains(FeatureFlagId id) const;

  // The object in force on the calling thread: the thread's context object
  // when there is one, else the process-wide object (created on first use
  // and never destroyed, so flags can still be tested while the process
  // exits).
  static FeatureFlags& GetMutable();
  static const FeatureFlags& Get() { return GetMutable(); }

  // Whether `id` is on in the object in force on the calling thread.
  static bool IsOn(FeatureFlagId id);
  // A copy of the enabled set of the object in force on the calling thread.
  static FeatureFlagIdSet GetEnabled();

  // Whether `id` is on in the object in force on the calling thread (not
  // necessarily this one: an object kept for its tracing record reports what
  // the thread really sees). When this object is tracing, `id` is added to
  // its visited set whatever the answer.
  bool IsFeatureFlagOn(FeatureFlagId id) const;

  // Raise VelmoraLogicException with the condition
  // "FeatureFlags::IsOn(featureFlagId)" (AssertOn) or
  // "!FeatureFlags::IsOn(featureFlagId)" (AssertOff) when the flag in force
  // is not as asserted.
  static void AssertOn(FeatureFlagId featureFlagId);
  static void AssertOff(FeatureFlagId featureFlagId);
  // The same checks, traced like IsFeatureFlagOn.
  void AssertFeatureFlagOn(FeatureFlagId featureFlagId) const;
  void AssertFeatureFlagOff(FeatureFlagId featureFlagId) const;

  // Starts recording visited ids (the set keeps what it already holds).
  void EnableFeatureFlagTracing();
  // Stops recording and starts a new, empty visited set; readers still
  // holding the old set finish with it.
  void DisableFeatureFlagTracing();
  bool IsFeatureFlagTracingEnabled() const;
  // A copy of the ids visited so far.
  FeatureFlagIdSet GetVisitedFlags() const;

 private:
  using VisitedSet = tbb::concurrent_unordered_set<FeatureFlagId>;
  static std::shared_ptr<VisitedSet> NewVisitedSet();
  void Trace(FeatureFlagId id) const;

  FeatureFlagIdSet m_enabled;
  std::atomic<bool> m_tracing{false};
  // Read and replaced only through std::atomic_load / std::atomic_store.
  // (libstdc++ 12's std::atomic<std::shared_ptr> releases its internal lock
  // after a load with relaxed ordering, which leaves the load racing with a
  // later store; the free functions lock a mutex.)
  std::shared_ptr<VisitedSet> m_visited;
};
