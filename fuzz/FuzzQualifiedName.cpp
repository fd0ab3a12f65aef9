// Fuzzes the bracketed-name tokenizer: the only failure it may raise is the
// name-parse exception (with one of its five messages), the throwing and the
// non-throwing forms agree, and a parsed name's canonical text parses back to
// the same components and hash.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "velcoredata/names/QualifiedName.h"

namespace {

bool IsNameParseMessage(CoreData::StringId id) {
  using Id = CoreData::StringId;
  return id == Id::IDS_ERR_QN_MISSING_OPEN_BRACKET || id == Id::IDS_ERR_QN_OPEN_BRACKET_AT_END ||
         id == Id::IDS_ERR_QN_MISSING_CLOSE_BRACKET || id == Id::IDS_ERR_QN_TRAILING_DOT ||
         id == Id::IDS_ERR_QN_TEXT_AFTER_BRACKET;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const TString text = TString::fromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
  QualifiedName::Components components;
  try {
    if (!QualifiedName::TryGetTokens(text, components, true)) std::abort();  // throwing form never returns false
  } catch (const QualifiedFieldNameParseException& e) {
    if (!IsNameParseMessage(e.GetMessageId())) std::abort();
    if (e.GetErrorId() != static_cast<uint32_t>(e.GetMessageId())) std::abort();
    if (QualifiedName::CanParseQualifiedName(text)) std::abort();
    if (QualifiedName::TryParseQualifiedName(text, false).has_value()) std::abort();
    return 0;
  } catch (...) {
    std::abort();
  }
  if (!QualifiedName::CanParseQualifiedName(text)) std::abort();

  const QualifiedName name{QualifiedName::Components(components)};
  const QualifiedName back = QualifiedName::ParseGlobal(name.GetFullValue());
  if (back.GetComponents() != components) std::abort();
  if (back.GetFullValue() != name.GetFullValue()) std::abort();
  if (back.Hash() != QualifiedName::CalcHash(components)) std::abort();
  if (back.Compare(name) != 0 || back.CompareNoCase(name) != 0) std::abort();
  if (!name.IsEmpty() && QualifiedName(name).PopValue().PushValue(name.GetLeafValue()) != name) std::abort();
  return 0;
}
