// The platform's locks: TRecursiveMutex with AutoSynchronize, and
// TReadWriteLock with its two scoped guards.
#pragma once

#include <mutex>
#include <shared_mutex>

// A recursive mutex: the owning thread may lock it again (a stripe of the
// string pool calls back into itself while collecting).
class TRecursiveMutex {
 public:
  void lock() { m_mutex.lock(); }
  bool try_lock() { return m_mutex.try_lock(); }
  void unlock() { m_mutex.unlock(); }

 private:
  std::recursive_mutex m_mutex;
};

// Holds a TRecursiveMutex for its scope.
class AutoSynchronize {
 public:
  explicit AutoSynchronize(TRecursiveMutex& mutex) : m_mutex(mutex) { m_mutex.lock(); }
  ~AutoSynchronize() { m_mutex.unlock(); }
  AutoSynchronize(const AutoSynchronize&) = delete;
  AutoSynchronize& operator=(const AutoSynchronize&) = delete;

 private:
  TRecursiveMutex& m_mutex;
};

// Many readers or one writer. Not recursive: a thread that holds the read
// lock must release it before it asks for the write lock.
class TReadWriteLock {
 public:
  void LockRead() { m_mutex.lock_shared(); }
  void UnlockRead() { m_mutex.unlock_shared(); }
  void LockWrite() { m_mutex.lock(); }
  void UnlockWrite() { m_mutex.unlock(); }

  // std::shared_mutex-compatible names, for std::shared_lock / std::unique_lock.
  void lock_shared() { LockRead(); }
  void unlock_shared() { UnlockRead(); }
  void lock() { LockWrite(); }
  void unlock() { UnlockWrite(); }

 private:
  std::shared_mutex m_mutex;
};

class AutoReadLock {
 public:
  explicit AutoReadLock(TReadWriteLock& lock) : m_lock(lock) { m_lock.LockRead(); }
  ~AutoReadLock() { m_lock.UnlockRead(); }
  AutoReadLock(const AutoReadLock&) = delete;
  AutoReadLock& operator=(const AutoReadLock&) = delete;

 private:
  TReadWriteLock& m_lock;
};

class AutoWriteLock {
 public:
  explicit AutoWriteLock(TReadWriteLock& lock) : m_lock(lock) { m_lock.LockWrite(); }
  ~AutoWriteLock() { m_lock.UnlockWrite(); }
  AutoWriteLock(const AutoWriteLock&) = delete;
  AutoWriteLock& operator=(const AutoWriteLock&) = delete;

 private:
  TReadWriteLock& m_lock;
};
