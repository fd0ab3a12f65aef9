// Fuzzes collator names: any text given to Collation(name) either names a
// working ordering or raises one of the two documented exceptions (the
// logic exception for a malformed name, ICUException for a locale ICU
// cannot open), and never leaves a pool behind when it fails.
//
// Every distinct valid name creates a pool that lives until the process
// ends, so inputs are capped at 24 bytes to bound what a run can create.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/CollatorName.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/platform/LogicException.h"

namespace {

constexpr size_t kMaxNameBytes = 24;

[[noreturn]] void Fail(const char* what, const TString& name) {
  std::fprintf(stderr, "collator name '%s': %s\n", name.toUtf8().c_str(), what);
  std::abort();
}

void Exercise(const TString& name) {
  const size_t poolsBefore = ICUCollatorPool::GetPoolCount();
  try {
    const Collation collation(name.c_str());
    const bool binary = name.compare(TString(u"binary"), TString::CaseInsensitive) == 0;
    if (!binary && !name.isEmpty() && collation.GetName() != name) Fail("the pool renamed it", name);
    // A working ordering compares and hashes consistently.
    if (collation.Compare(name.c_str(), name.c_str()) != 0) Fail("a text differs from itself", name);
    if (collation.Hash(u"abc") != collation.Hash(u"abc")) Fail("unstable hash", name);
    (void)collation.GetCmpFlags();
    (void)collation.GetDescription();
    // Options applied to a valid name give a name the pool reads as well.
    const TString withOptions = MakeCollatorName(name.c_str(), Collation::CaseOpt::CaseInsensitive,
                                                 Collation::AccentOpt::AccentSensitive,
                                                 Collation::SortOpt::WordSort, Collation::PunctOpt::Default);
    if (!binary) (void)ICUCollatorPool::ParseName(withOptions);
    return;
  } catch (const VelmoraLogicException&) {
  } catch (const ICUException&) {
  } catch (const std::exception& e) {
    Fail(e.what(), name);
  } catch (...) {
    Fail("unknown exception", name);
  }
  if (ICUCollatorPool::GetPoolCount() != poolsBefore) Fail("a failed name registered a pool", name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > kMaxNameBytes) return 0;
  TString name = TString::fromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  // Names are C strings: a U+0000 ends one.
  if (const int end = name.indexOf(u'\0'); end >= 0) name.truncate(end);
  Exercise(name);
  return 0;
}
