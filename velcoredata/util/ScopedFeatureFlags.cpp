#include "velcoredata/util/ScopedFeatureFlags.h"

#include <utility>

#include "velcoredata/platform/CoreThreadContext.h"

ScopedFeatureFlags::ScopedFeatureFlags() : ScopedFeatureFlags(nullptr) {}

ScopedFeatureFlags::ScopedFeatureFlags(std::shared_ptr<FeatureFlags> flags)
    : m_context(CoreThreadContext::Current()),
      m_flags(flags ? std::move(flags) : std::make_shared<FeatureFlags>(FeatureFlags::Get())),
      m_hadPrevious(m_context.Has(FeatureFlags::kThreadContextName)),
      m_previous(m_context.Set(FeatureFlags::kThreadContextName, m_flags)) {}

ScopedFeatureFlags::~ScopedFeatureFlags() {
  // An entry that was absent stays absent, rather than coming back empty.
  if (m_hadPrevious) {
    m_context.Set(FeatureFlags::kThreadContextName, std::move(m_previous));
  } else {
    m_context.Take(FeatureFlags::kThreadContextName);
  }
}
