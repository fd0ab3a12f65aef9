// TSystem: process and thread facts.
#pragma once

#include <cstdint>

#include "velcoredata/platform/Export.h"

namespace TSystem {

// A number that identifies the calling thread for the life of the process.
// Numbers are handed out from 1 upwards on a thread's first call and are never
// reused, so a per-thread map keyed by them cannot confuse a new thread with
// an ended one. The first call also arms the thread's exit hooks
// (AddGlobalThreadExitFunc).
VELCOREDATA_EXPORT uint64_t ThreadID() noexcept;

}  // namespace TSystem
