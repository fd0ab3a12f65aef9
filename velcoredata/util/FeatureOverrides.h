// FeatureOverrides: the flags whose state differs from their default.
//
// GetFeatureFlagOverrides() records, in table order, every flag of the table
// whose state in the object in force on the calling thread differs from its
// default, with that state. It reads nothing else (no settings, files or
// environment). The record can be kept, copied, shown, or applied to another
// FeatureFlags object, for instance to give a worker thread the flags of the
// thread that handed it work.
#pragma once

#include <vector>

#include "velcoredata/platform/Export.h"
#include "velcoredata/util/FeatureFlagId.h"

class FeatureFlags;
class FeatureOverrides;

// The flags of the table whose state on the calling thread is not their
// default, in table order.
VELCOREDATA_EXPORT FeatureOverrides GetFeatureFlagOverrides();

class VELCOREDATA_EXPORT FeatureOverrides {
 public:
  struct Override {
    FeatureFlagId id;
    bool on;  // the state that differs from the default
    friend bool operator==(const Override&, const Override&) = default;
  };

  FeatureOverrides() = default;
  FeatureOverrides(const FeatureOverrides&) = default;
  FeatureOverrides& operator=(const FeatureOverrides&) = default;
  virtual ~FeatureOverrides();

  // Records `id` as being in state `on`; a later call for the same id
  // replaces the state it recorded.
  void Add(FeatureFlagId id, bool on);

  // The recorded flags, in the order they were first recorded.
  const std::vector<Override>& GetOverrides() const noexcept { return m_overrides; }
  bool IsEmpty() const noexcept { return m_overrides.empty(); }
  int size() const noexcept { return static_cast<int>(m_overrides.size()); }

  // Enables or disables each recorded flag in `flags`; flags not recorded are
  // left as they are.
  void ApplyTo(FeatureFlags& flags) const;

  friend bool operator==(const FeatureOverrides&, const FeatureOverrides&) = default;

 private:
  friend FeatureOverrides GetFeatureFlagOverrides();

  std::vector<Override> m_overrides;
};
