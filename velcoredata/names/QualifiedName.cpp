#include "velcoredata/names/QualifiedName.h"

#include <utility>

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TFormatString.h"
#include "velcoredata/platform/THash.h"

namespace {

using MessageId = CoreData::StringId;

constexpr uint32_t kHashSeed = 0xDEADBEEF;

// The error of a name-parse message: its id doubles as the error id.
VelmoraError MakeParseError(MessageId id, const TString& text) {
  const TString message = TFormatString(id).arg(text).str();
  switch (id) {
    case MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET: return VelErrorsError::AutoGen_0x1B855B5D(message);
    case MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END: return VelErrorsError::AutoGen_0xE9B307EB(message);
    case MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET: return VelErrorsError::AutoGen_0x7C61D0A1(message);
    case MessageId::IDS_ERR_QN_TRAILING_DOT: return VelErrorsError::AutoGen_0x11C349CE(message);
    case MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET: return VelErrorsError::AutoGen_0x74F09893(message);
    default: break;
  }
  VEL_FAIL("messageId is one of the IDS_ERR_QN_* messages");
}

// A copy of `components` changed by `edit`: the shared payload itself is
// immutable.
template <class Edit>
QualifiedName::Components Edited(const QualifiedName::Components& components, Edit edit) {
  QualifiedName::Components copy = components;
  edit(copy);
  return copy;
}

const TString& EmptyText() {
  static const TString* const empty = new TString();
  return *empty;
}

}  // namespace

// --- QualifiedFieldNameParseException ----------------------------------------

QualifiedFieldNameParseException::QualifiedFieldNameParseException(CoreData::StringId messageId, TString text)
    : VelmoraException(MakeParseError(messageId, text)), m_messageId(messageId), m_text(std::move(text)) {}

std::unique_ptr<VelmoraException> QualifiedFieldNameParseException::Clone() const {
  return std::make_unique<QualifiedFieldNameParseException>(*this);
}

void QualifiedFieldNameParseException::Throw() const { throw *this; }

// --- QNData -------------------------------------------------------------------

QualifiedName::QNData::QNData(Components components)
    : m_fullValue(RebuildFullValue(components)), m_components(std::move(components)) {}

const std::shared_ptr<const QualifiedName::QNData>& QualifiedName::QNData::EmptyDefault() {
  // Never destroyed: names may be built and dropped during static destruction.
  static const auto* const empty = new std::shared_ptr<const QNData>(std::make_shared<const QNData>(Components{}));
  return *empty;
}

uint32_t QualifiedName::QNData::Hash() const noexcept {
  uint32_t hash = m_hash.load(std::memory_order_relaxed);
  if (hash != 0) return hash;
  // A name whose hash really is 0 is hashed again on every call: harmless.
  hash = CalcHash(m_components);
  m_hash.store(hash, std::memory_order_relaxed);
  return hash;
}

// --- construction ---------------------------------------------------------------

QualifiedName::QualifiedName() noexcept : m_data(QNData::EmptyDefault()) {}

QualifiedName::QualifiedName(const TString& component)
    : m_data(std::make_shared<const QNData>(Components{component})) {}

QualifiedName::QualifiedName(const TString& root, const TString& leaf)
    : m_data(std::make_shared<const QNData>(Components{root, leaf})) {}

QualifiedName::QualifiedName(Components&& components) : m_data(QNData::EmptyDefault()) {
  Assign(std::move(components));
}

QualifiedName::QualifiedName(QualifiedName&& other) noexcept
    : m_data(std::exchange(other.m_data, QNData::EmptyDefault())) {}

QualifiedName& QualifiedName::operator=(QualifiedName&& other) noexcept {
  if (this != &other) m_data = std::exchange(other.m_data, QNData::EmptyDefault());
  return *this;
}

QualifiedName::~QualifiedName() = default;

void QualifiedName::Clear() noexcept { m_data = QNData::EmptyDefault(); }

void QualifiedName::Assign(Components&& components) {
  if (components.empty()) {
    m_data = QNData::EmptyDefault();
  } else {
    m_data = std::make_shared<const QNData>(std::move(components));
  }
}

// --- parsing ----------------------------------------------------------------------

bool QualifiedName::TryGetTokens(TString text, Components& components, bool throwOnError) {
  components.clear();
  text = text.trimmed();
  // An all-blank text is treated like an empty one: it trims to nothing.
  if (text.isEmpty()) return true;

  const auto fail = [&](MessageId id) {
    if (throwOnError) throw QualifiedFieldNameParseException(id, text);
    return false;
  };
  const int n = text.size();
  Components parsed;
  int p = 0;  // always on a "[" at the top of the loop
  if (text[0] != u'[') return fail(MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET);
  for (;;) {
    if (p + 1 >= n) return fail(MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END);
    int close = text.indexOf(u']', p + 1);
    if (close < 0) return fail(MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET);
    // "]]" is an escaped "]"; the component ends at the first "]" that is not
    // followed by another one.
    bool escaped = false;
    while (close + 1 < n && text[close + 1] == u']') {
      escaped = true;
      close = text.indexOf(u']', close + 2);
      if (close < 0) return fail(MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET);
    }
    TString component = text.mid(p + 1, close - p - 1);
    // Inside a component "]" only occurs in pairs, so a left-to-right
    // replacement undoes the doubling exactly.
    if (escaped) component.replace(TString(u"]]"), TString(u"]"));
    parsed.push_back(std::move(component));

    const int next = close + 1;
    if (next == n) break;
    if (text[next] != u'.') return fail(MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET);
    if (next + 1 == n) return fail(MessageId::IDS_ERR_QN_TRAILING_DOT);
    p = next + 1;
    if (text[p] != u'[') return fail(MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET);
  }
  components = std::move(parsed);
  return true;
}

QualifiedName QualifiedName::ParseGlobal(const TString& text) {
  Components components;
  TryGetTokens(text, components, true);
  return QualifiedName(std::move(components));
}

QualifiedName QualifiedName::ParseLocal(const TString& text) { return ParseGlobal(text); }

QualifiedName QualifiedName::ParseUnquoted(const TString& text) { return QualifiedName(text); }

bool QualifiedName::CanParseQualifiedName(const TString& text) noexcept {
  try {
    Components components;
    return TryGetTokens(text, components, false);
  } catch (...) {
    return false;  // only allocation can fail here
  }
}

std::optional<QualifiedName> QualifiedName::TryParseQualifiedName(const TString& text, bool throwOnError) {
  Components components;
  if (!TryGetTokens(text, components, throwOnError)) return std::nullopt;
  return QualifiedName(std::move(components));
}

TString QualifiedName::RebuildFullValue(const Components& components) {
  TString full;
  int length = 0;
  for (const TString& component : components) length += component.size() + 3;
  full.reserve(length);
  for (size_t i = 0; i < components.size(); ++i) {
    if (i > 0) full.append(u'.');
    full.append(u'[');
    for (const char16_t c : components[i]) {
      full.append(c);
      if (c == u']') full.append(c);
    }
    full.append(u']');
  }
  return full;
}

uint32_t QualifiedName::CalcHash(const Components& components) noexcept {
  uint32_t hash = kHashSeed;
  for (const TString& component : components) {
    hash = THash32(component.data(), static_cast<size_t>(component.size()) * sizeof(char16_t), hash);
  }
  return hash;
}

// --- accessors and edits -------------------------------------------------------------

const TString& QualifiedName::GetComponent(size_t index) const {
  VEL_ASSERT(index < GetNumberOfComponents());
  return GetComponents()[index];
}

const TString& QualifiedName::GetRootValue() const noexcept {
  return IsEmpty() ? EmptyText() : GetComponents().front();
}

const TString& QualifiedName::GetLeafValue() const noexcept {
  return IsEmpty() ? EmptyText() : GetComponents().back();
}

QualifiedName& QualifiedName::PushValue(const TString& leaf) {
  Assign(Edited(GetComponents(), [&](Components& c) { c.push_back(leaf); }));
  return *this;
}

QualifiedName& QualifiedName::PopValue() {
  VEL_ASSERT(!IsEmpty());
  Assign(Edited(GetComponents(), [](Components& c) { c.pop_back(); }));
  return *this;
}

QualifiedName& QualifiedName::PushRoot(const TString& root) {
  Assign(Edited(GetComponents(), [&](Components& c) { c.insert(c.begin(), root); }));
  return *this;
}

QualifiedName& QualifiedName::PopRoot() {
  VEL_ASSERT(!IsEmpty());
  Assign(Edited(GetComponents(), [](Components& c) { c.erase(c.begin()); }));
  return *this;
}

QualifiedName& QualifiedName::ReplaceRoot(const TString& root) {
  if (IsEmpty()) return PushRoot(root);
  Assign(Edited(GetComponents(), [&](Components& c) { c.front() = root; }));
  return *this;
}

QualifiedName& QualifiedName::ReplaceValue(const TString& leaf) {
  if (IsEmpty()) return PushValue(leaf);
  Assign(Edited(GetComponents(), [&](Components& c) { c.back() = leaf; }));
  return *this;
}

// --- comparison ---------------------------------------------------------------------------

int QualifiedName::Compare(const QualifiedName& other) const noexcept {
  if (m_data == other.m_data) return 0;
  return GetFullValue().compare(other.GetFullValue());
}

int QualifiedName::CompareNoCase(const QualifiedName& other) const noexcept {
  if (m_data == other.m_data) return 0;
  return GetFullValue().compare(other.GetFullValue(), TString::CaseInsensitive);
}

bool QualifiedNameCompareLeafValueNoCase::operator()(const QualifiedName& a, const QualifiedName& b) const {
  return a.GetLeafValue().toLower() < b.GetLeafValue().toLower();
}
