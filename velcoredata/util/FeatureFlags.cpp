#include "velcoredata/util/FeatureFlags.h"

#include <string>

#include "velcoredata/platform/CoreThreadContext.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/util/FeatureInfo.h"

namespace {

// A new visited set starts small: a traced piece of work usually consults a
// handful of flags.
constexpr size_t kVisitedSetBuckets = 8;

static_assert(sizeof(std::atomic<bool>) == 1, "the tracing switch is one byte");

}  // namespace

FeatureFlags::FeatureFlags()
    : m_enabled(GetDefaultEnabledFeatureIds().begin(), GetDefaultEnabledFeatureIds().end()),
      m_visited(NewVisitedSet()) {
  m_enabled.max_load_factor(1.0f);
}

FeatureFlags::FeatureFlags(const FeatureFlags& other)
    : m_enabled(other.m_enabled), m_visited(NewVisitedSet()) {
  m_enabled.max_load_factor(1.0f);
}

FeatureFlags& FeatureFlags::operator=(const FeatureFlags& other) {
  if (this != &other) m_enabled = other.m_enabled;
  return *this;
}

FeatureFlags::~FeatureFlags() = default;

std::unique_ptr<FeatureFlags> FeatureFlags::FeatureFlagsFactoryMethod() {
  return std::make_unique<FeatureFlags>();
}

bool FeatureFlags::operator==(const FeatureFlags& other) const {
  if (m_enabled.size() != other.m_enabled.size()) return false;
  for (FeatureFlagId id : m_enabled) {
    if (!other.m_enabled.count(id)) return false;
  }
  return true;
}

void FeatureFlags::Enable(FeatureFlagId id) { m_enabled.insert(id); }
void FeatureFlags::Disable(FeatureFlagId id) { m_enabled.erase(id); }
void FeatureFlags::Clear() { m_enabled.clear(); }
bool FeatureFlags::Contains(FeatureFlagId id) const { return m_enabled.count(id) != 0; }

FeatureFlags& FeatureFlags::GetMutable() {
  // Neither is ever destroyed: a thread-exit hook or another object's
  // destructor may still test a flag while the process exits.
  static const std::string& name = *new std::string(kThreadContextName);
  CoreThreadContext& context = CoreThreadContext::Current();
  if (auto* shared = context.Get<std::shared_ptr<FeatureFlags>>(name)) {
    if (*shared) return **shared;
  } else if (auto* byValue = context.Get<FeatureFlags>(name)) {
    return *byValue;
  }
  static InitOnceValue<FeatureFlags> processWide;
  return processWide.Get();
}

bool FeatureFlags::IsOn(FeatureFlagId id) { return Get().Contains(id); }

FeatureFlagIdSet FeatureFlags::GetEnabled() { return Get().m_enabled; }

bool FeatureFlags::IsFeatureFlagOn(FeatureFlagId id) const {
  // Asks the object in force, not this one: see the header.
  const bool on = IsOn(id);
  Trace(id);
  return on;
}

void FeatureFlags::AssertOn(FeatureFlagId featureFlagId) {
  VEL_ASSERT(FeatureFlags::IsOn(featureFlagId));
}

void FeatureFlags::AssertOff(FeatureFlagId featureFlagId) {
  VEL_ASSERT(!FeatureFlags::IsOn(featureFlagId));
}

void FeatureFlags::AssertFeatureFlagOn(FeatureFlagId featureFlagId) const {
  Trace(featureFlagId);
  AssertOn(featureFlagId);
}

void FeatureFlags::AssertFeatureFlagOff(FeatureFlagId featureFlagId) const {
  Trace(featureFlagId);
  AssertOff(featureFlagId);
}

void FeatureFlags::EnableFeatureFlagTracing() { m_tracing.store(true, std::memory_order_release); }

void FeatureFlags::DisableFeatureFlagTracing() {
  std::atomic_store_explicit(&m_visited, NewVisitedSet(), std::memory_order_release);
  m_tracing.store(false, std::memory_order_release);
}

bool FeatureFlags::IsFeatureFlagTracingEnabled() const {
  return m_tracing.load(std::memory_order_acquire);
}

FeatureFlagIdSet FeatureFlags::GetVisitedFlags() const {
  const std::shared_ptr<VisitedSet> visited =
      std::atomic_load_explicit(&m_visited, std::memory_order_acquire);
  return FeatureFlagIdSet(visited->begin(), visited->end());
}

std::shared_ptr<FeatureFlags::VisitedSet> FeatureFlags::NewVisitedSet() {
  return std::make_shared<VisitedSet>(kVisitedSetBuckets);
}

void FeatureFlags::Trace(FeatureFlagId id) const {
  if (!m_tracing.load(std::memory_order_acquire)) return;
  // Holding the set keeps it alive should another thread replace it meanwhile.
  const std::shared_ptr<VisitedSet> visited =
      std::atomic_load_explicit(&m_visited, std::memory_order_acquire);
  visited->insert(id);
}
