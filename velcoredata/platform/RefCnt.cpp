#include "velcoredata/platform/RefCnt.h"

#include <cstdio>

RefCntObject::~RefCntObject() = default;

void RefCountOverflow() noexcept {
  std::fputs("velcoredata: reference count overflow (count reached 0x7FFFFFFE); aborting\n", stderr);
  std::abort();
}
