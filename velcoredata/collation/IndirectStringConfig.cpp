#include "velcoredata/collation/IndirectStringConfig.h"

void IndirectStringConfig::SetStringPoolGlobalStripedMapWidth(int width) noexcept {
  CoreDataOptions::SetStringPoolGlobalStripedMapWidth(width);
}

int IndirectStringConfig::GetStringPoolGlobalStripedMapWidth() noexcept {
  return CoreDataOptions::GetStringPoolGlobalStripedMapWidth();
}

IndirectStringConfig::CounterFunction IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(
    CounterFunction hook) {
  return CoreDataOptions::SetUpdateStringPoolEntryCounter(std::move(hook));
}

IndirectStringConfig::CounterFunction IndirectStringConfig::SetUpdateStringPoolWeakEntryCounterFunction(
    CounterFunction hook) {
  return CoreDataOptions::SetUpdateStringPoolWeakEntryCounter(std::move(hook));
}

IndirectStringConfig::CounterFunction IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction(
    CounterFunction hook) {
  return CoreDataOptions::SetUpdateStringPoolTotalBytesCounter(std::move(hook));
}
