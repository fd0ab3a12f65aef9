#include "velcoredata/collation/CollationConflictResolver.h"

CollationConflictResolver::Callback::~Callback() = default;

const SourcedCollation& CollationConflictResolver::ResolveCollationPair(
    const SourcedCollation& a, const SourcedCollation& b) const {
  if (a.source.isEmpty() && !b.source.isEmpty()) return b;
  const Collation& unknown = GetUnknownCollation();
  if (a.collation == unknown && b.collation != unknown) return b;
  const bool aCaseSensitive = a.collation.IsCaseSensitive();
  if (aCaseSensitive != b.collation.IsCaseSensitive()) return aCaseSensitive ? b : a;
  if (!a.source.isEmpty() && a.source == b.source && m_callback &&
      m_callback->PreferSecond(a.collation, b.collation, a.source)) {
    return b;
  }
  if (!b.collation.HasCharsetID()) return a;
  if (a.collation.HasCharsetID()) return a;
  return b.collation.GetName() == a.collation.GetName() ? b : a;
}

std::unique_ptr<SourcedCollation> CollationConflictResolver::ResolveSourcedCollation(
    std::vector<const SourcedCollation*>& collations) const {
  if (collations.empty()) return nullptr;
  const SourcedCollation* winner = collations.front();
  for (size_t i = 1; i < collations.size(); ++i) winner = &ResolveCollationPair(*winner, *collations[i]);
  return std::make_unique<SourcedCollation>(*winner);
}
