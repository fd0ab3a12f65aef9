// SourcedCollation: a collation with the name of the place that declared it
// (a data source, a column). The default is an empty source and the root
// ordering.
#pragma once

#include "velcoredata/collation/Collation.h"
#include "velcoredata/platform/TString.h"

struct SourcedCollation {
  TString source;
  Collation collation;

  SourcedCollation() = default;
  SourcedCollation(TString sourceName, Collation sourceCollation)
      : source(std::move(sourceName)), collation(std::move(sourceCollation)) {}

  // Same source (exact) and equal collations.
  friend bool operator==(const SourcedCollation& a, const SourcedCollation& b) noexcept {
    return a.source == b.source && a.collation == b.collation;
  }
  friend bool operator!=(const SourcedCollation& a, const SourcedCollation& b) noexcept {
    return !(a == b);
  }
};
