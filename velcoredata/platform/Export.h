// Symbol visibility for libvelcoredata.
//
// The library is built with hidden visibility by default; every public class
// and free function carries VELCOREDATA_EXPORT. Exception classes and any type
// stored in a type-erased container across the library boundary must be
// exported so that their type information is shared with the host.
#pragma once

#if defined(_WIN32)
#  if defined(VELCOREDATA_BUILDING)
#    define VELCOREDATA_EXPORT __declspec(dllexport)
#  else
#    define VELCOREDATA_EXPORT __declspec(dllimport)
#  endif
#else
#  define VELCOREDATA_EXPORT __attribute__((visibility("default")))
#endif
