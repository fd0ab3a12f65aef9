// Per-thread state behind TSystem::ThreadID, CoreThreadContext and the
// thread-exit hooks. One thread_local object holds all three so that their
// order at thread exit is fixed: the exit hooks run first, while the thread's
// id and context are still usable, and only then is the context destroyed.

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

#include "velcoredata/platform/CoreThreadContext.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/TSystem.h"

namespace {

struct ExitFuncRegistry {
  std::mutex mutex;
  std::vector<void (*)()> funcs;
};

// Never destroyed: threads may end during static destruction.
ExitFuncRegistry& Registry() {
  static InitOnceValue<ExitFuncRegistry> registry;
  return registry.Get();
}

std::atomic<uint64_t> g_nextThreadId{1};

struct ThreadState {
  uint64_t id = g_nextThreadId.fetch_add(1, std::memory_order_relaxed);
  CoreThreadContext context;

  ~ThreadState() {
    std::vector<void (*)()> funcs;
    {
      ExitFuncRegistry& r = Registry();
      std::lock_guard<std::mutex> lock(r.mutex);
      funcs = r.funcs;
    }
    for (void (*f)() : funcs) f();
  }
};

ThreadState& State() {
  thread_local ThreadState state;
  return state;
}

}  // namespace

uint64_t TSystem::ThreadID() noexcept { return State().id; }

CoreThreadContext& CoreThreadContext::Current() { return State().context; }

std::any CoreThreadContext::Set(const std::string& name, std::any object) {
  std::any& slot = m_objects[name];
  std::any previous = std::move(slot);
  slot = std::move(object);
  return previous;
}

std::any CoreThreadContext::Take(const std::string& name) {
  auto it = m_objects.find(name);
  if (it == m_objects.end()) return {};
  std::any object = std::move(it->second);
  m_objects.erase(it);
  return object;
}

bool CoreThreadContext::Has(const std::string& name) const { return m_objects.count(name) != 0; }

std::any* CoreThreadContext::GetGeneric(const std::string& name) {
  auto it = m_objects.find(name);
  return it == m_objects.end() ? nullptr : &it->second;
}

void AddGlobalThreadExitFunc(void (*func)()) {
  if (!func) return;
  ExitFuncRegistry& r = Registry();
  std::lock_guard<std::mutex> lock(r.mutex);
  if (std::find(r.funcs.begin(), r.funcs.end(), func) == r.funcs.end()) r.funcs.push_back(func);
}
